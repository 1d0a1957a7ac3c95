/// \file
/// The attributes of one element.
#pragma once

#include "fmi/description.h"
#include "fmi/grammar.h"
#include "fmi/remarks.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace tvtool::fmi {

/// Those that are read; null where the element has none.
class Attributes {
  public:
    const char* operator[](Attribute attribute) const {
        return values_[static_cast<std::size_t>(attribute)];
    }
    void set(Attribute attribute, const char* value) {
        values_[static_cast<std::size_t>(attribute)] = value;
    }
    void clear() { values_.fill(nullptr); }

  private:
    std::array<const char*, readAttributeCount> values_{};
};

/// The name of an element, kept with the description; empty, with the problem said, if it has none.
std::string_view requiredName(const Attributes& attributes, const Place& place,
                              Description& description, Remarks& remarks);

} // namespace tvtool::fmi
