// The check of a whole package.
#include "findings/rules.h"
#include "model/units.h"
#include "ssp/package.h"
#include "systems/connection_checks.h"
#include "systems/connector_checks.h"
#include "systems/parameters.h"
#include "systems/records.h"
#include "systems/structs.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <string>
#include <unordered_set>
#include <utility>

namespace tvtool::systems {

namespace {

using findings::Area;
using findings::Code;
using findings::Severity;
using ssp::ElementKind;

constexpr const char* effectNames[] = {"same",    "converted",   "transformed",
                                       "mapped",  "widened",     "truncated",
                                       "rounded", "mayOverflow", "impossible"};

class PackageCheck {
  public:
    explicit PackageCheck(std::unique_ptr<ssp::Package> package)
        : result_(std::make_unique<CheckedSystem>()) {
        result_->package = std::move(package);
    }

    std::unique_ptr<CheckedSystem> check() && {
        addElements(package().systems.front().root(), "", 0);
        countParameters();
        checkDefinitions();
        checkModels();
        result_->parameters = checkParameters(package(), connectors_, names_, comparisons_);
        checkConnections();
        StructTypes structs(connectors_, types_);
        result_->structs = checkStructs(result_->connections, structs);
        sortFindings();
        return std::move(result_);
    }

  private:
    ssp::Package& package() { return *result_->package; }

    /// Adds an element and those below it, also those of another file, whose path is that of the
    /// first component that refers to it. The depth is limited while the files are read.
    void addElements(const ssp::Element& element, const std::string& path, std::size_t depth) {
        result_->elements.push_back({&element, path, depth});
        paths_.emplace(&element, path);
        Counts& counts = result_->counts;
        counts.systems += element.kind == ElementKind::System ? 1 : 0;
        counts.components += element.kind == ElementKind::Component ? 1 : 0;
        counts.connectors += element.connectors.size();
        counts.connections += element.connections.size();
        for (const ssp::Element* const inner : element.elements) {
            addElements(*inner, fmt::format("{}{}{}", path, path.empty() ? "" : ".", inner->name),
                        depth + 1);
        }
        const ssp::Element* const system = element.system;
        const bool isInOtherFile = system != nullptr && system == &system->file->root();
        if (isInOtherFile && !paths_.contains(system)) {
            addElements(*system, path, depth + 1);
        }
    }

    void countParameters() {
        for (const ssp::ParameterSet& set : package().sets) {
            result_->counts.parameters += set.parameters.size();
        }
    }

    /// Compares the definitions of units with what their names mean, as for a model.
    void checkDefinitions() {
        for (ssp::SystemFile& file : package().systems) {
            units_.add(file.definitions.units, file.file.findings);
        }
        for (ssp::ParameterSet& set : package().sets) {
            units_.add(set.definitions.units, set.file->findings);
        }
        for (ssp::SignalDictionary& dictionary : package().dictionaries) {
            units_.add(dictionary.definitions.units, dictionary.file->findings);
        }
    }

    /// Keeps the findings about the units of a model, which matter to its connections, and counts
    /// the others.
    void checkModels() {
        std::unordered_set<const ssp::Model*> noted;
        for (const ElementRow& row : result_->elements) {
            const ssp::Model* const model = row.element->model;
            if (model == nullptr || !noted.insert(model).second) {
                continue;
            }
            const findings::Findings& found = model->file.findings;
            const auto others = [&](Severity severity) {
                return found.count(severity) - found.count(severity, Area::Unit);
            };
            const std::size_t errors = others(Severity::Error);
            const std::size_t warnings = others(Severity::Warning);
            if (errors + warnings > 0) {
                row.element->file->file.findings.add(
                    Code::ComponentFindings, row.element->place,
                    {findings::SubjectKind::Element, row.element->name},
                    "the model of component {} has {} and {} of its own",
                    text::quoted(row.element->name), text::counted(errors, "error", "errors"),
                    text::counted(warnings, "warning", "warnings"));
            }
        }
        for (ssp::Model& model : package().models) {
            model.file.findings.retain(
                [](Code code) { return findings::ruleOf(code).area == Area::Unit; });
            units_.add(model.description->units, model.file.findings);
        }
    }

    void checkConnections() {
        Sizes sizes(paths_, result_->parameters, names_);
        ConnectionChecks checks(connectors_, names_, sizes, comparisons_);
        ConnectedNames connected;
        for (const ElementRow& row : result_->elements) {
            for (const ssp::Connection& connection : row.element->connections) {
                const ConnectionRow& added =
                    result_->connections.emplace_back(checks.check(*row.element, connection));
                for (const End* const end : {&added.source, &added.target}) {
                    if (end->element != nullptr) {
                        connected[end->element].insert(end->connectorName);
                    }
                }
            }
        }
        for (const ElementRow& row : result_->elements) {
            checkConnectors(*row.element, connected, connectors_, names_);
        }
        result_->facts = sizes.facts();
    }

    void sortFindings() {
        for (ssp::SystemFile& file : package().systems) {
            file.file.findings.sort();
        }
        for (ssp::File& file : package().others) {
            file.findings.sort();
        }
        for (ssp::Model& model : package().models) {
            model.file.findings.sort();
        }
    }

    std::unique_ptr<CheckedSystem> result_;
    std::unordered_map<const ssp::Element*, std::string> paths_;
    NameIndex names_;
    TypeTable types_;
    model::Units units_;
    Connectors connectors_{names_, types_};
    Comparisons comparisons_;
};

} // namespace

const char* effectName(Effect effect) { return effectNames[static_cast<std::size_t>(effect)]; }

std::vector<const ssp::File*> CheckedSystem::files() const {
    std::vector<const ssp::File*> files;
    for (const ssp::SystemFile& file : package->systems) {
        files.push_back(&file.file);
    }
    for (const ssp::File& file : package->others) {
        files.push_back(&file);
    }
    for (const ssp::Model& model : package->models) {
        files.push_back(&model.file);
    }
    return files;
}

std::unique_ptr<CheckedSystem> checkSystem(const std::string& path) {
    return PackageCheck(ssp::readPackage(path)).check();
}

} // namespace tvtool::systems
