#include "systems/signal_checks.h"

#include "systems/connectors.h"
#include "systems/type_conversion.h"
#include "text/quote.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>

namespace tvtool::systems {

namespace {

using exchange::BaseType;
using exchange::Item;
using findings::Code;
using ssp::TransformationKind;

/// Returns the names of items, at most three.
std::string itemList(const std::vector<const Item*>& items) {
    std::string text;
    for (std::size_t i = 0; i < std::min<std::size_t>(items.size(), 3); ++i) {
        text += fmt::format("{}{} ({})", i > 0 ? ", " : "", text::quoted(items[i]->name),
                            items[i]->value.value_or(0));
    }
    return items.size() > 3 ? text + ", ..." : text;
}

class SignalCheck {
  public:
    SignalCheck(const ConnectionReport& report, Comparisons& comparisons)
        : report_(report),
          comparisons_(comparisons),
          row_(report.row),
          source_(report.row.source),
          target_(report.row.target),
          transformation_(report.row.record->transformation.kind) {}

    void check() {
        checkUnits();
        if (transformation_ == TransformationKind::Linear) {
            addEffect(Effect::Transformed);
        } else if (transformation_ != TransformationKind::None) {
            addEffect(Effect::Mapped);
        }
        checkTypes();
        if (row_.effects.empty()) {
            addEffect(Effect::Same);
        }
    }

  private:
    void addEffect(Effect effect) { row_.effects.push_back(effect); }

    void checkUnits() {
        const UnitConversion& conversion =
            comparisons_.conversions.between(unitOf(source_), unitOf(target_));
        const bool differs =
            conversion.relation != UnitRelation::None && conversion.relation != UnitRelation::Same;
        if (!differs) {
            return;
        }
        const std::string units =
            fmt::format("{} and {}", text::quoted(source_.unit), text::quoted(target_.unit));
        if (row_.record->suppressesUnitConversion) {
            return checkSuppressed(conversion, units);
        }
        switch (conversion.relation) {
        case UnitRelation::Converted:
            setConversion(conversion);
            return report_.add(Code::UnitConversion, "converted from {} to {}: {}",
                               text::quoted(source_.unit), text::quoted(target_.unit),
                               conversionText(conversion));
        case UnitRelation::RadianDiffers:
            if (conversion.factor != 1 || conversion.offset != 0) {
                setConversion(conversion);
            }
            return report_.add(Code::UnitRadian, "the units {} differ in rad; {}", units,
                               conversion.factor == 1 && conversion.offset == 0
                                   ? "otherwise they are the same"
                                   : "the conversion is " + conversionText(conversion));
        case UnitRelation::Undecided:
            return report_.add(Code::UnitUndecided,
                               "the units {} cannot be compared, as {} has no "
                               "definition; {}",
                               units, undefinedUnits(), conversion.reason);
        default:
            addEffect(Effect::Impossible);
            return report_.add(Code::UnitIncompatible,
                               "the units {} measure different quantities: {}", units,
                               conversion.reason);
        }
    }

    std::string undefinedUnits() const {
        const auto isMissing = [](const End& end) {
            return end.definition == nullptr || !end.definition->isDefined || !end.definition->base;
        };
        return isMissing(source_) && isMissing(target_) ? std::string("each of them")
               : isMissing(source_)                     ? text::quoted(source_.unit)
                                                        : text::quoted(target_.unit);
    }

    void setConversion(const UnitConversion& conversion) {
        addEffect(Effect::Converted);
        row_.factor = conversion.factor;
        row_.offset = conversion.offset;
    }

    /// A LinearTransformation replaces the conversion.
    void checkSuppressed(const UnitConversion& conversion, const std::string& units) {
        if (transformation_ == TransformationKind::Linear) {
            return;
        }
        const bool hasNumbers = conversion.relation == UnitRelation::Converted ||
                                (conversion.relation == UnitRelation::RadianDiffers &&
                                 (conversion.factor != 1 || conversion.offset != 0));
        if (hasNumbers) {
            report_.add(Code::UnitSuppressed,
                        "the conversion from {} to {} is suppressed; it is {}, and the value is "
                        "wrong without it",
                        text::quoted(source_.unit), text::quoted(target_.unit),
                        conversionText(conversion));
        } else if (conversion.relation != UnitRelation::RadianDiffers) {
            report_.add(Code::UnitSuppressed, "the conversion between {} is suppressed; {}", units,
                        conversion.reason);
        }
    }

    void checkTypes() {
        const BaseType from = source_.base;
        const BaseType to = target_.base;
        if (from == BaseType::None || to == BaseType::None) {
            return;
        }
        if (isNumeric(from) && isNumeric(to)) {
            return addLoss(lossBetween(from, to));
        }
        if (from == BaseType::Enumeration && to == BaseType::Enumeration) {
            return transformation_ == TransformationKind::None ? compareItems() : void();
        }
        if (from == BaseType::Enumeration && isNumeric(to)) {
            return addLoss(lossOfItems(to));
        }
        if (isNumeric(from) && to == BaseType::Enumeration) {
            return checkNumbersIntoItems();
        }
        if (from != to) {
            addEffect(Effect::Impossible);
            return report_.add(Code::TypeIncompatible, "{} is not converted to {}",
                               source_.typeName, target_.typeName);
        }
        if (from == BaseType::Binary) {
            compareMimeTypes();
        } else if (from == BaseType::Clock) {
            compareIntervals();
        }
    }

    void addLoss(const TypeLoss& loss) {
        if (!loss.any()) {
            if (source_.base != target_.base) {
                addEffect(Effect::Widened);
                report_.add(Code::TypeWidened, "{} is widened to {}", source_.typeName,
                            target_.typeName);
            }
            return;
        }
        std::string losses;
        const auto add = [&](bool isLost, Effect effect, const char* sentence) {
            if (isLost) {
                addEffect(effect);
                losses += losses.empty() ? "" : ", and ";
                losses += sentence;
            }
        };
        add(loss.fraction, Effect::Truncated, "fractions are lost");
        add(loss.digits, Effect::Rounded, "digits are lost");
        add(loss.range, Effect::MayOverflow, "values can be out of range");
        report_.add(Code::TypeLossy, "from {} to {} {}", source_.typeName, target_.typeName,
                    losses);
    }

    /// What the items lose in a number; the type that stores them, if they are not known.
    TypeLoss lossOfItems(BaseType to) const {
        if (source_.items == nullptr) {
            return lossBetween(BaseType::Int32, to);
        }
        const auto range = comparisons_.items.range(*source_.items);
        const bool isInRange = !range || (fits(range->first, to) && fits(range->second, to));
        return {!isInRange, false, false};
    }

    static bool fits(std::int64_t value, BaseType to) {
        const auto within = [&]<class Number>(Number) { return std::in_range<Number>(value); };
        switch (to) {
        case BaseType::Int8:
            return within(std::int8_t());
        case BaseType::UInt8:
            return within(std::uint8_t());
        case BaseType::Int16:
            return within(std::int16_t());
        case BaseType::UInt16:
            return within(std::uint16_t());
        case BaseType::Int32:
            return within(std::int32_t());
        case BaseType::UInt32:
            return within(std::uint32_t());
        case BaseType::UInt64:
            return within(std::uint64_t());
        case BaseType::Boolean:
            return value == 0 || value == 1;
        default:
            return true;
        }
    }

    void compareItems() {
        if (source_.items == nullptr || target_.items == nullptr ||
            source_.typeId == target_.typeId) {
            return;
        }
        const auto& [missing, others, renamed] =
            comparisons_.items.differences(*source_.items, *target_.items);
        if (!missing.empty()) {
            report_.add(Code::EnumerationItems, "{} of {} has no value in {}", itemList(missing),
                        text::quoted(source_.typeName), text::quoted(target_.typeName));
        } else if (!renamed.empty()) {
            report_.add(Code::EnumerationItems, "{} of {} has another name in {}",
                        itemList(renamed), text::quoted(source_.typeName),
                        text::quoted(target_.typeName));
        } else {
            addEffect(Effect::Widened);
        }
    }

    void checkNumbersIntoItems() {
        const TypeLoss loss = lossBetween(source_.base, BaseType::Int32);
        if (loss.fraction) {
            addEffect(Effect::Truncated);
        }
        if (loss.range) {
            addEffect(Effect::MayOverflow);
        }
        // A mapping is checked with its entries.
        if (transformation_ == TransformationKind::None) {
            report_.add(Code::EnumerationValue, "{} flows into the enumeration {}{}",
                        source_.typeName, text::quoted(target_.typeName),
                        target_.items == nullptr
                            ? ""
                            : fmt::format(", which has {}",
                                          text::counted(target_.items->size(), "item", "items")));
        }
    }

    void compareMimeTypes() {
        const auto mimeType = [](const End& end) {
            return end.connector == nullptr ? "" : end.connector->type.mimeType;
        };
        const std::string_view from = mimeType(source_);
        const std::string_view to = mimeType(target_);
        if (!from.empty() && !to.empty() && from != to) {
            report_.add(Code::BinaryType, "the types of the binaries are {} and {}",
                        text::quoted(from), text::quoted(to));
        }
    }

    void compareIntervals() {
        const auto interval = [](const End& end) {
            return end.connector == nullptr ? "" : end.connector->type.intervalVariability;
        };
        const std::string_view from = interval(source_);
        const std::string_view to = interval(target_);
        if (source_.isSystem != target_.isSystem && !from.empty() && !to.empty() && from != to) {
            report_.add(Code::ClockInterval, "intervalVariability is {} and {}", text::quoted(from),
                        text::quoted(to));
        }
    }

    const ConnectionReport& report_;
    Comparisons& comparisons_;
    ConnectionRow& row_;
    const End& source_;
    const End& target_;
    const TransformationKind transformation_;
};

} // namespace

std::string endText(const End& end) {
    const std::string connector = text::shortened(end.connectorName);
    return end.elementName.empty() ? connector : text::shortened(end.elementName) + "." + connector;
}

void checkSignal(const ConnectionReport& report, Comparisons& comparisons) {
    SignalCheck(report, comparisons).check();
    checkTransformation(report, comparisons.items);
}

} // namespace tvtool::systems
