#include "services/text.h"
#include "services/variable_file.h"
#include "units/unit_repository.h"

#include <tvtypes/units/database.h>
#include <tvtypes/units/fundamental_units.h>

#include <algorithm>
#include <iterator>
#include <mutex>
#include <ostream>
#include <string_view>
#include <thread>

namespace TVTypeSys {

namespace {

const std::u16string& symbolAt(const UnitBase::ReferenceSet& units, unsigned long index) {
    // Never destroyed: destructors of static objects may use units.
    static const std::u16string& none = *std::make_unique<const std::u16string>().release();
    return index < units.size()
               ? std::next(units.begin(), static_cast<std::ptrdiff_t>(index))->get().symbol
               : none;
}

void addMatching(const UnitBase::ReferenceSet& units, const std::u16string& text,
                 UnitBase::ReferenceSet& list) {
    UnitBase::ReferenceSet matching;
    std::copy_if(units.begin(), units.end(), std::inserter(matching, matching.end()),
                 [&](const UnitBase& unit) { return unit.symbol == text || unit.name == text; });
    list.merge(matching);
}

constexpr std::u16string_view databasePath =
    u"/toolbox/torvane/torvane_foundation/unitdatabase.oxd";

/// Creation and loading of the database of the process. Never destroyed, since destructors of
/// static objects may use units.
struct Loading {
    std::mutex mutex;
    std::atomic<std::thread::id> thread; ///< that holds the mutex

    static Loading& get() {
        static Loading& loading = *std::make_unique<Loading>().release();
        return loading;
    }
};

} // namespace

constinit std::unique_ptr<UnitDatabase> UnitDatabase::_unit_database_;
constinit std::atomic<UnitDatabase*> UnitDatabase::published_ = nullptr;
constinit std::atomic<unsigned> UnitDatabase::generation_ = 1;
const std::u16string UnitDatabase::unitDBPath(databasePath);

UnitDatabase::UnitDatabase()
    : fundamentalUnits_(std::make_unique<FundamentalUnits>()),
      units_(std::make_unique<UnitRepository>()),
      abstractUnits_(std::make_unique<UnitRepository>()) {}

UnitDatabase::~UnitDatabase() { forget(); }

void UnitDatabase::forget() {
    loaded_ = false;
    UnitDatabase* self = this;
    if (published_.compare_exchange_strong(self, nullptr)) {
        ++generation_;
    }
}

UnitDatabase* UnitDatabase::getUnitDatabase() {
    UnitDatabase* const published = published_.load(std::memory_order_acquire);
    if (published != nullptr && published == _unit_database_.get()) {
        return published;
    }
    Loading& loading = Loading::get();
    if (loading.thread.load(std::memory_order_relaxed) == std::this_thread::get_id()) {
        return _unit_database_.get(); // for a unit that is being loaded and looks up another one
    }
    const std::lock_guard lock(loading.mutex);
    if (!_unit_database_) {
        _unit_database_ = std::make_unique<UnitDatabase>();
    }
    UnitDatabase& database = *_unit_database_;
    if (!database.loaded_) {
        const std::u16string path = installationRoot().append(databasePath);
        database.loaded_ = true;
        // A load that throws is not repeated: what it has loaded is published. A warning handler
        // may have cleared the database.
        struct Publication {
            Loading& loading;
            ~Publication() {
                ++generation_;
                published_.store(_unit_database_->loaded_ ? _unit_database_.get() : nullptr,
                                 std::memory_order_release);
                loading.thread.store(std::thread::id(), std::memory_order_relaxed);
            }
        };
        const Publication publication{loading};
        loading.thread.store(std::this_thread::get_id(), std::memory_order_relaxed);
        database.loadUnitDatabase(path);
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
    abstractUnits_->fillTries(); // may throw, so before anything is cleared
    clearAllUnits();
    clearAllAbstractUnits();
    clearAllUnitSystems();
}

std::ostream& operator<<(std::ostream& stream, const UnitDatabase& database) {
    database.print(stream);
    return stream;
}

} // namespace TVTypeSys
