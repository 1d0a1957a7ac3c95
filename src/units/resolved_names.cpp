#include "units/resolved_names.h"

#include <algorithm>

namespace TVTypeSys {

ResolvedNames::ResolvedNames(const UnitDatabase& database, const std::vector<std::u16string>& names)
    : database_(database), names_(names), positions_(names) {
    matches_.reserve(names.size());
    for (const std::u16string& name : names) {
        matches_.push_back(UnitLookup::concrete(database, name));
    }
}

bool ResolvedNames::allFound() const {
    return std::all_of(matches_.begin(), matches_.end(),
                       [](const UnitMatch& match) { return match.count != 0; });
}

UnitMatch ResolvedNames::match(std::u16string_view text) {
    const std::size_t position = next_ < names_.size() && names_[next_] == text
                                     ? next_
                                     : positions_.find(text, names_.size());
    if (position == names_.size()) {
        return UnitLookup::concrete(database_, text);
    }
    next_ = position + 1;
    return matches_[position];
}

} // namespace TVTypeSys
