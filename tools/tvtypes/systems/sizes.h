/// \file
/// Sizes of arrays that connections make equal.
#pragma once

#include "dims/fact_store.h"
#include "systems/connection_report.h"
#include "systems/name_index.h"

#include <tvtypes/symbolicdims.h>

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tvtool::systems {

/// States the sizes that connections imply as facts in a table of symbolic dimensions, with the
/// connection as the block. Names such as B.n are the structural parameters of elements. A
/// structural parameter has the value that the package sets, and a constant its own; the start
/// value of a structural parameter is no fact, as it can be changed.
class Sizes {
  public:
    /// \param paths of the elements; must outlive this object, as must the rows
    Sizes(const std::unordered_map<const ssp::Element*, std::string>& paths,
          const std::vector<ParameterRow>& parameters, NameIndex& names);

    /// Checks indices, ranks and sizes of a connection, whose direction is known.
    void check(const ConnectionReport& report);

    /// Returns the facts that connections and parameters have stated.
    std::vector<dims::DimsFact> facts() const { return facts_.statedBy(blocks_); }

  private:
    bool checkIndices(const End& end, const ConnectionReport& report) const;
    void compare(const ssp::Dimension& source, const ssp::Dimension& target, std::size_t index,
                 const ConnectionReport& report);
    /// Returns the id of the size that a connector of an element has as its value.
    int symbol(const End& end, std::string_view connector);
    int extent(const End& end, const ssp::Dimension& dimension);
    void state(int left, int right, const ConnectionReport& report);

    const std::unordered_map<const ssp::Element*, std::string>& paths_;
    NameIndex& names_;
    std::unordered_map<std::string_view, const ParameterRow*> values_; ///< by target
    std::unordered_map<std::string, int> symbols_;                     ///< by path
    TVTypeSys::SymbolicDimsTable table_;
    dims::FactStore facts_{table_};
    std::deque<TVBlock> blocks_;
};

} // namespace tvtool::systems
