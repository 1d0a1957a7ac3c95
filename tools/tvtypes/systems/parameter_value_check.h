/// \file
/// Checks of the values that parameters set.
#pragma once

#include "findings/rules.h"
#include "systems/parameter_transformation.h"
#include "systems/parameter_type.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::systems {

/// A value that the target cannot take.
struct ValueFault {
    findings::Code code = findings::Code::ParameterRange;
    std::string reason;    ///< as what follows "which"
    std::string_view text; ///< as written
    std::string shown;     ///< as the target would take it
};

/// Compares values with the type of a target: its range, its fraction and digits, its items, and
/// the min and max of the variable.
class ValueCheck {
  public:
    /// \param base of the parameter, whose values are valid
    ValueCheck(exchange::BaseType base, const TargetType& target,
               const ParameterTransformation& transformation, ItemIndex& items);

    std::optional<ValueFault> firstFault(std::span<const std::string_view> values) const;

  private:
    struct Fault {
        findings::Code code = findings::Code::ParameterRange;
        std::string reason;
    };

    std::optional<Fault> faultOf(const ParameterValue& value) const;
    std::optional<Fault> typeFault(exchange::BaseType base, std::string_view name,
                                   const ParameterValue& value) const;
    std::optional<Fault> itemFault(const ParameterValue& value) const;
    std::optional<Fault> limitFault(const ParameterValue& value) const;

    exchange::BaseType base_;
    const TargetType& target_;
    const ParameterTransformation& transformation_;
    ItemIndex& items_;
    std::optional<ExactValue> min_;
    std::optional<ExactValue> max_;
};

/// An entry that is wrong. The reason follows "the mapping".
struct MappingFault {
    findings::Code code = findings::Code::MappingTarget;
    const ssp::MapEntry* entry = nullptr;
    std::string reason;
};

/// Returns the entries of a mapping that have the source of another one, or no valid target.
std::vector<MappingFault>
mappingFaults(const ssp::Transformation& mapping,
              const std::function<bool(std::string_view value)>& isTarget);

/// Returns whether the target of an entry is a value of a type.
bool isMappingTarget(std::string_view value, ssp::TransformationKind kind, const TargetType& type,
                     ItemIndex& items);

} // namespace tvtool::systems
