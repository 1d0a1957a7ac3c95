/// \file
/// The dimensions of a model's arrays in a table of symbolic dimensions.
#pragma once

#include "dims/fact_store.h"
#include "findings/findings.h"
#include "fmi/description.h"

#include <tvtypes/symbolicdims.h>

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace tvtool::model {

/// Registers the dimensions of array variables in a table: numbers, and the names, such as sizes.n,
/// of the structural parameters and constants that they refer to.
///
/// States the sizes that a description implies as facts of its variables: a parameter equals its
/// start value, and an array with several start values has as many elements. A contradiction is a
/// problem.
class Dimensions {
  public:
    Dimensions(const fmi::Description& description, findings::Findings& findings);

    struct Distinct {
        int id = 0;
        std::vector<std::uint32_t> variables; ///< with these dimensions, by index
    };
    /// Returns the distinct dimensions in the order of the description.
    const std::vector<Distinct>& all() const { return all_; }

    std::string text(int id) const { return table_.getSymbolicDims(id).toString(); }

    std::vector<dims::DimsFact> facts() const;

  private:
    /// The size of one dimension.
    struct Extent {
        int id = 0;
        std::optional<std::uint64_t> number; ///< empty if the description has none
        const fmi::Variable* parameter = nullptr;
    };

    void add(std::uint32_t index);
    std::optional<Extent> extentOfParameter(std::uint32_t valueReference,
                                            const fmi::Variable& variable);
    int registerNumber(std::uint64_t number);
    int registerExtents(const std::vector<Extent>& extents);
    void stateEqual(int size, std::uint64_t number, const fmi::Variable& variable);
    bool checkStartCount(const fmi::Variable& variable, int id, const std::vector<Extent>& extents);

    const fmi::Description& description_;
    findings::Findings& findings_;
    TVTypeSys::SymbolicDimsTable table_;
    dims::FactStore facts_{table_};
    std::deque<TVBlock> blocks_;
    std::vector<Distinct> all_;
    std::unordered_map<int, std::size_t> indices_;                       ///< in all_, by id
    std::unordered_map<std::uint32_t, const fmi::Variable*> variableOf_; ///< by value reference
    std::unordered_map<std::uint32_t, Extent> parameters_;               ///< by value reference
};

} // namespace tvtool::model
