#include "services/guard.h"
#include "services/refuse.h"
#include "services/text.h"
#include "units/composite_texts.h"
#include "units/unit_lookup.h"

#include <tvtypes/units/expression.h>
#include <tvtypes/units/table.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <ostream>

namespace TVTypeSys {

namespace {

constexpr int noUnit = -10;
constexpr int inherit = -1;
constexpr int unitless = 0;

using Units = std::vector<std::unique_ptr<UnitBase>>;

/// Blank units, of which there are as many as every table has names from the start.
const Units& builtInUnits() {
    static const Units units = [] {
        Units made;
        for (const int id : {inherit, unitless}) {
            made.emplace_back(UnitFactory::createUnit(noUnit, u"", u"", "", Rational::unity,
                                                      Rational::zero, {}, "", {}, false,
                                                      UnitFactory::getDefaultAbstractUnit()));
            made.back()->setId(id);
        }
        return made;
    }();
    return units;
}

} // namespace

UnitTable::UnitTable() { initialize(); }

UnitTable::~UnitTable() = default;

void UnitTable::initializeBuiltInUnits() { builtInUnits(); }

void UnitTable::initialize() {
    initializeBuiltInUnits();
    for (const char* name : {"inherit", "unitless"}) {
        registerUnit(name, false);
    }
}

void UnitTable::resetToBuiltin() {
    const std::size_t kept = std::min(builtInUnits().size(), idToUnit_.size());
    exprToId_.clear();
    idToUnit_.erase(std::next(idToUnit_.begin(), static_cast<std::ptrdiff_t>(kept)),
                    idToUnit_.end());
    for (const auto& [id, entry] : idToUnit_) {
        exprToId_[entry.unit->expression] = {id, entry.serial, 0};
    }
}

int UnitTable::registerUnit(const char* expression, bool parse) {
    const std::u16string text = wide(expression);
    const Registration* known = registrationOf(text);
    if (known != nullptr && known->generation == UnitLookup::generation()) {
        return known->id;
    }
    Monomial terms;
    const bool valid =
        parseUnitExpr(text, terms) &&
        std::all_of(terms.names.begin(), terms.names.end(), UnitBase::isValidUnitName);
    if (!valid && text != u"inherit" && text != u"unitless") {
        refuse(units::InvalidUnitExpression(textOf(expression)));
    }
    // Taken after the search, which may have had to load the database.
    const unsigned generation = valid ? UnitLookup::generation() : 0;
    if (known != nullptr) {
        exprToId_[text].generation = generation;
        return known->id;
    }
    std::unique_ptr<UnitBase> unit = makeUnit(text, parse ? &terms : nullptr);
    unit->setId(newId());
    const int id = unit->getId();
    enter(text, std::move(unit), generation);
    return id;
}

std::unique_ptr<UnitBase> UnitTable::makeUnit(const std::u16string& text,
                                              const Monomial* terms) const {
    const UnitDatabase& database = *UnitDatabase::getUnitDatabase();
    if (const UnitBase* found = UnitLookup::concrete(database, text).first) {
        return std::unique_ptr<UnitBase>(found->clone());
    }
    const CompositeTexts texts = compositeTexts(database, text);
    std::unique_ptr<UnitBase> unit(UnitFactory::createUnit(
        noUnit, texts.name, text, texts.display, Rational::unity, Rational::zero, {}, "", {}, false,
        UnitFactory::getDefaultAbstractUnit()));
    unit->symbol = texts.symbol;
    if (terms != nullptr) {
        unit->addTerms(*terms);
    }
    return unit;
}

int UnitTable::newId() const {
    if (idToUnit_.empty()) {
        return inherit;
    }
    const int greatest = idToUnit_.rbegin()->first;
    if (greatest == std::numeric_limits<int>::max()) {
        refuse(general::InvalidDataTypeId(greatest));
    }
    return greatest + 1;
}

void UnitTable::enter(const std::u16string& text, std::unique_ptr<UnitBase> unit,
                      unsigned generation) {
    const int id = unit->getId();
    Registration& registration = exprToId_.try_emplace(text).first->second;
    Entry& entry = idToUnit_.try_emplace(id).first->second;
    if (entry.unit == nullptr) {
        entry = {std::move(unit), ++latestSerial_};
    } else if (entry.unit == unit) {
        static_cast<void>(unit.release());
    }
    registration = {id, entry.serial, generation};
}

const UnitTable::Registration* UnitTable::registrationOf(const std::u16string& text) const {
    const auto found = exprToId_.find(text);
    if (found == exprToId_.end()) {
        return nullptr;
    }
    const auto entry = idToUnit_.find(found->second.id);
    const bool current = entry != idToUnit_.end() && entry->second.serial == found->second.serial;
    return current ? &found->second : nullptr;
}

tvsvDiagnosticImpl* UnitTable::RegisterUnit(UnitTable* table, const char* blockPath,
                                            const char* expression, int* id) {
    return guarded(blockPath, [&] { *id = table->registerUnit(expression, true); });
}

bool UnitTable::isAValidUnit(const char* text) { return UnitBase::isValidUnitExpr(wide(text)); }

void UnitTable::validateUnitExpr(const char* text) {
    if (!isAValidUnit(text)) {
        refuse(general::InvalidDataType(textOf(text)));
    }
}

int UnitTable::getUnitId(const char* expression) const {
    const Registration* registration = registrationOf(wide(expression));
    return registration == nullptr ? noUnit : registration->id;
}

const UnitBase* UnitTable::getUnit(int id) const {
    const auto found = idToUnit_.find(id);
    return found == idToUnit_.end() ? nullptr : found->second.unit.get();
}

void UnitTable::addUnit(const std::u16string& expression, UnitBase* unit) {
    if (unit != nullptr) {
        enter(expression, std::unique_ptr<UnitBase>(unit), 0);
    }
}

void UnitTable::removeUnit(const UnitBase* unit) {
    const int id = unit == nullptr ? noUnit : unit->getId();
    if (unit == nullptr || getUnit(id) != unit) {
        refuse(general::InvalidDataTypeId(id));
    }
    // Copies of the database's units are registered under another text than their expression;
    // without the unit that registration has lapsed.
    const Registration* registration = registrationOf(unit->expression);
    if (registration != nullptr && registration->id == id) {
        exprToId_.erase(unit->expression);
    }
    idToUnit_.erase(id);
}

bool UnitTable::equivalentUnits(int a, int b) const {
    const auto isBuiltIn = [](int id) { return id == inherit || id == unitless; };
    if (isBuiltIn(a) && isBuiltIn(b)) {
        return false;
    }
    checkUnitId(a);
    checkUnitId(b);
    return getUnit(a)->equivalentToUnit(*getUnit(b));
}

void UnitTable::checkUnitId(int id) const {
    if (!isUnitIdValid(id)) {
        refuse(general::InvalidDataTypeId(id));
    }
}

bool UnitTable::isUnitIdValid(int id) const { return idToUnit_.count(id) != 0; }

bool UnitTable::isUnitIdValid_NotInherit(int id) const {
    return id != inherit && isUnitIdValid(id);
}

std::size_t UnitTable::getNumUnits() const { return idToUnit_.size(); }

int UnitTable::getNumBaseUnits() { return static_cast<int>(builtInUnits().size()) - 1; }

bool UnitTable::isPredefinedUnit(int) const { return false; }
int UnitTable::getBaseUnit(const char*) const { return noUnit; }
const char* UnitTable::getExprOfBaseUnit(int) const { return nullptr; }
bool UnitTable::exprOfBaseUnit(const char*) const { return false; }

void UnitTable::print(std::ostream& stream) const {
    stream << "UnitTable" << std::endl;
    stream << "Number of Units : " << getNumUnits() << std::endl << std::endl;
    for (const auto& entry : idToUnit_) {
        stream << static_cast<const void*>(entry.second.unit.get());
    }
    stream << std::endl;
}

std::ostream& operator<<(std::ostream& stream, const UnitTable& table) {
    table.print(stream);
    return stream;
}

} // namespace TVTypeSys
