/// \file
/// Reading of one file: a system, a parameter set, a mapping or a dictionary.
#pragma once

#include "exchange/source.h"
#include "ssp/records.h"

#include <string_view>
#include <unordered_map>
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

/// Read a file whose root element is of the given kind into the package. Faults of elements are
/// findings of the file. Throw a files::ReadError if the text is not XML, has another root element
/// or exceeds a limit.
void readSystem(const exchange::Source& source, SystemFile& file, Package& package,
                References& references);
const ParameterSet& readParameterSet(const exchange::Source& source, File& file, Package& package);
const ParameterMapping& readMapping(const exchange::Source& source, File& file, Package& package);
const SignalDictionary& readDictionary(const exchange::Source& source, File& file,
                                       Package& package);

} // namespace tvtool::ssp
