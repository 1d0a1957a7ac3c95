/// \file
/// Reads the units of a description.
#pragma once

#include "fmi/attributes.h"
#include "fmi/description.h"
#include "fmi/remarks.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

namespace tvtool::fmi {

class UnitReader {
  public:
    UnitReader(Description& description, Remarks& remarks)
        : description_(description), remarks_(remarks) {}

    void startUnit(const Attributes& attributes, const Place& place);
    void readBaseUnit(const Attributes& attributes, const Place& place);
    void readDisplayUnit(const Attributes& attributes, const Place& place);
    void endUnit();

    /// What a type or a variable says of its unit, as an index in Description::unitUses.
    std::uint32_t readUse(const Attributes& attributes);

  private:
    double readNumber(const char* text, double absent, std::string_view name, const Place& place);
    double readFactor(const Attributes& attributes, const Place& place);
    double readOffset(const Attributes& attributes, const Place& place);

    Description& description_;
    Remarks& remarks_;
    UnitDefinition unit_; ///< the one that is open
    bool hasBaseUnit_ = false;
    bool isRight_ = true; ///< whether the numbers of the element at hand can be used
    std::map<std::pair<std::string_view, std::string_view>, std::uint32_t> uses_;
};

} // namespace tvtool::fmi
