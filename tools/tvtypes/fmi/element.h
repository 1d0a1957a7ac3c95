/// \file
/// The element that is being read.
#pragma once

#include "exchange/values.h"
#include "findings/findings.h"
#include "fmi/description.h"
#include "fmi/grammar.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace tvtool::fmi {

/// Whether a name can be empty. That of a unit can: it then is the unit of numbers.
enum class Empty { Error, Allowed };

/// The element, the description that it is read into, and the findings about it.
struct Element {
    Description& description;
    findings::Findings& findings;
    Place place = {};
    findings::Subject subject = {};
    std::array<const char*, readAttributeCount> attributes{}; ///< null where one is missing

    const char* operator[](Attribute attribute) const {
        return attributes[static_cast<std::size_t>(attribute)];
    }

    /// Adds a finding about the element.
    template <class... Arguments>
    void add(findings::Code code, fmt::format_string<Arguments...> sentence,
             Arguments&&... arguments) const {
        findings.add(code, place, subject, sentence, std::forward<Arguments>(arguments)...);
    }
    /// Same about an attribute.
    template <class... Arguments>
    void addForAttribute(findings::Code code, std::string_view attribute,
                         fmt::format_string<Arguments...> sentence,
                         Arguments&&... arguments) const {
        findings.addWithCause(code, place, subject, attribute, sentence,
                              std::forward<Arguments>(arguments)...);
    }
    /// Adds an error about a missing attribute.
    void addMissing(std::string_view attribute) const {
        addForAttribute(findings::Code::AttributeMissing, attribute, "{} is missing", attribute);
    }

    /// Returns the name, kept with the description. A missing name is an error.
    std::string_view requiredName(Empty empty = Empty::Error) const {
        const char* const name = (*this)[Attribute::Name];
        if (name == nullptr) {
            addMissing("name");
        } else if (*name == '\0' && empty == Empty::Error) {
            add(findings::Code::NameEmpty, "name is empty");
        }
        return description.texts.keep(name == nullptr ? "" : name);
    }

    /// Returns the value of an attribute without blanks around it, kept with the description.
    std::string_view text(Attribute attribute) const {
        const char* const value = (*this)[attribute];
        const std::string_view word = value == nullptr ? "" : exchange::trimmed(value);
        return word.size() <= longestInterned ? description.texts.intern(word)
                                              : description.texts.keep(word);
    }

    /// Returns whether an attribute is true.
    bool isTrue(Attribute attribute) const {
        const std::string_view value = text(attribute);
        return value == "true" || value == "1";
    }

    /// Texts of this size are often repeated: 0, 1.0, true.
    static constexpr std::size_t longestInterned = 5;
};

} // namespace tvtool::fmi
