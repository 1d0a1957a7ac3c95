#include "systems/connector_checks.h"

#include "systems/type_conversion.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

namespace tvtool::systems {

namespace {

using exchange::BaseType;
using findings::Code;
using findings::SubjectKind;
using fmi::Causality;
using fmi::Variability;
using ssp::Connector;
using ssp::Kind;
using text::quoted;

/// Returns whether a connector can have this kind for a variable.
bool fits(Kind kind, const fmi::Variable& variable, int fmiMajorVersion) {
    const Causality causality = fmi::causalityOf(variable);
    const Variability variability = fmi::variabilityOf(variable);
    const bool isExposed = causality == Causality::Output || causality == Causality::Local;
    switch (kind) {
    case Kind::None:
    case Kind::Invalid:
    case Kind::Unspecified:
        return true;
    case Kind::Constant:
        return isExposed && variability == Variability::Constant;
    case Kind::CalculatedParameter:
        // The outputs of FMI 1 include the parameters that a model calculates.
        return causality == Causality::CalculatedParameter ||
               (fmiMajorVersion == 1 && causality == Causality::Output &&
                variability == Variability::Fixed);
    default:
        return kind == kindOf(variable);
    }
}

class ConnectorCheck {
  public:
    ConnectorCheck(const ssp::Element& element, const Connector& connector)
        : element_(element), connector_(connector), findings_(element.file->file.findings) {}

    void compareWithVariable(const fmi::Variable& variable, const ssp::Model& model,
                             const UnitEnd& declaredUnit, NameIndex& names) {
        const fmi::Description& description = *model.description;
        if (!fits(connector_.kind, variable, description.majorVersion)) {
            add(Code::ConnectorKind, "is declared {}, and the variable is {} ({})",
                ssp::kindName(connector_.kind), fmi::causalityName(fmi::causalityOf(variable)),
                fmi::variabilityName(fmi::variabilityOf(variable)));
        }
        compareTypes(variable.base, exchange::baseTypeName(variable.base, description.majorVersion),
                     Code::ConnectorType, "the variable");
        compareUnits(declaredUnit, unitOf(variable, description));
        compareDimensions(dimensionsOf(variable, model, names));
    }

    void compareTypes(BaseType actual, std::string_view name, Code code, const char* thing) {
        if (actual != BaseType::None && connector_.type.base != BaseType::None &&
            actual != connector_.type.base) {
            add(code, "is declared {}, and {} is {}", connector_.type.element, thing, name);
        }
    }

    void compareKinds(const Connector& inner) {
        const auto isOpen = [](Kind kind) {
            return kind == Kind::None || kind == Kind::Invalid || kind == Kind::Unspecified;
        };
        if (!isOpen(connector_.kind) && !isOpen(inner.kind) && connector_.kind != inner.kind) {
            add(Code::ConnectorKind, "is declared {}, and the connector of its system is {}",
                ssp::kindName(connector_.kind), ssp::kindName(inner.kind));
        }
    }

    void compareUnits(const UnitEnd& declared, const UnitEnd& actual) {
        const UnitConversion conversion = convertUnits(declared, actual);
        switch (conversion.relation) {
        case UnitRelation::None:
        case UnitRelation::Same:
            return;
        case UnitRelation::Converted:
            return add(Code::ConnectorUnit, "is declared in {}, and the variable is in {}: {}",
                       quoted(declared.name), quoted(actual.name), conversionText(conversion));
        case UnitRelation::RadianDiffers:
            return add(Code::ConnectorUnit,
                       "is declared in {}, and the variable is in {}, which differ in rad",
                       quoted(declared.name), quoted(actual.name));
        default:
            return add(Code::ConnectorUnit, "is declared in {}, and the variable is in {}: {}",
                       quoted(declared.name), quoted(actual.name), conversion.reason);
        }
    }

    template <class... Arguments>
    void add(Code code, fmt::format_string<Arguments...> sentence, Arguments&&... arguments) {
        findings_.addWithCause(code, connector_.place, {SubjectKind::Connector, connector_.name},
                               element_.name, "connector {} of {} {}", quoted(connector_.name),
                               quoted(element_.name),
                               fmt::format(sentence, std::forward<Arguments>(arguments)...));
    }

  private:
    void compareDimensions(const std::vector<ssp::Dimension>& actual) {
        const std::vector<ssp::Dimension>& declared = connector_.dimensions;
        if (declared.empty()) {
            return;
        }
        bool differs = declared.size() != actual.size();
        for (std::size_t i = 0; i < actual.size() && !differs; ++i) {
            differs = declared[i].size && actual[i].size && *declared[i].size != *actual[i].size;
        }
        if (differs) {
            add(Code::ConnectorDimension, "has the dimensions {}, and the variable {}",
                dimensionText(declared),
                actual.empty() ? "is a scalar" : "has " + dimensionText(actual));
        }
    }

    const ssp::Element& element_;
    const Connector& connector_;
    findings::Findings& findings_;
};

/// Checks that the dimensions of a connector refer to connectors with sizes.
void checkSizes(ConnectorCheck& check, const Connector& connector, const ssp::Element& element,
                Connectors& connectors) {
    for (const ssp::Dimension& dimension : connector.dimensions) {
        if (dimension.sizeConnector.empty()) {
            continue;
        }
        const End& size = connectors.resolve(element, dimension.sizeConnector);
        const bool exists = size.connector != nullptr || size.variable != nullptr;
        const bool isSize = size.kind == Kind::StructuralParameter || size.kind == Kind::Constant ||
                            size.kind == Kind::Unspecified || size.kind == Kind::None ||
                            (size.variable != nullptr && size.variable->isSize);
        const bool isInteger = size.base == BaseType::None ||
                               (isNumeric(size.base) && size.base != BaseType::Float64 &&
                                size.base != BaseType::Float32 && size.base != BaseType::Boolean);
        if (!exists) {
            check.add(Code::SizeConnector, "has its size from {}, which does not exist",
                      quoted(dimension.sizeConnector));
        } else if (!isSize || !isInteger) {
            check.add(Code::SizeConnector, "has its size from {}, which is {} of type {}",
                      quoted(dimension.sizeConnector),
                      size.kind == Kind::None ? "a connector" : ssp::kindName(size.kind),
                      size.typeName);
        }
    }
}

/// Collects the connectors without a match.
class Unmatched {
  public:
    explicit Unmatched(const ssp::Element& element) : element_(element) {}

    void add(ConnectorCheck& check, const Connector& connector, bool isConnected,
             const char* things) {
        if (isConnected) {
            check.add(Code::ConnectorUnmatched, "is the name of no {}", things);
        } else {
            unused_.push_back(&connector);
        }
    }

    void report() const {
        if (unused_.empty()) {
            return;
        }
        std::string list;
        constexpr std::size_t most = 5;
        for (std::size_t i = 0; i < std::min(most, unused_.size()); ++i) {
            list += (i > 0 ? ", " : "") + quoted(unused_[i]->name);
        }
        element_.file->file.findings.add(
            Code::ConnectorUnused, unused_.front()->place, {SubjectKind::Element, element_.name},
            "{} of component {} {} no variable of its model, and {} not connected: {}{}",
            text::counted(unused_.size(), "connector", "connectors"), quoted(element_.name),
            unused_.size() == 1 ? "is the name of" : "are the names of",
            unused_.size() == 1 ? "is" : "are", list, unused_.size() > most ? ", ..." : "");
    }

  private:
    const ssp::Element& element_;
    std::vector<const Connector*> unused_;
};

} // namespace

void checkConnectors(const ssp::Element& element, const ConnectedNames& connected,
                     Connectors& connectors, NameIndex& names) {
    const auto connectedNames = connected.find(&element);
    Unmatched unmatched(element);
    for (const Connector& connector : element.connectors) {
        ConnectorCheck check(element, connector);
        checkSizes(check, connector, element, connectors);
        const bool isConnected =
            connectedNames != connected.end() && connectedNames->second.contains(connector.name);
        const std::string_view unit = connector.type.unit;
        const UnitEnd declared{
            unit, unit.empty() ? nullptr : names.unit(element.file->definitions, unit), false};
        if (element.model != nullptr) {
            const fmi::Variable* const variable = names.variable(*element.model, connector.name);
            // A layered standard puts binaries into annotations of the model.
            const bool isLayered = connector.type.base == BaseType::Binary &&
                                   element.model->description->majorVersion < 3;
            if (variable != nullptr) {
                check.compareWithVariable(*variable, *element.model, declared, names);
            } else if (!isLayered) {
                unmatched.add(check, connector, isConnected, "variable of its model");
            }
        } else if (element.system != nullptr) {
            if (const Connector* const inner = names.connector(*element.system, connector.name)) {
                const End& end = connectors.resolve(*element.system, connector.name);
                check.compareKinds(*inner);
                check.compareTypes(end.base, end.typeName, Code::ConnectorType,
                                   "the connector of its system");
                check.compareUnits(declared, unitOf(end));
            } else {
                unmatched.add(check, connector, isConnected, "connector of its system");
            }
        } else if (element.dictionary != nullptr) {
            const Connector* const entry = names.entry(*element.dictionary, connector.name);
            if (entry == nullptr) {
                check.add(Code::DictionaryEntry, "is no entry of the dictionary {}",
                          quoted(element.dictionary->name));
            } else {
                check.compareTypes(entry->type.base, entry->type.element, Code::DictionaryEntry,
                                   "the entry of the dictionary");
            }
        }
    }
    unmatched.report();
}

} // namespace tvtool::systems
