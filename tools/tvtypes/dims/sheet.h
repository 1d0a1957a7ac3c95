/// \file
/// All about some dimensions.
#pragma once

#include "dims/reading.h"
#include "dims/records.h"

#include <tvtypes/symbolicdims.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace tvtool::dims {

/// Collects dimensions and tells which are equal.
class Sheets {
  public:
    /// Throws a text::ParseError.
    void add(const std::string& text);

    const std::vector<dims::DimsSheet>& all() const { return sheets_; }

  private:
    TVTypeSys::SymbolicDimsTable table_;
    std::vector<dims::DimsSheet> sheets_;
    std::unordered_map<int, std::size_t> firstOf_; ///< by the id of the simplest form
};

} // namespace tvtool::dims
