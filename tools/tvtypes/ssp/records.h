/// \file
/// The content of a package of the SSP standard as plain records: systems, parameter sets, mappings
/// and signal dictionaries.
///
/// A record belongs to a File, which has its texts and the findings about it. Pointers between
/// records point into the same Package.
#pragma once

#include "exchange/records.h"
#include "findings/findings.h"
#include "fmi/description.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::ssp {

using exchange::BaseType;
using exchange::Place;

/// One file that was read, and the findings in it.
struct File {
    std::string path; ///< as findings show it: of an entry of an archive, A.ssp/resources/B.ssv
    findings::Findings findings;
    exchange::Texts texts;
};

/// A model description that components refer to.
struct Model {
    File file;
    std::unique_ptr<const fmi::Description> description; ///< never null
};

/// The definitions in one file, or in a parameter set or a dictionary within a file.
struct Enumeration {
    std::string_view name;
    std::vector<exchange::Item> items;
    Place place;
};
struct Definitions {
    std::vector<exchange::UnitDefinition> units;
    std::vector<Enumeration> enumerations;
};

/// The kinds of connectors. None is a missing attribute, Invalid one with another value.
enum class Kind : std::uint8_t {
    None,
    Invalid,
    Input,
    Output,
    Inout,
    Parameter,
    CalculatedParameter,
    StructuralParameter,
    Constant,
    Local,
    Unspecified
};

/// Returns the value of the attribute; empty for None and Invalid.
std::string_view kindName(Kind kind);

/// The type of a connector, an entry of a dictionary or a parameter.
struct Type {
    BaseType base = BaseType::None; ///< None if there is no type; Real is Float64, Integer is Int32
    std::string_view element;       ///< the name as written: "Real"; empty if there is no type
    std::string_view unit;          ///< empty if missing, as those below
    std::string_view enumeration;
    std::string_view mimeType;
    std::string_view intervalVariability;
    Place place;
};

/// A dimension has a size, a connector with the size, or neither.
struct Dimension {
    std::optional<std::uint64_t> size;
    std::string_view sizeConnector;
    Place place;
};

/// A connector, or an entry of a dictionary, which has no kind.
struct Connector {
    std::string_view name;
    Kind kind = Kind::None;
    Type type;
    std::vector<Dimension> dimensions;
    Place place;
};

enum class TransformationKind : std::uint8_t { None, Linear, Boolean, Integer, Enumeration };

struct MapEntry {
    std::string_view source; ///< as written, without blanks around it
    std::string_view target;
    Place place;
};

struct Transformation {
    TransformationKind kind = TransformationKind::None;
    double factor = 1;
    double offset = 0;
    std::vector<MapEntry> entries;
    Place place;
};

/// One end of a connection, as written.
struct EndReference {
    std::optional<std::string_view> element; ///< empty for the system that contains the connection
    std::string_view connector;
    std::optional<std::vector<std::uint64_t>> indices;
};

struct Connection {
    EndReference start;
    EndReference end;
    bool suppressesUnitConversion = false;
    Transformation transformation;
    Place place;
};

struct Parameter {
    std::string_view name;
    Type type;
    std::vector<std::string_view> values; ///< as written: the words, or one text for each Value
    std::vector<Dimension> dimensions;
    Place place;
};

struct ParameterSet {
    File* file = nullptr;
    std::string_view name;
    Definitions definitions;
    std::vector<Parameter> parameters;
};

struct MappingEntry {
    std::string_view source;
    std::string_view target;
    bool suppressesUnitConversion = false;
    Transformation transformation;
    Place place;
};

struct ParameterMapping {
    File* file = nullptr;
    std::vector<MappingEntry> entries;
};

struct ParameterBinding {
    std::string_view prefix;
    const ParameterSet* set = nullptr; ///< null if it could not be read, which is a finding
    bool hasMapping = false;
    const ParameterMapping* mapping = nullptr; ///< null if there is none or it could not be read
    Place place;
};

struct SignalDictionary {
    File* file = nullptr;
    std::string_view name; ///< in the system that defines it
    Definitions definitions;
    std::vector<Connector> entries;
    Place place;
};

enum class ElementKind : std::uint8_t { System, Component, DictionaryReference };

struct SystemFile;

/// A system, or an element of one.
struct Element {
    ElementKind kind = ElementKind::System;
    SystemFile* file = nullptr; ///< that contains the record
    std::string_view name;
    std::vector<Connector> connectors;
    std::vector<ParameterBinding> bindings;
    Place place;

    // Of a system.
    std::vector<Element*> elements;
    std::vector<Connection> connections;
    std::vector<const SignalDictionary*> dictionaries;

    // Of a component.
    std::string_view type;
    std::optional<std::string_view> source;
    std::string_view implementation;
    /// The description of the model; null if there is none, which is a finding unless there is no
    /// source.
    const Model* model = nullptr;
    /// The root system of a component that is a system itself. A system can be that of several
    /// components, and contains itself in no case: cycles are findings.
    const Element* system = nullptr;

    // Of a reference to a dictionary.
    std::string_view dictionaryName;
    const SignalDictionary* dictionary = nullptr; ///< null, with a finding, if there is none
};

/// A system structure description.
struct SystemFile {
    File file;
    std::string_view version;
    std::string_view name;
    Definitions definitions;
    std::deque<Element> elements; ///< all, at any depth; the root system is the first one

    const Element& root() const { return elements.front(); }
};

/// All files of a system. Each is read once, however many refer to it.
struct Package {
    std::deque<SystemFile> systems; ///< the first one is that of the call
    std::deque<File> others;        ///< parameter sets, mappings and dictionaries
    std::deque<Model> models;
    std::deque<ParameterSet> sets; ///< in files of their own and in systems, as those below
    std::deque<ParameterMapping> mappings;
    std::deque<SignalDictionary> dictionaries;
};

} // namespace tvtool::ssp
