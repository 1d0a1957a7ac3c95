#include "systems/parameter_check.h"

#include "systems/mapping_key.h"
#include "systems/parameter_transformation.h"
#include "systems/parameter_value_check.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace tvtool::systems {

namespace {

using exchange::BaseType;
using findings::Code;
using text::quoted;

/// Returns whether a value of one base type can become one of another.
bool canBecome(BaseType source, BaseType target) {
    const auto isNumber = [](BaseType base) { return isReal(base) || isInteger(base); };
    const bool hasNumber = isNumber(source) || source == BaseType::Enumeration;
    return source == target || (hasNumber && (isNumber(target) || target == BaseType::Enumeration));
}

std::string sizesText(const TargetSizes& sizes) {
    std::string text;
    for (const std::optional<std::uint64_t>& size : sizes) {
        text += text.empty() ? "" : " x ";
        text += size ? fmt::format("{}", *size) : "?";
        if (text.size() > text::longestName) {
            break;
        }
    }
    return text.empty() ? "a scalar" : "an array of " + text::shortened(text);
}

/// Returns whether sizes that are known differ. Those of an array with one element and of a scalar
/// do not.
bool differ(const TargetSizes& a, const TargetSizes& b) {
    const auto isOne = [](const std::optional<std::uint64_t>& size) { return size == 1U; };
    if (a.size() != b.size()) {
        return !(std::ranges::all_of(a, isOne) && std::ranges::all_of(b, isOne));
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] && b[i] && *a[i] != *b[i]) {
            return true;
        }
    }
    return false;
}

/// Checks a parameter at one target.
class AssignmentCheck {
  public:
    AssignmentCheck(const Assignment& assignment, const End& end, ParameterTables& tables,
                    ParameterRow& row)
        : assignment_(assignment),
          parameter_(*assignment.parameter),
          tables_(tables),
          row_(row),
          type_(targetType(end)) {
        if (const fmi::Variable* const variable = assignment.target.variable) {
            forbidden_ = forbiddenReason(*variable, end.element->model->description->majorVersion);
        }
        const ssp::Definitions& definitions = assignment.set->definitions;
        const ssp::Enumeration* const own =
            tables.names.enumeration(definitions, parameter_.type.enumeration);
        items_ = own == nullptr ? nullptr : &own->items;
        unit_ = {parameter_.type.unit, tables.names.unit(definitions, parameter_.type.unit), false};
    }

    void check(const std::optional<TargetSizes>& sizes, bool isValid) {
        row_.unit = unit_.name;
        row_.targetUnit = type_.unit.name;
        if (!forbidden_.empty()) {
            add(Code::ParameterForbidden, {}, "parameter {} sets {}, which {}",
                quoted(parameter_.name), target(), forbidden_);
        }
        const BaseType base = parameter_.type.base;
        if (base == BaseType::None || type_.base == BaseType::None) {
            return;
        }
        const bool isFitting = checkType() && checkDimensions(sizes);
        const UnitConversion* const conversion = checkUnit();
        const ssp::Transformation* const written =
            assignment_.entry == nullptr ? nullptr : &assignment_.entry->transformation;
        if (written != nullptr && written->kind != ssp::TransformationKind::None) {
            checkTransformation(*written);
        }
        if (!isFitting || !isValid || hasWrongUnit_) {
            return;
        }
        checkValues({base, items_, conversion, written});
    }

  private:
    std::string target() const { return text::quoted(row_.target); }

    template <class... Arguments>
    void add(Code code, std::string_view cause, fmt::format_string<Arguments...> sentence,
             Arguments&&... arguments) {
        row_.codes.push_back(code);
        assignment_.set->file->findings.addWithCause(
            code, parameter_.place, {findings::SubjectKind::Parameter, parameter_.name}, cause,
            sentence, std::forward<Arguments>(arguments)...);
    }

    bool checkType() {
        const BaseType base = parameter_.type.base;
        // Without the values of its items, an enumeration is no number.
        const bool isName = base == BaseType::Enumeration && items_ == nullptr;
        const bool takesNames =
            type_.base == BaseType::Enumeration || type_.modelBase == BaseType::Enumeration;
        const bool isFitting = canBecome(base, type_.base) && (takesNames || !isName);
        if (!isFitting) {
            add(Code::ParameterType, {}, "parameter {} is {} and sets {}, which is {}",
                quoted(parameter_.name), parameter_.type.element, target(), type_.typeName);
        }
        return isFitting;
    }

    bool checkDimensions(const std::optional<TargetSizes>& sizes) {
        TargetSizes own;
        std::ranges::transform(parameter_.dimensions, std::back_inserter(own),
                               &ssp::Dimension::size);
        if (!sizes || !differ(own, *sizes)) {
            return true;
        }
        add(Code::ParameterDimension, {}, "parameter {} is {}, and sets {}, which is {}",
            quoted(parameter_.name), sizesText(own), target(), sizesText(*sizes));
        return false;
    }

    /// Returns the conversion; null if there is none.
    const UnitConversion* checkUnit() {
        const UnitConversion& conversion = tables_.conversions.between(unit_, type_.unit);
        const ssp::MappingEntry* const entry = assignment_.entry;
        const bool isSuppressed = entry != nullptr && entry->suppressesUnitConversion;
        const bool isReplaced =
            isSuppressed && entry->transformation.kind == ssp::TransformationKind::Linear;
        if (isReplaced || conversion.relation == UnitRelation::None ||
            conversion.relation == UnitRelation::Same) {
            return nullptr;
        }
        const std::string cause = fmt::format("{} to {}", unit_.name, type_.unit.name);
        if (isSuppressed && conversion.relation == UnitRelation::Converted) {
            addSuppressed(conversion, cause);
            return nullptr;
        }
        const auto addUnits = [&](Code code, const std::string& reason) {
            add(code, cause, "parameter {} is in {} and sets {}, which is in {}: {}",
                quoted(parameter_.name), quoted(unit_.name), target(), quoted(type_.unit.name),
                reason);
        };
        switch (conversion.relation) {
        case UnitRelation::Incompatible:
            hasWrongUnit_ = true;
            addUnits(Code::ParameterUnit, conversion.reason);
            return nullptr;
        case UnitRelation::Undecided:
            addUnits(Code::UnitUndecided,
                     "one of the units is not defined, and " + conversion.reason);
            return nullptr;
        case UnitRelation::RadianDiffers:
            addUnits(Code::UnitRadian, "the units differ in a power of rad");
            break;
        default:
            addUnits(Code::ParameterConversion, "a value x becomes " + conversionText(conversion));
        }
        return isSuppressed ? nullptr : &conversion;
    }

    void addSuppressed(const UnitConversion& conversion, std::string_view cause) {
        row_.codes.push_back(Code::UnitSuppressed);
        assignment_.mapping->file->findings.addWithCause(
            Code::UnitSuppressed, assignment_.entry->place,
            {findings::SubjectKind::Parameter, parameter_.name}, cause,
            "the conversion of parameter {} from {} to {} is suppressed, so that {} is wrong: the "
            "conversion is {}",
            quoted(parameter_.name), quoted(unit_.name), quoted(type_.unit.name), target(),
            conversionText(conversion));
    }

    void checkTransformation(const ssp::Transformation& transformation) {
        findings::Findings& findings = assignment_.mapping->file->findings;
        const findings::Subject subject{findings::SubjectKind::Parameter, parameter_.name};
        for (const auto& [base, name] : {std::pair(parameter_.type.base, parameter_.type.element),
                                         std::pair(type_.base, type_.typeName)}) {
            if (!takes(transformation.kind, base)) {
                row_.codes.push_back(Code::TransformationType);
                findings.add(Code::TransformationType, transformation.place, subject,
                             "the transformation of parameter {} for {} does not take {}",
                             quoted(parameter_.name), target(), name);
                return;
            }
        }
        const auto isTarget = [&](std::string_view value) {
            return isMappingTarget(value, transformation.kind, type_, tables_.items);
        };
        for (const MappingFault& fault : mappingFaults(transformation, isTarget)) {
            row_.codes.push_back(fault.code);
            findings.add(fault.code, fault.entry->place, subject,
                         "the mapping of parameter {} to {} {}", quoted(parameter_.name), target(),
                         fault.reason);
        }
    }

    void checkValues(const ParameterTransformation& transformation) {
        const std::vector<std::string_view>& values = parameter_.values;
        if (transformation.changesValues() && !values.empty()) {
            describeApplied(transformation);
        }
        const ValueCheck check(parameter_.type.base, type_, transformation, tables_.items);
        const std::optional<ValueFault> fault = check.firstFault(values);
        if (!fault) {
            return;
        }
        const std::string written = transformation.changesValues() && fault->shown != fault->text
                                        ? fmt::format(" (from {})", text::shortened(fault->text))
                                        : std::string();
        add(fault->code, {}, "parameter {} sets {} to {}{}, which {}", quoted(parameter_.name),
            target(), fault->shown, written, fault->reason);
    }

    void describeApplied(const ParameterTransformation& transformation) {
        for (const std::string_view text : parameter_.values) {
            row_.applied += row_.applied.empty() ? "" : " ";
            row_.applied +=
                shownText(transformation.apply(text, tables_.items), transformation.isScaling());
            if (row_.applied.size() > text::longestName) {
                row_.applied = text::shortened(row_.applied);
                return;
            }
        }
    }

    const Assignment& assignment_;
    const ssp::Parameter& parameter_;
    ParameterTables& tables_;
    ParameterRow& row_;
    TargetType type_;
    std::string forbidden_;
    const std::vector<exchange::Item>* items_ = nullptr; ///< of the parameter's own enumeration
    UnitEnd unit_;
    bool hasWrongUnit_ = false;
};

} // namespace

void checkAssignment(const Assignment& assignment, const End& end,
                     const std::optional<TargetSizes>& sizes, bool isValid, ParameterTables& tables,
                     ParameterRow& row) {
    AssignmentCheck(assignment, end, tables, row).check(sizes, isValid);
}

} // namespace tvtool::systems
