/// \file
/// Sources that a system file refers to.
#pragma once

#include "ssp/records.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tvtool::ssp {

/// What a source refers to.
enum class ReferenceKind : std::uint8_t { Component, Set, Mapping, Dictionary };

/// A source in a system, which is resolved after the file is read.
struct SourceReference {
    ReferenceKind kind = ReferenceKind::Component;
    Element* element = nullptr;
    std::size_t binding = 0;                ///< index in the element
    SignalDictionary* dictionary = nullptr; ///< that is in another file
    std::string_view source;
    std::string_view type;      ///< MIME type; empty for the default
    bool isInComponent = false; ///< whether it is relative to the source of the component
    Place place;
};

/// What is left to resolve in a system file.
struct References {
    std::vector<SourceReference> sources;
    /// Systems by id, which a source such as #id can refer to.
    std::unordered_map<std::string_view, Element*> systems;
};

/// Adds a finding about a source, in the file that refers to it.
template <class... Arguments>
void addFinding(const SourceReference& reference, findings::Code code,
                fmt::format_string<Arguments...> sentence, Arguments&&... arguments) {
    reference.element->file->file.findings.addWithCause(
        code, reference.place, {findings::SubjectKind::Element, reference.element->name},
        reference.source, sentence, std::forward<Arguments>(arguments)...);
}

} // namespace tvtool::ssp
