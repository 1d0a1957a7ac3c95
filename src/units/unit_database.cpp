#include "services/text.h"
#include "services/variable_file.h"
#include "units/fundamental_units.h"
#include "units/unit_repository.h"

#include <tvtypes/units/database.h>

#include <algorithm>
#include <iterator>
#include <ostream>

namespace TVTypeSys {

namespace {

const std::u16string& symbolAt(const UnitBase::ReferenceSet& units, unsigned long index) {
    static const std::u16string none;
    return index < units.size()
               ? std::next(units.begin(), static_cast<std::ptrdiff_t>(index))->get().symbol
               : none;
}

void addMatching(const UnitBase::ReferenceSet& units, const std::u16string& text,
                 UnitBase::ReferenceSet& list) {
    std::copy_if(units.begin(), units.end(), std::inserter(list, list.end()),
                 [&](const UnitBase& unit) { return unit.symbol == text || unit.name == text; });
}

} // namespace

constinit std::unique_ptr<UnitDatabase> UnitDatabase::_unit_database_;
constinit unsigned UnitDatabase::generation_ = 1;
const std::u16string UnitDatabase::unitDBPath =
    u"/toolbox/torvane/torvane_foundation/unitdatabase.oxd";

UnitDatabase::UnitDatabase()
    : fundamentalUnits_(std::make_unique<FundamentalUnits>()),
      units_(std::make_unique<UnitRepository>()),
      abstractUnits_(std::make_unique<UnitRepository>()) {}

UnitDatabase::~UnitDatabase() { forget(); }

void UnitDatabase::forget() {
    loaded_ = false;
    ++generation_;
}

UnitDatabase* UnitDatabase::getUnitDatabase() {
    if (!_unit_database_) {
        _unit_database_ = std::make_unique<UnitDatabase>();
    }
    UnitDatabase& database = *_unit_database_;
    if (!database.loaded_) {
        // Set before loading: units that are being loaded look up others in the database.
        database.loaded_ = true;
        database.loadUnitDatabase(installationRoot() + unitDBPath);
    }
    return &database;
}

void UnitDatabase::print(std::ostream& stream) const {
    const auto line = [&](std::size_t number) {
        stream << number << std::endl << std::endl << std::endl;
    };
    stream << "UnitDatabase" << std::endl;
    stream << "Number of Units : ";
    line(getNumUnits());
    stream << "Number of Abstract Units : ";
    line(getNumAbstractUnits());
    // Readers of this output expect this label for the number of unit systems too.
    stream << "Number of Abstract Units : ";
    line(getNumUnitSystems());
}

void UnitDatabase::addUnitSystem(const UnitSystem& system) {
    unitSystems_.push_back(std::make_unique<UnitSystem>(system));
}

void UnitDatabase::addUnit(const UnitBase& unit) {
    switch (unit.getUnitType()) {
    case 2:
        units_->addUnit(std::unique_ptr<UnitBase>(unit.clone()));
        break;
    case 1:
        abstractUnits_->addUnit(std::unique_ptr<UnitBase>(unit.clone()));
        break;
    default:
        break;
    }
}

UnitSystem* UnitDatabase::getUnitSystem(const std::u16string& name) const {
    const auto found = std::find_if(unitSystems_.begin(), unitSystems_.end(),
                                    [&](const auto& system) { return system->getName() == name; });
    return found == unitSystems_.end() ? nullptr : found->get();
}

std::size_t UnitDatabase::getNumUnits() const { return units_->size(); }
std::size_t UnitDatabase::getNumAbstractUnits() const { return abstractUnits_->size(); }
std::size_t UnitDatabase::getNumUnitSystems() const { return unitSystems_.size(); }

UnitBase::ReferenceSet UnitDatabase::getUnit(const std::u16string& text) const {
    return units_->matches(text);
}
UnitBase::ReferenceSet UnitDatabase::getAbstractUnit(const std::u16string& text) const {
    return abstractUnits_->matches(text);
}

UnitBase::ReferenceSet UnitDatabase::getAllUnits() const { return units_->all(); }
UnitBase::ReferenceSet UnitDatabase::getAllAbstractUnits() const { return abstractUnits_->all(); }

void UnitDatabase::getAutoCompleteUnitSuggestions(SearchBy by, const std::u16string& prefix,
                                                  std::vector<std::u16string>& out) const {
    units_->complete(by, prefix, out);
}
void UnitDatabase::getAutoCompleteAbstractUnitSuggestions(SearchBy by, const std::u16string& prefix,
                                                          std::vector<std::u16string>& out) const {
    abstractUnits_->complete(by, prefix, out);
}

void UnitDatabase::appendAutoCompleteUnits(SearchBy by, UnitBase::ReferenceSet& out,
                                           const std::u16string& prefix) const {
    units_->appendCompleted(by, out, prefix);
}
void UnitDatabase::appendAutoCompleteAbstractUnits(SearchBy by, UnitBase::ReferenceSet& out,
                                                   const std::u16string& prefix) const {
    abstractUnits_->appendCompleted(by, out, prefix);
}

const std::u16string& UnitDatabase::getFundamentalUnitSymbol(unsigned long index) const {
    return symbolAt(fundamentalUnits_->concrete(), index);
}
const std::u16string& UnitDatabase::getFundamentalAbstractUnitSymbol(unsigned long index) const {
    return symbolAt(fundamentalUnits_->abstract(), index);
}

void UnitDatabase::addMatchingFundamentalUnitToList(const std::u16string& text,
                                                    UnitBase::ReferenceSet& list) const {
    addMatching(fundamentalUnits_->concrete(), text, list);
}
void UnitDatabase::addMatchingFundamentalAbstractUnitToList(const std::u16string& text,
                                                            UnitBase::ReferenceSet& list) const {
    addMatching(fundamentalUnits_->abstract(), text, list);
    addMatching(fundamentalUnits_->dimensionless(), text, list);
}

void UnitDatabase::clearAllUnits() {
    units_->clearAll();
    forget();
}

void UnitDatabase::clearAllAbstractUnits() {
    abstractUnits_->clearAll();
    forget();
}

void UnitDatabase::clearAllUnitSystems() {
    unitSystems_.clear();
    forget();
}

void UnitDatabase::clearAll() {
    clearAllUnits();
    clearAllAbstractUnits();
    clearAllUnitSystems();
}

std::ostream& operator<<(std::ostream& stream, const UnitDatabase& database) {
    database.print(stream);
    return stream;
}

} // namespace TVTypeSys
