#include "units/unit_repository.h"

#include "services/errors.h"
#include "services/text.h"

namespace TVTypeSys {

namespace {

void insertAll(const std::vector<const UnitBase*>& units, UnitBase::ReferenceSet& out) {
    for (const UnitBase* unit : units) {
        out.insert(boost::cref(*unit));
    }
}

} // namespace

void UnitDatabase::UnitRepository::addUnit(std::unique_ptr<UnitBase> unit) {
    if (hasEqual(*unit)) {
        reportWarning(units::UnitAlreadyInDatabase(narrow(unit->name), narrow(unit->symbol)));
        return;
    }
    for (Rational* factor : {&unit->scaling, &unit->offset, &unit->baseScalingFactor}) {
        *factor = Rational(*factor);
    }
    const UnitBase* added = unit.get();
    const NameAndSymbol key(added->name, added->symbol);
    units_.push_back(std::move(unit));
    bool isFirst = false;
    try {
        isFirst = firstByNameAndSymbol_.try_emplace(key, added).second;
        if (!isFirst) {
            further_.insert(added);
        }
        mapping_.addUnit(added);
    } catch (...) {
        if (isFirst) {
            firstByNameAndSymbol_.erase(key);
        } else {
            further_.erase(added);
        }
        units_.pop_back();
        throw;
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

void UnitDatabase::UnitRepository::find(SearchBy by, const std::u16string& text,
                                        std::vector<const UnitBase*>& out) const {
    switch (by) {
    case SearchByName:
        mapping_.findUnitByName(out, text);
        break;
    case SearchByAlias:
        mapping_.findUnitByAlias(out, text);
        break;
    case SearchBySymbol:
        mapping_.findUnitBySymbol(out, text);
        break;
    }
}

UnitBase::ReferenceSet UnitDatabase::UnitRepository::matches(const std::u16string& text) const {
    std::vector<const UnitBase*> found;
    for (const SearchBy by : {SearchByName, SearchBySymbol, SearchByAlias}) {
        find(by, text, found);
    }
    UnitBase::ReferenceSet set;
    insertAll(found, set);
    return set;
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
    if (kind < tries_.size()) {
        fillTries();
        tries_[kind].getWords(out, prefix);
    }
}

void UnitDatabase::UnitRepository::appendCompleted(SearchBy by, UnitBase::ReferenceSet& out,
                                                   const std::u16string& prefix) const {
    std::vector<std::u16string> words;
    complete(by, prefix, words);
    std::vector<const UnitBase*> found;
    for (const std::u16string& word : words) {
        find(by, word, found);
    }
    UnitBase::ReferenceSet set;
    insertAll(found, set);
    out.merge(set);
}

void UnitDatabase::UnitRepository::fillTries() const {
    const std::lock_guard lock(filling_);
    for (; filled_ < units_.size(); ++filled_) {
        const UnitBase& unit = *units_[filled_];
        tries_[SearchByName].addWord(unit.name);
        tries_[SearchBySymbol].addWord(unit.symbol);
        for (const std::u16string& alias : unit.aliases) {
            tries_[SearchByAlias].addWord(alias);
        }
    }
}

void UnitDatabase::UnitRepository::clearAll() {
    fillTries();
    filled_ = 0;
    mapping_.clear();
    firstByNameAndSymbol_.clear();
    further_.clear();
    compoundFactors_.clear();
    units_.clear();
}

} // namespace TVTypeSys
