/// \file
/// The dimensions of a model's arrays in a table of symbolic dimensions.
#pragma once

#include "dims/fact_store.h"
#include "fmi/description.h"
#include "fmi/remarks.h"

#include <tvtypes/symbolicdims.h>

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace tvtool::model {

/// Brings the dimensions of array variables into a table: numbers, and the names of the structural
/// parameters and constants that they refer to. A name is taken as it is, as sizes.n.
///
/// What a description implies of sizes is stated as facts, by the variables: that a parameter
/// equals its start value, and that an array with several start values has as many elements. What
/// cannot hold is a problem.
class Dimensions {
  public:
    Dimensions(const fmi::Description& description, fmi::Remarks& remarks);

    struct Distinct {
        int id = 0;
        std::vector<std::uint32_t> variables; ///< those that have it, by index
    };
    /// In the order of the description.
    const std::vector<Distinct>& all() const { return all_; }

    std::string textOf(int id) const { return table_.getSymbolicDims(id).toString(); }

    std::vector<dims::DimsFact> facts() const;

  private:
    struct Extent {
        int id = 0;
        std::optional<std::uint64_t> number; ///< empty if the description does not say
        const fmi::Variable* parameter = nullptr;
    };

    void enter(std::uint32_t index);
    std::optional<Extent> extentOf(const fmi::Dimension& dimension, const fmi::Variable& variable);
    std::optional<Extent> extentOfParameter(std::uint32_t valueReference,
                                            const fmi::Variable& variable);
    int idOf(std::uint64_t number);
    int idOf(const std::vector<Extent>& extents);
    void stateEqual(int size, std::uint64_t number, const fmi::Variable& variable);
    bool canHold(const fmi::Variable& variable, int id, const std::vector<Extent>& extents);

    const fmi::Description& description_;
    fmi::Remarks& remarks_;
    TVTypeSys::SymbolicDimsTable table_;
    dims::FactStore facts_{table_};
    std::deque<TVBlock> blocks_;
    std::vector<Distinct> all_;
    std::unordered_map<int, std::size_t> placeOfId_;
    std::unordered_map<std::uint32_t, const fmi::Variable*> variableOf_; ///< by value reference
    std::unordered_map<std::uint32_t, Extent> parameters_;               ///< by value reference
};

} // namespace tvtool::model
