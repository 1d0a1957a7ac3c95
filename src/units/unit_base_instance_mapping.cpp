#include "services/errors.h"
#include "services/text.h"
#include "units/unit_lookup.h"

#include <tvtypes/units/unit_base_instance_mapping.h>

#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <cassert>

namespace TVTypeSys {

void UnitBaseInstanceMapping::addUnit(const UnitBase* unit) {
    assert(unit != nullptr);
    // Collected first: a warning or a failed allocation must not leave a part of the unit.
    struct Text {
        Role role;
        std::u16string_view text;
    };
    boost::container::small_vector<Text, 8> texts;
    if (unit->name.empty()) {
        reportWarning(units::SymbolNotDefined());
    } else {
        texts.push_back({Role::Name, unit->name});
    }
    if (unit->symbol.empty()) {
        reportWarning(units::NameNotDefined());
    } else {
        texts.push_back({Role::Symbol, unit->symbol});
    }
    for (const std::u16string& alias : unit->aliases) {
        if (isAlias(alias)) {
            reportWarning(units::SimilarInstanceThere(narrow(unit->name), narrow(unit->symbol)));
        }
        if (alias.empty()) {
            reportWarning(units::SymbolNotDefined());
        } else {
            texts.push_back({Role::Alias, alias});
        }
    }
    makeRoom(texts.size());
    for (const auto& [role, text] : texts) {
        add(unit, role, text);
    }
}

void UnitBaseInstanceMapping::makeRoom(std::size_t texts) {
    const std::size_t needed = entries_.size() + texts;
    if (needed > entries_.capacity()) {
        entries_.reserve(2 * needed);
    }
    if (lists_.size() + texts > lists_.max_load()) {
        lists_.reserve(2 * needed);
    }
}

void UnitBaseInstanceMapping::add(const UnitBase* unit, Role role,
                                  std::u16string_view text) noexcept {
    const auto position = static_cast<std::uint32_t>(entries_.size());
    entries_.push_back({unit, role, none});
    List& list = lists_[text];
    (list.first == none ? list.first : entries_[list.last].next) = position;
    list.last = position;
    list.hasAlias = list.hasAlias || role == Role::Alias;
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

bool UnitBaseInstanceMapping::isAlias(std::u16string_view text) const {
    const auto list = lists_.find(text);
    return list != lists_.end() && list->second.hasAlias;
}

void UnitBaseInstanceMapping::find(std::vector<const UnitBase*>& out, Role role,
                                   std::u16string_view text) const {
    visit(text, [&](const Entry& entry) {
        if (entry.role == role) {
            out.push_back(entry.unit);
        }
    });
}

void UnitBaseInstanceMapping::findUnitByName(std::vector<const UnitBase*>& out,
                                             const std::u16string& text) const {
    find(out, Role::Name, text);
}

void UnitBaseInstanceMapping::findUnitBySymbol(std::vector<const UnitBase*>& out,
                                               const std::u16string& text) const {
    find(out, Role::Symbol, text);
}

void UnitBaseInstanceMapping::findUnitByAlias(std::vector<const UnitBase*>& out,
                                              const std::u16string& text) const {
    find(out, Role::Alias, text);
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

void UnitBaseInstanceMapping::clear() noexcept {
    lists_.clear();
    entries_.clear();
}

} // namespace TVTypeSys
