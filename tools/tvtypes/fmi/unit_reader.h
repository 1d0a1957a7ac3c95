/// \file
/// Reading of the units of a description.
#pragma once

#include "fmi/element.h"

#include <cstdint>
#include <map>
#include <string_view>
#include <utility>

namespace tvtool::fmi {

/// Reads units from an element that the caller sets before each call.
class UnitReader {
  public:
    explicit UnitReader(const Element& element) : element_(element) {}

    void startUnit();
    void readBaseUnit();
    void readDisplayUnit();
    void endUnit();

    /// Reads the unit attributes of a type or a variable. Returns an index in
    /// Description::unitUses, or noIndex.
    std::uint32_t readUse();

  private:
    double readNumber(Attribute attribute, std::string_view name, double absent);
    double readFactor();

    const Element& element_;
    UnitDefinition unit_; ///< the open one
    bool hasBaseUnit_ = false;
    bool isValid_ = true; ///< whether the numbers of the element are valid
    std::map<std::pair<std::string_view, std::string_view>, std::uint32_t> uses_;
};

} // namespace tvtool::fmi
