/// \file
/// Results of checking a system, from which every form of the report is printed. Texts are not safe
/// to print.
#pragma once

#include "dims/fact_records.h"
#include "findings/rules.h"
#include "ssp/records.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::systems {

/// What a connection does to a value, in the order in which it happens.
enum class Effect : std::uint8_t {
    Same,
    Converted,   ///< between units, by ConnectionRow::factor and offset
    Transformed, ///< by a LinearTransformation
    Mapped,      ///< by a mapping of Booleans, integers or enumerations
    Widened,     ///< to a type that has all values of the other one
    Truncated,   ///< the fraction is lost
    Rounded,     ///< digits are lost
    MayOverflow, ///< a value can be out of range
    Impossible   ///< no value can flow
};

/// Returns "same", "converted", ..., "mayOverflow", "impossible".
const char* effectName(Effect effect);

/// One end of a connection, as the system or else the model describes it.
struct End {
    const ssp::Element* element = nullptr; ///< null if there is none with the name
    bool isSystem = false; ///< whether the element is the system that contains the connection
    std::string_view elementName; ///< empty for the system
    std::string_view connectorName;
    const ssp::Connector* connector = nullptr; ///< null if there is none with the name
    const fmi::Variable* variable = nullptr;   ///< of the model; null if there is none
    ssp::Kind kind = ssp::Kind::None;
    exchange::BaseType base = exchange::BaseType::None;
    std::string typeName; ///< "Real", "Int8", the name of an enumeration; empty if not known
    int typeId = -1;      ///< in the table of types; -1 if it is not in the table
    std::string_view unit;
    const exchange::UnitDefinition* definition = nullptr; ///< of the unit; null if there is none
    bool isRelative = false; ///< whether the unit's offset does not apply
    const std::vector<exchange::Item>* items = nullptr; ///< of an enumeration, if they are known
    std::vector<ssp::Dimension> dimensions;             ///< of the whole connector
    std::string dimensionText;                          ///< "3 x n"; empty for a scalar
    const std::vector<std::uint64_t>* indices = nullptr;
};

struct ConnectionRow {
    const ssp::Element* system = nullptr; ///< that contains the connection
    const ssp::Connection* record = nullptr;
    End source; ///< in the direction of flow
    End target;
    bool isReversed = false; ///< whether the source is the end of the record
    std::vector<Effect> effects;
    /// Conversion between the units: factor * x + offset. Empty if there is none.
    std::optional<double> factor;
    std::optional<double> offset;
    std::vector<findings::Code> codes; ///< of the findings about the connection
};

/// A parameter of a set at one of its targets.
struct ParameterRow {
    std::string target; ///< path below the root system: B.C.P2
    const ssp::Parameter* parameter = nullptr;
    const ssp::ParameterSet* set = nullptr;
    std::string value;     ///< as written, shortened
    std::string applied;   ///< in the unit of the target; empty if it is not converted
    std::string_view unit; ///< of the parameter
    std::string_view targetUnit;
    std::vector<findings::Code> codes;
    std::optional<std::size_t> overriddenBy; ///< index of the row whose value is used instead
};

/// A pair of structs whose elements are connected one by one.
struct StructRow {
    const ssp::Element* system = nullptr;
    std::string source; ///< A.bus
    std::string target;
    std::size_t connected = 0; ///< number of elements that are
    std::size_t elements = 0;  ///< of the target
    bool isSameType = false;
};

/// A system with the elements below it, in the order of the files.
struct ElementRow {
    const ssp::Element* element = nullptr;
    std::string path; ///< below the root system; empty for the root
    std::size_t depth = 0;
};

struct Counts {
    std::size_t systems = 0;
    std::size_t components = 0;
    std::size_t connectors = 0;
    std::size_t connections = 0;
    std::size_t parameters = 0;
};

struct CheckedSystem {
    std::unique_ptr<ssp::Package> package; ///< with all findings, sorted, in the files
    Counts counts;
    /// Every element of each file. Components that share a system have its elements once.
    std::vector<ElementRow> elements;
    std::vector<ConnectionRow> connections;
    std::vector<ParameterRow> parameters;
    std::vector<StructRow> structs;
    std::vector<dims::DimsFact> facts; ///< about sizes

    /// Removes the findings whose code does not satisfy the predicate.
    template <class Predicate>
    void retain(Predicate predicate) {
        for (ssp::SystemFile& file : package->systems) {
            file.file.findings.retain(predicate);
        }
        for (ssp::File& file : package->others) {
            file.findings.retain(predicate);
        }
        for (ssp::Model& model : package->models) {
            model.file.findings.retain(predicate);
        }
        const auto isRemoved = [&](findings::Code code) { return !predicate(code); };
        for (ConnectionRow& row : connections) {
            std::erase_if(row.codes, isRemoved);
        }
        for (ParameterRow& row : parameters) {
            std::erase_if(row.codes, isRemoved);
        }
    }

    /// Returns all files, in the order of their findings in a report.
    std::vector<const ssp::File*> files() const;
};

/// Reads a system and checks it: an .ssp archive, an .ssd file or a directory that contains
/// SystemStructure.ssd. Throws a files::ReadError if it cannot be read.
std::unique_ptr<CheckedSystem> checkSystem(const std::string& path);

} // namespace tvtool::systems
