#include "services/errors.h"
#include "services/guard.h"
#include "services/own_messages.h"
#include "services/text.h"
#include "units/canonical_form.h"
#include "units/composite_factor.h"
#include "units/composite_names.h"
#include "units/resolved_names.h"

#include <tvtypes/units/expression.h>
#include <tvtypes/units/table.h>

#include <algorithm>
#include <cassert>
#include <iterator>
#include <limits>
#include <ostream>

namespace TVTypeSys {

namespace {

constexpr int noUnit = -10;
constexpr int inherit = -1;
constexpr int unitless = 0;

using Units = std::vector<std::unique_ptr<UnitBase>>;

/// One unit without texts for each predefined name of a table. Never destroyed: destructors of
/// static objects may use tables.
const Units& builtInUnits() {
    static const Units& units = *[] {
        auto created = std::make_unique<Units>();
        for (const int id : {inherit, unitless}) {
            created->emplace_back(UnitFactory::createUnit(noUnit, u"", u"", "", Rational::unity,
                                                          Rational::zero, {}, "", {}, false,
                                                          UnitFactory::getDefaultAbstractUnit()));
            created->back()->setId(id);
        }
        return created.release();
    }();
    return units;
}

/// Names that every table has. They need not be units of the database.
bool isPredefinedName(const std::u16string& text) {
    return text == u"inherit" || text == u"unitless";
}

/// Returns the message of a text that is no expression of units in the database.
/// \param terms its names; empty if the text is not an expression
own::InvalidUnit invalidUnit(const char* id, const char* text, const Monomial& terms) {
    const auto unknown =
        std::find_if_not(terms.names.begin(), terms.names.end(), UnitBase::isValidUnitName);
    return {id, orEmpty(text), unknown == terms.names.end() ? std::string() : narrow(*unknown)};
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
    const auto removed = std::next(idToUnit_.begin(), static_cast<std::ptrdiff_t>(kept));
    decltype(exprToId_) expressions;
    for (auto entry = idToUnit_.begin(); entry != removed; ++entry) {
        expressions[entry->second.unit->expression] = {entry->first, entry->second.serial, 0};
    }
    exprToId_.swap(expressions);
    idToUnit_.erase(removed, idToUnit_.end());
}

int UnitTable::registerUnit(const char* expression, bool parse) {
    // Thrown from a frame that has nothing to destroy, since unwinding would be most of the cost.
    tvsvDiagnosticImpl* error = nullptr;
    const int id = findOrRegister(expression, parse, error);
    if (error != nullptr) {
        throwError(error);
    }
    return id;
}

int UnitTable::findOrRegister(const char* expression, bool parse, tvsvDiagnosticImpl*& error) {
    const std::u16string text = wide(expression);
    const Registration* known = registrationOf(text);
    if (known != nullptr && known->generation == UnitLookup::generation()) {
        return known->id;
    }
    Monomial terms;
    const bool isExpression = parseUnitExpr(text, terms);
    if (known != nullptr) {
        // Registered without a lookup, or before units of the database were cleared.
        const bool isValid = isExpression && std::all_of(terms.names.begin(), terms.names.end(),
                                                         UnitBase::isValidUnitName);
        if (!isValid && !isPredefinedName(text)) {
            error = createDiagnostic(invalidUnit("Unit::InvalidUnitExpression", expression, terms));
            return noUnit;
        }
        // Read after the lookup, which may have loaded the database. 0 is never current.
        exprToId_[text].generation = isValid ? UnitLookup::generation() : 0;
        return known->id;
    }
    if (!parse) {
        terms.powers.clear();
    }
    std::unique_ptr<UnitBase> unit = isExpression ? makeUnit(text, &terms) : nullptr;
    if (unit == nullptr) {
        error = createDiagnostic(invalidUnit("Unit::InvalidUnitExpression", expression, terms));
        return noUnit;
    }
    const int id = newId();
    unit->setId(id);
    enter(text, unit, isPredefinedName(text) ? 0 : UnitLookup::generation());
    return id;
}

std::unique_ptr<UnitBase> UnitTable::makeUnit(const std::u16string& text,
                                              const Monomial* terms) const {
    assert(terms != nullptr);
    const UnitDatabase& database = *UnitDatabase::getUnitDatabase();
    ResolvedNames names(database, terms->names);
    if (!names.allFound() && !isPredefinedName(text)) {
        return nullptr;
    }
    if (const UnitBase* known = names.match(text).first) {
        return std::unique_ptr<UnitBase>(known->clone());
    }
    CompositeNames composite = compositeNames(names, text);
    std::unique_ptr<UnitBase> unit(UnitFactory::createUnit(text, Rational::unity, Rational::zero,
                                                           UnitFactory::getDefaultAbstractUnit()));
    unit->name = std::move(composite.name);
    unit->symbol = std::move(composite.symbol);
    unit->display = std::move(composite.display);
    Terms found;
    for (std::size_t i = 0; i < terms->powers.size(); ++i) {
        const UnitBase* term = names[i].first;
        found.push_back({term != nullptr ? boost::cref(*term)
                                         : unit->getFirstMatchingUnitInDatabase(terms->names[i]),
                         terms->powers[i]});
        unit->addUnitInfo(found.back().unit, {found.back().power, 0});
    }
    // Apart, so that the nodes of the canonical form, which are read most, are adjacent in memory.
    for (const auto& [term, power] : found) {
        addToCanonicalForm(*unit, term, power);
    }
    multiplyFactors(database, found, unit->baseScalingFactor);
    return unit;
}

int UnitTable::newId() const {
    if (idToUnit_.empty()) {
        return inherit;
    }
    const int greatest = idToUnit_.rbegin()->first;
    if (greatest == std::numeric_limits<int>::max()) {
        throwError(own::NoIdLeft(greatest));
    }
    return greatest + 1;
}

void UnitTable::reserveExpression() {
    constexpr std::size_t growth = 4;
    const double capacity =
        static_cast<double>(exprToId_.bucket_count()) * exprToId_.max_load_factor();
    if (static_cast<double>(exprToId_.size()) >= capacity) {
        exprToId_.reserve(growth * exprToId_.size());
    }
}

void UnitTable::enter(const std::u16string& text, std::unique_ptr<UnitBase>& unit,
                      unsigned generation) {
    const int id = unit->getId();
    reserveExpression();
    // A new registration has the serial number 0, which no unit has: it has lapsed until it is set.
    Registration& registration = exprToId_.try_emplace(text).first->second;
    Entry& entry = idToUnit_.try_emplace(idToUnit_.end(), id)->second;
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
    assert(table != nullptr && id != nullptr);
    return guarded(blockPath, [&] { *id = table->registerUnit(expression, true); });
}

bool UnitTable::isAValidUnit(const char* text) { return UnitBase::isValidUnitExpr(wide(text)); }

void UnitTable::validateUnitExpr(const char* text) {
    if (!isAValidUnit(text)) {
        Monomial terms;
        parseUnitExpr(wide(text), terms);
        throwError(invalidUnit("general::InvalidDataType", text, terms));
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
    if (unit == nullptr) {
        return;
    }
    std::unique_ptr<UnitBase> owned(unit);
    try {
        enter(expression, owned, 0);
    } catch (...) {
        static_cast<void>(owned.release());
        throw;
    }
}

void UnitTable::removeUnit(const UnitBase* unit) {
    const int id = unit == nullptr ? noUnit : unit->getId();
    if (unit == nullptr || getUnit(id) != unit) {
        throwError(general::InvalidDataTypeId(id));
    }
    // A copy of a database unit is registered under another text than its expression. That
    // registration lapses without the unit: its serial number is not current.
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
        throwError(general::InvalidDataTypeId(id));
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
