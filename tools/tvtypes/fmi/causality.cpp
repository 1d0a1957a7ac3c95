// Checks of causality, variability and initial, and of the presence of start values.
#include "fmi/description_checks.h"
#include "text/quote.h"

namespace tvtool::fmi {

namespace {

using findings::Code;
using findings::Findings;
using text::quoted;

// What initial can be for a causality and a variability. The default comes first in the tables.
constexpr unsigned exact = 1;
constexpr unsigned approx = 2;
constexpr unsigned calculated = 4;
constexpr unsigned absent = 8; ///< the attribute is not allowed

/// A permitted combination.
struct Combination {
    unsigned initials = 0; ///< 0 for a combination that is not permitted
    Initial byDefault = Initial::None;
};

Combination combinationOf(Causality causality, Variability variability, int majorVersion) {
    const bool isParameter =
        variability == Variability::Fixed || variability == Variability::Tunable;
    const bool isConstant = variability == Variability::Constant;
    switch (causality) {
    case Causality::Parameter:
    case Causality::StructuralParameter:
        return isParameter ? Combination{exact, Initial::Exact} : Combination();
    case Causality::CalculatedParameter:
        return isParameter ? Combination{approx | calculated, Initial::Calculated} : Combination();
    case Causality::Input:
        return isParameter || isConstant ? Combination()
               : majorVersion == 2       ? Combination{absent, Initial::None}
                                         : Combination{exact, Initial::Exact};
    case Causality::Independent:
        return variability == Variability::Continuous ? Combination{absent, Initial::None}
                                                      : Combination();
    case Causality::Local:
        if (isParameter) {
            return {approx | calculated, Initial::Calculated};
        }
        [[fallthrough]];
    default: // an output
        return isConstant    ? Combination{exact, Initial::Exact}
               : isParameter ? Combination()
                             : Combination{exact | approx | calculated, Initial::Calculated};
    }
}

unsigned bitOf(Initial initial) {
    return 1U << (static_cast<unsigned>(initial) - static_cast<unsigned>(Initial::Exact));
}

class CausalityChecks {
  public:
    CausalityChecks(const Description& description, Findings& findings)
        : version_(description.majorVersion), findings_(findings) {}

    void check(const Variable& variable) {
        if (variable.base == BaseType::None || variable.causality == Causality::Invalid ||
            variable.variability == Variability::Invalid) {
            return;
        }
        const bool isReal =
            variable.base == BaseType::Float64 || variable.base == BaseType::Float32;
        const Causality causality = causalityOf(variable);
        const Variability variability = variabilityOf(variable);
        if (variable.variability == Variability::Continuous && !isReal) {
            add(Code::VariabilityType, variable, "variable {} is {} and cannot be continuous",
                quoted(variable.name), exchange::baseTypeName(variable.base, version_));
            return;
        }
        if (version_ == 2 && variable.variability == Variability::None &&
            variability != Variability::Continuous) {
            add(Code::VariabilityMissing, variable,
                "variable {} has no variability, and the default, continuous, is not permitted for "
                "it",
                quoted(variable.name));
        }
        if (causality == Causality::Independent) {
            checkIndependent(variable, isReal);
        }
        const Combination combination = combinationOf(causality, variability, version_);
        const bool isClock = variable.base == BaseType::Clock;
        if (combination.initials == 0) {
            add(Code::CausalityVariability, variable,
                "variable {} has causality {} and variability {}, which cannot be combined",
                quoted(variable.name), causalityName(causality), variabilityName(variability));
            return;
        }
        if (isClock && causality != Causality::Input && causality != Causality::Output &&
            causality != Causality::Local) {
            add(Code::CausalityVariability, variable,
                "variable {} is a Clock and has causality {}, not input, output or local",
                quoted(variable.name), causalityName(causality));
            return;
        }
        if (!isClock) {
            checkInitial(variable, combination);
        }
    }

  private:
    template <class... Arguments>
    void add(Code code, const Variable& variable, fmt::format_string<Arguments...> sentence,
             Arguments&&... arguments) {
        findings_.add(code, variable.place, {findings::SubjectKind::Variable, variable.name},
                      sentence, std::forward<Arguments>(arguments)...);
    }

    void checkIndependent(const Variable& variable, bool isReal) {
        if (!isReal) {
            add(Code::IndependentType, variable,
                "the independent variable {} is {} and no floating-point number",
                quoted(variable.name), exchange::baseTypeName(variable.base, version_));
        }
        if (independent_ != nullptr) {
            add(Code::IndependentRepeated, variable,
                "variable {} is independent, as is {} on line {}", quoted(variable.name),
                quoted(independent_->name), independent_->place.line);
        }
        independent_ = independent_ == nullptr ? &variable : independent_;
    }

    void checkInitial(const Variable& variable, const Combination& combination) {
        const Causality causality = causalityOf(variable);
        const std::string_view variability = variabilityName(variabilityOf(variable));
        if (variable.initial == Initial::Invalid) {
            return;
        }
        if (variable.initial != Initial::None &&
            (bitOf(variable.initial) & combination.initials) == 0) {
            add(Code::InitialForbidden, variable,
                "variable {} has initial {}, which causality {} and variability {} do not permit",
                quoted(variable.name), initialName(variable.initial), causalityName(causality),
                variability);
            return;
        }
        const Initial initial =
            variable.initial == Initial::None ? combination.byDefault : variable.initial;
        const bool isNeeded = causality == Causality::Input || initial == Initial::Exact ||
                              initial == Initial::Approx;
        if (isNeeded && !variable.hasStart) {
            add(Code::StartMissing, variable,
                "variable {} has no start, which causality {}, variability {}{} need",
                quoted(variable.name), causalityName(causality), variability,
                variable.initial == Initial::None
                    ? std::string()
                    : fmt::format(" and initial {}", initialName(variable.initial)));
        } else if (!isNeeded && variable.hasStart) {
            add(Code::StartForbidden, variable, "variable {} has a start and {}",
                quoted(variable.name),
                causality == Causality::Independent ? std::string("is independent")
                : variable.initial == Initial::None
                    ? fmt::format("no initial, which is calculated for causality {} and "
                                  "variability {}",
                                  causalityName(causality), variability)
                    : std::string("initial calculated"));
        }
    }

    int version_;
    Findings& findings_;
    const Variable* independent_ = nullptr; ///< the first one
};

} // namespace

Initial initialOf(const Variable& variable, int majorVersion) {
    const bool isWritten =
        variable.initial != Initial::None && variable.initial != Initial::Invalid;
    return isWritten ? variable.initial
                     : combinationOf(causalityOf(variable), variabilityOf(variable), majorVersion)
                           .byDefault;
}

void checkCausalities(const Description& description, Findings& findings) {
    CausalityChecks checks(description, findings);
    for (const Variable& variable : description.variables) {
        checks.check(variable);
    }
}

} // namespace tvtool::fmi
