#include "catalogue.h"

#include "fault.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace tvdata {

namespace {

struct Base {
    std::string_view quantity;
    std::string_view unit;
};

/// Base quantities and units, which are built into the library.
constexpr std::array<Base, 8> bases{{{"mass", "kg"},
                                     {"length", "m"},
                                     {"time", "s"},
                                     {"electric_current", "A"},
                                     {"thermodynamic_temperature", "K"},
                                     {"amount_of_substance", "mol"},
                                     {"luminous_intensity", "cd"},
                                     {"memory", "b"}}};

/// Texts with another meaning in a table of units.
constexpr std::array<std::string_view, 2> reserved{"unitless", "inherit"};

/// Largest parts of the nearest form of a factor without an exact one. By default, the product with
/// the parts of a foot, 762/25, still fits 32 bits; a precise factor uses all 32 bits.
constexpr std::int32_t largestDefaultPart = largestPart / 768;

void checkName(std::string_view kind, const std::string& name) {
    if (!isName(name)) {
        throw Fault(fmt::format("the {} \"{}\" must consist of letters, digits and _", kind, name));
    }
}

/// Selects the form of a factor: exact if possible.
Form selectForm(const Exact& factor, std::optional<int> exponent, bool precise) {
    if (const auto form = exactForm(factor, exponent)) {
        return *form;
    }
    const Form form = nearestForm(factor, precise ? largestPart : largestDefaultPart);
    if (abs(valueOf(form) / factor - 1) * raised(Exact(10), 12) > 1) {
        throw Fault("the factor has no default form that is correct to 12 digits; set \"precise\"");
    }
    return form;
}

Powers withoutZeros(Powers powers) {
    std::erase_if(powers, [](const auto& entry) { return entry.second == 0; });
    return powers;
}

void append(std::vector<std::string>& list, const std::vector<std::string>& more) {
    list.insert(list.end(), more.begin(), more.end());
}

} // namespace

struct Catalogue::UnitSource {
    explicit UnitSource(Record& record)
        : is(record.text("is")),
          expression(record.optionalText("expression")),
          exponent(record.optionalInteger("exponent")),
          offset(record.optionalText("offset")),
          precise(record.flag("precise")),
          cancels(record.flag("cancels")),
          words(record.list("words")),
          signs(record.list("signs")),
          prefixes(record.list("prefixes")),
          stem(record.optionalText("stem")),
          symbolStem(record.optionalText("symbol_stem")) {}

    std::string is;
    std::optional<std::string> expression;
    std::optional<int> exponent;
    std::optional<std::string> offset;
    bool precise;
    bool cancels;
    std::vector<std::string> words;
    std::vector<std::string> signs;
    std::vector<std::string> prefixes;
    std::optional<std::string> stem;
    std::optional<std::string> symbolStem;
};

void Catalogue::addSystem(Record& record) {
    const std::string name = record.text("name");
    record.finish();
    if (!isName(name) || name.find('_') != std::string::npos) {
        throw Fault("the name must consist of letters and digits");
    }
    if (std::ranges::find(systems_, name) != systems_.end()) {
        throw Fault("the system is already defined");
    }
    systems_.push_back(name);
}

void Catalogue::addPrefix(Record& record) {
    Prefix prefix{.name = record.text("name"),
                  .symbol = record.text("symbol"),
                  .display = {},
                  .signs = record.list("signs"),
                  .sets = record.list("sets"),
                  .factor = parseNumber(record.text("factor")).value()};
    prefix.display = record.optionalText("display").value_or(prefix.symbol);
    record.finish();
    checkName("name", prefix.name);
    checkName("symbol", prefix.symbol);
    for (const Prefix& other : prefixes_) {
        if (other.name == prefix.name || other.symbol == prefix.symbol) {
            throw Fault("the prefix is already defined");
        }
    }
    prefixes_.push_back(std::move(prefix));
}

void Catalogue::addQuantity(Record& record) {
    Quantity quantity{record.text("name"), record.text("is"), record.list("common"), {}};
    record.finish();
    checkName("name", quantity.name);
    if (std::ranges::find(reserved, quantity.name) != reserved.end()) {
        throw Fault("the name is reserved");
    }
    const Powers terms = parseExpression(quantity.expression);
    const bool isBase = std::ranges::find(bases, quantity.name, &Base::quantity) != bases.end();
    if (isBase && quantity.expression != quantity.name) {
        throw Fault("the expression of a base quantity must be its name");
    }
    quantity.dimension = isBase ? terms : dimensionOfQuantity(terms);
    if (!quantityByName_.emplace(quantity.name, quantities_.size()).second) {
        throw Fault("the quantity is already defined");
    }
    quantities_.push_back(std::move(quantity));
}

void Catalogue::addUnit(Record& record) {
    Unit unit;
    unit.name = record.text("name");
    unit.symbol = record.text("symbol");
    unit.quantity = record.text("quantity");
    unit.systems = record.text("systems");
    unit.display = record.optionalText("display").value_or(unit.symbol);
    const std::vector<std::string> aliases = record.list("aliases");
    const UnitSource source(record);

    std::vector<std::pair<const Prefix*, std::vector<std::string>>> selected;
    for (const Prefix& prefix : prefixes_) {
        const auto names = record.listWithin("prefixed", prefix.symbol);
        if (isSelected(prefix, source)) {
            selected.emplace_back(&prefix, names);
        }
    }
    record.finish();

    define(unit, source);
    for (const auto* list : {&source.words, &source.signs, &aliases}) {
        std::ranges::copy_if(*list, std::back_inserter(unit.aliases), [&](const std::string& key) {
            return key != unit.name && key != unit.symbol;
        });
    }
    add(unit, source.cancels);
    for (const auto& [prefix, names] : selected) {
        Unit form = prefixed(unit, *prefix, source);
        append(form.aliases, names);
        add(std::move(form), source.cancels);
    }
}

void Catalogue::checkCommonUnits() const {
    for (const Quantity& quantity : quantities_) {
        for (const std::string& symbol : quantity.commonUnits) {
            const Unit* const unit = findUnit(symbol);
            if (unit == nullptr || unit->symbol != symbol || unit->quantity != quantity.name) {
                throw Fault(
                    fmt::format("\"{}\" in the common units of {} is not a symbol of its units",
                                symbol, quantity.name));
            }
        }
    }
}

const Unit* Catalogue::findUnit(std::string_view key) const {
    const auto found = unitByKey_.find(key);
    return found == unitByKey_.end() ? nullptr : &units_[found->second];
}

bool Catalogue::isSelected(const Prefix& prefix, const UnitSource& source) const {
    return std::ranges::any_of(source.prefixes, [&](const std::string& wanted) {
        return wanted == prefix.symbol ||
               std::ranges::find(prefix.sets, wanted) != prefix.sets.end();
    });
}

Powers Catalogue::dimensionOfQuantity(const Powers& terms) const {
    Powers dimension;
    for (const auto& [name, power] : terms) {
        const auto found = quantityByName_.find(name);
        if (found == quantityByName_.end()) {
            throw Fault(fmt::format("the quantity \"{}\" is not defined before this one", name));
        }
        multiply(dimension, quantities_[found->second].dimension, power);
    }
    if (withoutZeros(dimension) != dimension) {
        throw Fault("a base quantity cancels");
    }
    return dimension;
}

Powers Catalogue::dimensionOfUnits(const Powers& terms) const {
    Powers dimension;
    for (const auto& [name, power] : terms) {
        if (const Unit* const unit = findUnit(name)) {
            multiply(dimension, unit->dimension, power);
        } else if (std::ranges::find(bases, name, &Base::unit) != bases.end()) {
            dimension[name] += power;
        } else {
            throw Fault(fmt::format("the unit \"{}\" is not defined before this one", name));
        }
    }
    return dimension;
}

/// Rewrites an expression over units with the factor 1; returns it unchanged if it is one.
std::string Catalogue::coherentExpression(const std::string& expression) const {
    const Powers terms = parseExpression(expression);
    Powers coherent;
    for (const auto& [name, power] : terms) {
        const Unit* const unit = findUnit(name);
        multiply(coherent, parseExpression(unit == nullptr ? name : unit->coherent), power);
    }
    return coherent == terms ? expression : formatExpression(coherent);
}

void Catalogue::define(Unit& unit, const UnitSource& source) const {
    const Definition definition = parseDefinition(source.is);
    const Powers terms = parseExpression(definition.expression);
    const Powers dimension = dimensionOfUnits(terms);
    unit.factor = definition.factor;
    for (const auto& [name, power] : terms) {
        if (const Unit* const term = findUnit(name)) {
            unit.factor *= raised(term->factor, power);
        }
    }
    // The scaling is the whole factor, so that loading multiplies no factors.
    unit.expression = source.expression.value_or(coherentExpression(definition.expression));
    unit.dimension = dimensionOfUnits(parseExpression(unit.expression));
    if (coherentExpression(unit.expression) != unit.expression) {
        throw Fault(
            "\"expression\" must consist of symbols of units with the factor 1 to the base units");
    }
    if (withoutZeros(unit.dimension) != withoutZeros(dimension)) {
        throw Fault("\"expression\" and \"is\" have different dimensions");
    }
    unit.scaling = selectForm(unit.factor.value(), source.exponent, source.precise);
    unit.coherent = unit.factor.value() == 1 ? unit.symbol : unit.expression;
    if (source.offset) {
        const auto offset = exactForm(parseNumber(*source.offset).value(), {});
        if (!offset) {
            throw Fault("\"offset\" has no exact form");
        }
        unit.offset = *offset;
    }
}

Unit Catalogue::prefixed(const Unit& unit, const Prefix& prefix, const UnitSource& source) const {
    Unit form = unit;
    const std::string stem = source.stem.value_or(unit.name);
    const std::string symbolStem = source.symbolStem.value_or(unit.symbol);
    form.name = prefix.name + stem;
    form.symbol = prefix.symbol + symbolStem;
    form.display = prefix.display + (source.symbolStem ? symbolStem : unit.display);
    form.aliases.clear();
    for (const std::string& word : source.words) {
        if (word != stem) {
            form.aliases.push_back(prefix.name + word);
        }
    }
    for (const std::string& sign : prefix.signs) {
        form.aliases.push_back(sign + symbolStem);
    }
    for (const std::string& sign : source.signs) {
        form.aliases.push_back(prefix.symbol + sign);
        for (const std::string& prefixSign : prefix.signs) {
            form.aliases.push_back(prefixSign + sign);
        }
    }

    form.factor.rational *= prefix.factor;
    const Form scaling = exactForm(prefix.factor, {}).value_or(Form());
    if (scaling.numerator == 1 && scaling.denominator == 1) {
        // A power of ten cannot overflow in a product: it only changes the exponent.
        form.expression = unit.symbol;
        form.scaling = scaling;
        form.isMultiple = true;
    } else {
        form.scaling = selectForm(form.factor.value(), {}, source.precise);
    }
    return form;
}

void Catalogue::check(const Unit& unit, bool cancels) const {
    checkName("name", unit.name);
    checkName("symbol", unit.symbol);
    const auto quantity = quantityByName_.find(unit.quantity);
    if (quantity == quantityByName_.end()) {
        throw Fault(fmt::format("unknown quantity \"{}\"", unit.quantity));
    }
    Powers expected;
    for (const auto& [name, power] : quantities_[quantity->second].dimension) {
        expected.emplace(std::ranges::find(bases, name, &Base::quantity)->unit, power);
    }
    const Powers actual = withoutZeros(unit.dimension);
    if (actual != expected) {
        throw Fault(fmt::format("the dimension is {}, but that of {} is {}", actual, unit.quantity,
                                expected));
    }
    if ((actual != unit.dimension) != cancels) {
        throw Fault(cancels ? "\"cancels\" is set, but no base unit cancels"
                            : "a base unit cancels, but \"cancels\" is not set");
    }
    for (const std::string& system : splitList(unit.systems)) {
        if (std::ranges::find(systems_, system) == systems_.end()) {
            throw Fault(fmt::format("unknown unit system \"{}\"", system));
        }
    }
}

void Catalogue::add(Unit unit, bool cancels) {
    check(unit, cancels);
    std::vector<std::string> keys = unit.aliases;
    keys.push_back(unit.name);
    if (unit.symbol != unit.name) {
        keys.push_back(unit.symbol);
    }
    for (const std::string& key : keys) {
        if (std::ranges::find(reserved, key) != reserved.end()) {
            throw Fault(fmt::format("\"{}\" is reserved", key));
        }
        const auto [entry, isNew] = unitByKey_.emplace(key, units_.size());
        if (!isNew) {
            throw Fault(fmt::format("\"{}\" already denotes {}", key,
                                    entry->second == units_.size() ? "this unit"
                                                                   : units_[entry->second].name));
        }
    }
    units_.push_back(std::move(unit));
}

} // namespace tvdata
