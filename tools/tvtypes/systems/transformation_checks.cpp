// The transformation of a connection.
#include "exchange/values.h"
#include "systems/mapping_key.h"
#include "systems/signal_checks.h"
#include "systems/type_conversion.h"
#include "text/quote.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

namespace tvtool::systems {

namespace {

using exchange::BaseType;
using exchange::Item;
using findings::Code;
using ssp::MapEntry;
using ssp::TransformationKind;

const char* kindText(TransformationKind kind) {
    constexpr const char* texts[] = {"", "LinearTransformation takes real numbers",
                                     "BooleanMappingTransformation takes Booleans",
                                     "IntegerMappingTransformation takes integers and enumerations",
                                     "EnumerationMappingTransformation takes enumerations"};
    return texts[static_cast<std::size_t>(kind)];
}

/// Returns how an item is written in the entries of a mapping.
std::string itemText(const Item& item, TransformationKind kind) {
    return kind == TransformationKind::Integer ? std::to_string(item.value.value_or(0))
                                               : std::string(item.name);
}

class MappingCheck {
  public:
    MappingCheck(const ConnectionReport& report, ItemIndex& items)
        : report_(report),
          items_(items),
          source_(report.row.source),
          target_(report.row.target),
          mapping_(report.row.record->transformation) {}

    void check() {
        for (const MapEntry& entry : mapping_.entries) {
            checkEntry(entry);
        }
        checkCompleteness();
    }

  private:
    void checkEntry(const MapEntry& entry) {
        const auto source = mappingKey(entry.source, mapping_.kind);
        const auto target = mappingKey(entry.target, mapping_.kind);
        if (!source || (source_.items != nullptr && !isItem(*source_.items, *source))) {
            report_.addAt(entry.place, Code::MappingSource, "{} is no value of {}",
                          text::quoted(entry.source), source_.typeName);
        } else if (!mapped_.insert(*source).second) {
            report_.addAt(entry.place, Code::MappingRepeated, "a second entry maps {}",
                          text::quoted(entry.source));
        }
        const bool isInRange =
            target &&
            (target_.base == BaseType::Enumeration
                 ? target_.items == nullptr || isItem(*target_.items, *target)
                 : target_.base == BaseType::None || exchange::isValue(*target, target_.base));
        if (!isInRange) {
            report_.addAt(entry.place, Code::MappingTarget, "{} is no value of {}",
                          text::quoted(entry.target), target_.typeName);
        }
    }

    bool isItem(const std::vector<Item>& items, const std::string& value) const {
        if (mapping_.kind != TransformationKind::Integer) {
            return items_.named(items, value) != nullptr;
        }
        const auto number = exchange::parseNumber<std::int64_t>(value);
        return number && items_.withValue(items, *number) != nullptr;
    }

    /// A value without an entry is kept.
    void checkCompleteness() {
        if (mapping_.kind == TransformationKind::Boolean) {
            if (mapped_.size() == 1) {
                report_.add(Code::MappingIncomplete, "the mapping has no entry for {}",
                            mapped_.contains("true") ? "false" : "true");
            }
            return;
        }
        if (source_.items != nullptr && target_.items != nullptr) {
            const ItemDifferences& lacking = items_.differences(*source_.items, *target_.items);
            std::vector<std::string> kept;
            for (const Item* const item : mapping_.kind == TransformationKind::Integer
                                              ? lacking.withoutValue
                                              : lacking.withoutName) {
                if (kept.size() < mostNames && !mapped_.contains(itemText(*item, mapping_.kind))) {
                    kept.push_back(text::quoted(item->name));
                }
            }
            if (!kept.empty()) {
                report_.add(
                    Code::MappingIncomplete, "the mapping has no entry for {}, which {} lacks",
                    fmt::format("{}", fmt::join(kept, ", ")), text::quoted(target_.typeName));
            }
        } else if (target_.base == BaseType::Enumeration && isInteger(source_.base)) {
            report_.add(Code::MappingIncomplete,
                        "integers without an entry are kept, and need not be items of {}",
                        text::quoted(target_.typeName));
        }
    }

    static constexpr std::size_t mostNames = 3;

    const ConnectionReport& report_;
    ItemIndex& items_;
    const End& source_;
    const End& target_;
    const ssp::Transformation& mapping_;
    std::set<std::string> mapped_;
};

} // namespace

void checkTransformation(const ConnectionReport& report, ItemIndex& items) {
    const ssp::Transformation& transformation = report.row.record->transformation;
    if (transformation.kind == TransformationKind::None) {
        return;
    }
    for (const End* const end : {&report.row.source, &report.row.target}) {
        if (end->base != BaseType::None && !takes(transformation.kind, end->base)) {
            return report.addAt(transformation.place, Code::TransformationType, "{}, and {} is {}",
                                kindText(transformation.kind), text::quoted(endText(*end)),
                                end->typeName);
        }
    }
    if (transformation.kind != TransformationKind::Linear) {
        MappingCheck(report, items).check();
    }
}

} // namespace tvtool::systems
