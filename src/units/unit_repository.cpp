#include "units/unit_repository.h"

#include "services/errors.h"
#include "services/text.h"

namespace TVTypeSys {

void UnitDatabase::UnitRepository::addUnit(std::unique_ptr<UnitBase> unit) {
    if (hasEqual(*unit)) {
        reportWarning(units::UnitAlreadyInDatabase(narrow(unit->name), narrow(unit->symbol)));
        return;
    }
    for (Rational* factor : {&unit->scaling, &unit->offset, &unit->baseScalingFactor}) {
        *factor = Rational(*factor);
    }
    const UnitBase* added = unit.get();
    units_.push_back(std::move(unit));
    if (!firstByNameAndSymbol_.try_emplace({added->name, added->symbol}, added).second) {
        further_.insert(added);
    }
    mapping_.addUnit(added);
    words_[SearchByName].add(added->name);
    words_[SearchBySymbol].add(added->symbol);
    for (const std::u16string& alias : added->aliases) {
        words_[SearchByAlias].add(alias);
    }
}

void UnitDatabase::UnitRepository::reserve(std::size_t count) {
    units_.reserve(units_.size() + count);
    mapping_.reserve(count);
    firstByNameAndSymbol_.reserve(firstByNameAndSymbol_.size() + count);
}

bool UnitDatabase::UnitRepository::hasEqual(const UnitBase& unit) const {
    const auto first = firstByNameAndSymbol_.find({unit.name, unit.symbol});
    if (first == firstByNameAndSymbol_.end()) {
        return false;
    }
    // Units that differ in scale are neither less nor greater.
    const UnitBase& known = *first->second;
    return known.scaling != unit.scaling || known.expression == unit.expression ||
           further_.contains(&unit);
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
    for (const std::unique_ptr<UnitBase>& unit : units_) {
        found.insert(boost::cref(*unit));
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
    for (CompletionWords& words : words_) {
        words.own();
    }
    mapping_.clear();
    firstByNameAndSymbol_.clear();
    further_.clear();
    units_.clear();
}

} // namespace TVTypeSys
