#include "units/unit_base_instance_mapping.h"

#include "services/errors.h"
#include "services/text.h"

#include <algorithm>

namespace TVTypeSys {

void UnitBaseInstanceMapping::addUnit(const UnitBase* unit) {
    if (unit->name.empty()) {
        reportWarning(units::SymbolNotDefined());
    } else {
        add(unit, UnitDatabase::SearchByName, unit->name);
    }
    if (unit->symbol.empty()) {
        reportWarning(units::NameNotDefined());
    } else {
        add(unit, UnitDatabase::SearchBySymbol, unit->symbol);
    }
    // Added after the check, so that an alias that the unit has twice causes no warning.
    std::vector<std::u16string_view> accepted;
    for (const std::u16string& alias : unit->aliases) {
        if (has(UnitDatabase::SearchByAlias, alias)) {
            reportWarning(units::SimilarInstanceThere(narrow(unit->name), narrow(unit->symbol)));
        }
        if (alias.empty()) {
            reportWarning(units::SymbolNotDefined());
        } else {
            accepted.push_back(alias);
        }
    }
    for (const std::u16string_view alias : accepted) {
        add(unit, UnitDatabase::SearchByAlias, alias);
    }
}

void UnitBaseInstanceMapping::add(const UnitBase* unit, UnitDatabase::SearchBy by,
                                  std::u16string_view text) {
    const auto position = static_cast<std::uint32_t>(entries_.size());
    entries_.push_back({unit, by, none});
    List& list = lists_[text];
    (list.first == none ? list.first : entries_[list.last].next) = position;
    list.last = position;
    list.roles |= roleBit(by);
}

template <class Visitor>
void UnitBaseInstanceMapping::visit(std::u16string_view text, const Visitor& visitor) const {
    const auto list = lists_.find(text);
    if (list != lists_.end()) {
        for (std::uint32_t i = list->second.first; i != none; i = entries_[i].next) {
            visitor(entries_[i]);
        }
    }
}

bool UnitBaseInstanceMapping::has(UnitDatabase::SearchBy by, std::u16string_view text) const {
    const auto list = lists_.find(text);
    return list != lists_.end() && (list->second.roles & roleBit(by)) != 0;
}

void UnitBaseInstanceMapping::find(std::vector<const UnitBase*>& out, UnitDatabase::SearchBy by,
                                   std::u16string_view text) const {
    visit(text, [&](const Entry& entry) {
        if (entry.by == by) {
            out.push_back(entry.unit);
        }
    });
}

UnitMatch UnitBaseInstanceMapping::match(std::u16string_view text) const {
    // A unit may have the text in several roles, such as name and symbol. Its entries are adjacent.
    UnitMatch match;
    const UnitBase* latest = nullptr;
    visit(text, [&](const Entry& entry) {
        if (entry.unit != latest) {
            latest = entry.unit;
            ++match.count;
            if (match.first == nullptr || entry.unit->compare(*match.first) < 0) {
                match.first = entry.unit;
            }
        }
    });
    return match;
}

void UnitBaseInstanceMapping::reserve(std::size_t units) {
    constexpr std::size_t textsPerUnit = 4; // an average
    lists_.reserve(lists_.size() + textsPerUnit * units);
    entries_.reserve(entries_.size() + textsPerUnit * units);
}

void UnitBaseInstanceMapping::clear() {
    lists_.clear();
    entries_.clear();
}

} // namespace TVTypeSys
