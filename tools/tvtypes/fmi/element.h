/// \file
/// The element that is being read.
#pragma once

#include "fmi/description.h"
#include "fmi/grammar.h"
#include "fmi/remarks.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace tvtool::fmi {

/// The element, the description that it is read into, and the remarks about it.
struct Element {
    Description& description;
    Remarks& remarks;
    Place place = {};
    std::array<const char*, readAttributeCount> attributes{}; ///< null where one is missing

    const char* operator[](Attribute attribute) const {
        return attributes[static_cast<std::size_t>(attribute)];
    }

    template <class... Arguments>
    void problem(fmt::format_string<Arguments...> sentence, Arguments&&... arguments) const {
        remarks.problem(place, sentence, std::forward<Arguments>(arguments)...);
    }
    template <class... Arguments>
    void note(fmt::format_string<Arguments...> sentence, Arguments&&... arguments) const {
        remarks.note(place, sentence, std::forward<Arguments>(arguments)...);
    }

    /// Returns the name, kept with the description. A missing or empty name is a problem.
    std::string_view requiredName() const {
        const char* const name = (*this)[Attribute::Name];
        if (name == nullptr || *name == '\0') {
            problem("name is {}", name == nullptr ? "missing" : "empty");
            return {};
        }
        return description.texts.keep(name);
    }
};

} // namespace tvtool::fmi
