#include "units/unit_repository.h"

#include "services/refuse.h"
#include "services/text.h"

namespace TVTypeSys {

void UnitDatabase::UnitRepository::addUnit(const UnitBase& unit) {
    if (units_.contains(&unit)) {
        warn(units::UnitAlreadyInDatabase(narrow(unit.name), narrow(unit.symbol)));
        return;
    }
    std::unique_ptr<UnitBase> copy(unit.clone());
    const UnitBase* added = copy.get();
    units_.emplace(added, std::move(copy));
    mapping_.addUnit(added);
    words_[SearchByName].add(added->name);
    words_[SearchBySymbol].add(added->symbol);
    for (const std::u16string& alias : added->aliases) {
        words_[SearchByAlias].add(alias);
    }
}

UnitBase::ReferenceSet UnitDatabase::UnitRepository::matches(const std::u16string& text) const {
    UnitBase::ReferenceSet found;
    for (const SearchBy by : {SearchByName, SearchBySymbol, SearchByAlias}) {
        appendConstUnitBaseRefsSearched(by, found, text);
    }
    return found;
}

UnitBase::ReferenceSet UnitDatabase::UnitRepository::all() const {
    UnitBase::ReferenceSet found;
    for (const auto& entry : units_) {
        found.insert(found.end(), boost::cref(*entry.first));
    }
    return found;
}

void UnitDatabase::UnitRepository::complete(SearchBy by, const std::u16string& prefix,
                                            std::vector<std::u16string>& out) const {
    const auto kind = static_cast<std::size_t>(by);
    if (kind < words_.size()) {
        words_[kind].append(out, prefix);
    }
}

void UnitDatabase::UnitRepository::appendCompleted(SearchBy by, UnitBase::ReferenceSet& out,
                                                   const std::u16string& prefix) const {
    std::vector<std::u16string> words;
    complete(by, prefix, words);
    for (const std::u16string& word : words) {
        appendConstUnitBaseRefsSearched(by, out, word);
    }
}

void UnitDatabase::UnitRepository::appendConstUnitBaseRefsSearched(
    SearchBy by, UnitBase::ReferenceSet& out, const std::u16string& text) const {
    std::vector<const UnitBase*> found;
    mapping_.find(found, by, text);
    for (const UnitBase* unit : found) {
        out.insert(boost::cref(*unit));
    }
}

void UnitDatabase::UnitRepository::clearAll() {
    mapping_.clear();
    units_.clear();
}

} // namespace TVTypeSys
