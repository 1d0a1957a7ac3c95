/// \file
/// Conversion of the values of a parameter into those of its target.
#pragma once

#include "systems/item_index.h"
#include "systems/parameter_value.h"
#include "systems/unit_conversion.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tvtool::systems {

/// The value of a parameter after its conversion.
struct ParameterValue {
    std::string_view text; ///< of a Boolean, a string, a binary or an item; else as written
    bool isNumber = false;
    ExactValue number;
};

/// Converts values between units, and then by the transformation of a mapping entry.
class ParameterTransformation {
  public:
    /// \param base of the parameter, whose values are valid
    /// \param items of the enumeration of the parameter; null if they are not known
    /// \param conversion null if there is none
    /// \param transformation null if there is none
    ParameterTransformation(exchange::BaseType base, const std::vector<exchange::Item>* items,
                            const UnitConversion* conversion,
                            const ssp::Transformation* transformation);

    ParameterValue apply(std::string_view text, ItemIndex& index) const;

    /// Returns whether the values of an enumeration are numbers, and not names of items.
    bool mapsNumbers() const { return mapping_ == ssp::TransformationKind::Integer; }
    /// Returns whether numbers are multiplied, and thus rounded.
    bool isScaling() const { return !scalings_.empty(); }
    /// Returns whether apply() can return other values than those written.
    bool changesValues() const { return isScaling() || !mapped_.empty(); }

  private:
    struct Scaling {
        exact::Number factor;
        exact::Number offset;
    };

    void addScaling(double factor, double offset);

    exchange::BaseType base_;
    const std::vector<exchange::Item>* items_;
    std::vector<Scaling> scalings_;
    ssp::TransformationKind mapping_ = ssp::TransformationKind::None;
    std::unordered_map<std::string, std::string_view> mapped_; ///< by the key of the source
};

/// Returns "30" of a number that was scaled, else the text, shortened.
std::string shownText(const ParameterValue& value, bool isScaled);

} // namespace tvtool::systems
