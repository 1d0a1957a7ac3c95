#include "units/reading.h"

#include "text/quote.h"
#include "text/utf16.h"
#include "units/conventions.h"
#include "units/name_reading.h"
#include "units/phrases.h"
#include "units/spelling.h"

#include <tvtypes/units.h>

#include <fmt/format.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;

/// Letters that people write for a scale of temperature, and the units that they are.
struct Letter {
    std::string_view symbol;
    std::string_view unit;
    std::string_view temperature;
};
constexpr std::array<Letter, 3> temperatureLetters{
    {{"C", "coulomb", "K or degC"}, {"F", "farad", "degF or degR"}, {"R", "roentgen", "degR"}}};

std::string letterSentence(const Letter& letter) {
    return fmt::format("{} is the {}; a temperature is {}", letter.symbol, letter.unit,
                       letter.temperature);
}

constexpr const char* poundsOfForce =
    "a pound per square inch is a pressure if it is psi, and a mass per area if it is lbm/in^2";

bool isPoundPerSquareInch(std::string_view mass, std::string_view length, std::int64_t power) {
    const bool isPound = mass == "lb" || mass == "lbs" || mass == "pound" || mass == "pounds";
    const bool isInch = length == "in" || length == "inch" || length == "inches";
    return isPound && ((isInch && power == 2) || (length == "in2" && power == 1));
}

bool isTemperature(std::string_view unit) {
    const std::string quantity = quantityOfUnit(unit);
    return quantity == "thermodynamic_temperature" || quantity == "temperature_difference";
}

/// Returns whether the library accepts a text as an expression. It does not accept "unitless".
bool isExpression(std::string_view text) { return UnitBase::isValidUnitExpr(text::toUtf16(text)); }

/// A product of names, each once, in the order of their first occurrence.
class Product {
  public:
    /// Returns false if a power exceeds 32 bits.
    bool multiply(const UnitPower& name, std::int64_t power) {
        constexpr std::int64_t greatest = std::numeric_limits<std::int32_t>::max();
        const auto [entry, isNew] = indices_.try_emplace(name.name, names_.size());
        if (isNew) {
            names_.push_back({name.name, 0});
        }
        std::int64_t& sum = names_[entry->second].power;
        // The factors have 32 bits each.
        const std::int64_t more = name.power * power;
        sum += more;
        return more <= greatest && more >= -greatest && sum <= greatest && sum >= -greatest;
    }

    std::string expression() const {
        std::string text;
        for (const UnitPower& name : names_) {
            if (name.power > 0) {
                text += text.empty() ? "" : "*";
                text += name.name + exponent(name.power);
            }
        }
        std::string divisor;
        std::size_t divisors = 0;
        for (const UnitPower& name : names_) {
            if (name.power < 0) {
                divisor += divisor.empty() ? "" : "*";
                divisor += name.name + exponent(-name.power);
                ++divisors;
            }
        }
        if (divisors == 0) {
            return text.empty() ? unitless : text;
        }
        return fmt::format("{}/{}", text.empty() ? "1" : text,
                           divisors == 1 ? divisor : fmt::format("({})", divisor));
    }

  private:
    static std::string exponent(std::int64_t power) {
        return power == 1 ? "" : fmt::format("^{}", power);
    }

    std::vector<UnitPower> names_;
    std::unordered_map<std::string, std::size_t> indices_;
};

/// Returns the product of the numbers in an expression. The library skips numbers before a /, and
/// takes those that are names, or begin one, for units.
exact::Number expressionFactor(std::string_view text) {
    Monomial terms;
    const bool hasNumberAsName = parseUnitExpr(text::toUtf16(text), terms) &&
                                 std::ranges::any_of(terms.names, [](const std::u16string& name) {
                                     return name.front() >= u'0' && name.front() <= u'9';
                                 });
    try {
        return hasNumberAsName ? exact::Number(1) : parseSpelling(text).factor;
    } catch (const text::ParseError&) {
        return 1;
    }
}

/// Makes an expression of the names and powers of a text.
class SpellingReader {
  public:
    explicit SpellingReader(std::string_view text) : text_(text), spelling_(parseSpelling(text)) {}

    Reading read() {
        const std::span<const SpeltName> names = spelling_.names;
        for (std::size_t i = 0; i < names.size();) {
            i += take(names.subspan(i));
        }
        checkTemperatureLetters();
        checkPoundsPerArea();
        Reading reading{product_.expression(), false, spelling_.factor, {}};
        if (isDivisorJoined_) {
            addReason("all that is joined after the / belongs to the divisor");
        }
        reading.notes = std::move(reasons_);
        return reading;
    }

  private:
    [[noreturn]] void fail(const SpeltName& name, const std::string& sentence) const {
        throw text::ParseError(sentence, std::string(text_), name.position);
    }

    static bool isJuxtaposed(Joint joint) { return joint == Joint::None || joint == Joint::Blank; }
    static bool isJoined(const SpeltName& name) {
        return isJuxtaposed(name.joint) || name.joint == Joint::Dash;
    }

    /// Takes the names of a phrase, or one name. Returns their number.
    std::size_t take(std::span<const SpeltName> names) {
        const SpeltName& name = names.front();
        checkJoint(names);
        if (!name.qualifier.empty()) {
            multiply(name, readQualified(name));
            return 1;
        }
        if (const Phrase& phrase = phraseAt(names); phrase.count > 0) {
            // At most one word of a phrase has a power.
            SpeltName joined = name;
            for (const SpeltName& word : names.subspan(1, phrase.count - 1)) {
                joined.power *= word.power;
            }
            addReason(phrase.reason);
            checkTorquePerTime(names, phrase);
            multiply(joined, {{{phrase.unit, 1}}, {}});
            return phrase.count;
        }
        if (names.size() > 1 && names[1].joint == Joint::Blank) {
            failIfAny(name, reasonAgainstQualifier(name.name, names[1].name));
            checkGaugePressure(name, names[1]);
        }
        multiply(name, single(name));
        return 1;
    }

    void failIfAny(const SpeltName& name, const std::string& reason) const {
        if (!reason.empty()) {
            fail(name, reason);
        }
    }

    /// Rejects names that have no clear place in the product.
    void checkJoint(std::span<const SpeltName> names) const {
        const SpeltName& name = names.front();
        const bool hasNext = names.size() > 1 && isJoined(names[1]);
        if (hasNext && (isPercentage(name.name) || isPercentage(names[1].name))) {
            fail(names[1], "a percentage of something is no unit; write %, or a sign between");
        }
        if (name.isDivisor && name.power < 0 && isJoined(name)) {
            fail(name, "a negative power in the divisor has two readings; write either the / or "
                       "the negative power");
        }
        if (name.isDivisor && name.joint == Joint::Sign && name.power < 0) {
            fail(name, "a / and a negative power together are a product; write one of the two");
        }
    }

    /// Rejects kg/cm2 g and the like.
    void checkGaugePressure(const SpeltName& name, const SpeltName& next) const {
        const std::string quantity = quantityOfUnit(name.name);
        const bool isArea = quantity == "area" || (quantity == "length" && name.power == 2);
        if (isArea && name.isDivisor && next.name == "g") {
            fail(next, "g after an area is gauge pressure; write barg or psig, or * for the gram");
        }
    }

    /// Rejects pounds per square inch, which are of force.
    void checkPoundsPerArea() const {
        const std::vector<SpeltName>& names = spelling_.names;
        if (names.size() == 2 && names[0].power == 1 && names[1].isDivisor &&
            isPoundPerSquareInch(names[0].name, names[1].name, names[1].power)) {
            fail(names[0], poundsOfForce);
        }
    }

    /// Rejects lb-ft/s and the like: it can be a momentum or a power, and lb-ft/s2 is a force.
    void checkTorquePerTime(std::span<const SpeltName> names, const Phrase& phrase) const {
        if (phrase.reason.empty() || names.size() == phrase.count) {
            return;
        }
        const SpeltName& next = names[phrase.count];
        const std::string quantity = quantityOfUnit(next.name);
        const bool isTime = quantity == "time" || quantity == "squared_time";
        const bool isPower =
            phrase.unit == "ft_lbf" && quantity == "time" && std::abs(next.power) == 1;
        if (next.isDivisor && isTime && !isPower) {
            fail(names.front(), "a pound beside a length and a divisor of time has several "
                                "readings; write lbm or lbf, and * for the product");
        }
    }

    static bool isPercentage(std::string_view name) {
        return name == "%" || name == "\u2030" || name == "\u2031";
    }

    /// Returns the reading of a name with another one in parentheses, which is never a product.
    NameReading readQualified(const SpeltName& name) {
        std::string unit = qualifiedUnit(name.name, name.qualifier);
        failIfAny(name, reasonAgainstQualifier(name.name, name.qualifier));
        if (unit.empty() || name.power != 1) {
            fail(name, fmt::format("{}({}) is neither a unit nor a product; a product is written "
                                   "{}*{}",
                                   text::shortened(name.name), text::shortened(name.qualifier),
                                   text::shortened(name.name), text::shortened(name.qualifier)));
        }
        return {{{std::move(unit), 1}}, {}};
    }

    /// Returns the phrase at the beginning of names; memoised.
    const Phrase& phraseAt(std::span<const SpeltName> names) {
        static const Phrase none;
        std::size_t count = 1;
        bool isRaised = names.front().power != 1;
        while (count < std::min(names.size(), longestPhrase) && continuesPhrase(names[count])) {
            isRaised = isRaised || names[count].power != 1;
            ++count;
        }
        if (count == 1) {
            return none;
        }
        const SpeltName& last = names[count - 1];
        const std::size_t begin = names.front().position;
        const std::string_view key = text_.substr(begin, last.position + last.name.size() - begin);
        const auto [entry, isNew] = phrases_.try_emplace({key, isRaised});
        if (isNew) {
            entry->second = findPhrase(names.first(count));
        }
        return entry->second;
    }

    static bool continuesPhrase(const SpeltName& name) {
        return name.joint != Joint::Sign && name.joint != Joint::None && name.qualifier.empty() &&
               !name.followsDivisor;
    }

    /// Returns the reading of one name; memoised, because a long text repeats few names.
    const NameReading& single(const SpeltName& name) {
        const auto [entry, isNew] = readings_.try_emplace({name.name, name.power});
        if (isNew) {
            try {
                entry->second = readName(name.name, name.power);
            } catch (const RefusedName& error) {
                fail(name, error.what());
            }
            if (entry->second.product.empty()) {
                throw UnknownUnit(text_, name.position, name.name);
            }
            addReason(entry->second.reason);
        }
        return entry->second;
    }

    void multiply(const SpeltName& name, const NameReading& reading) {
        std::int64_t outer = name.outer;
        if (name.followsDivisor) {
            if (name.joint != Joint::Dot || reading.product.size() > 1 ||
                !isTemperature(reading.product.front().name)) {
                fail(name, "it follows a divisor after a multiplication sign, which has two "
                           "readings; write parentheses");
            }
            outer = -outer;
            isDivisorJoined_ = true;
        }
        isDivisorJoined_ =
            isDivisorJoined_ || (name.isDivisor && (isJoined(name) || reading.product.size() > 1));
        const auto& [symbol, power] = reading.product.back();
        if (symbol == "ms" && name.power < 0) {
            fail(name, "ms is the millisecond here, and metre second to many; write m.s or 1/ms");
        }
        for (const UnitPower& unit : reading.product) {
            const bool isLast = &unit == &reading.product.back();
            // A gas volume has its power in the name.
            const std::int64_t ownPower =
                gasVolume(name.name) == unit.name ? name.power / 3 : name.power;
            const std::int64_t power = isLast ? ownPower * outer : outer;
            if (!product_.multiply(unit, power)) {
                fail(name, "the power is above 2147483647");
            }
            noteDivisor(name, unit.name, unit.power * power);
        }
    }

    void noteDivisor(const SpeltName& name, const std::string& unit, std::int64_t power) {
        divisors_ += power < 0 ? 1 : 0;
        const auto letter = std::ranges::find(temperatureLetters, unit, &Letter::symbol);
        if (letter != temperatureLetters.end() && power == -1) {
            temperatureLetter_ = letter;
            letterPosition_ = name.position;
        }
    }

    /// Rejects C, F and R in a divisor of several units, such as Btu/lb-F.
    void checkTemperatureLetters() const {
        if (temperatureLetter_ != nullptr && divisors_ > 1) {
            throw text::ParseError(letterSentence(*temperatureLetter_), std::string(text_),
                                   letterPosition_);
        }
    }

    void addReason(const std::string& reason) {
        constexpr std::size_t most = 4;
        if (!reason.empty() && reasons_.size() < most &&
            std::ranges::find(reasons_, reason) == reasons_.end()) {
            reasons_.push_back(reason);
        }
    }

    struct KeyHash {
        template <class Second>
        std::size_t operator()(const std::pair<std::string_view, Second>& key) const {
            return std::hash<std::string_view>()(key.first) * 31 + std::hash<Second>()(key.second);
        }
    };

    std::string_view text_;
    Spelling spelling_;
    Product product_;
    std::unordered_map<std::pair<std::string_view, std::int32_t>, NameReading, KeyHash> readings_;
    std::unordered_map<std::pair<std::string_view, bool>, Phrase, KeyHash> phrases_;
    std::vector<std::string> reasons_;
    const Letter* temperatureLetter_ = nullptr; ///< the last one in the divisor
    std::size_t letterPosition_ = 0;
    std::size_t divisors_ = 0;
    bool isDivisorJoined_ = false;
};

/// Returns a text without blanks.
std::string withoutBlanks(std::string_view text) {
    std::string rest;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t begin = i;
        UChar32 character = -1;
        U8_NEXT(reinterpret_cast<const std::uint8_t*>(text.data()), i, text.size(), character);
        if (character < 0 || u_isUWhiteSpace(character) == 0) {
            rest += text.substr(begin, i - begin);
        }
    }
    return rest;
}

/// Returns a text without blanks at its ends.
std::string_view trimmed(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    const std::size_t end = text.find_last_not_of(" \t\r\n");
    return begin == text.size() ? std::string_view() : text.substr(begin, end + 1 - begin);
}

/// Adds the sentence that says what was read.
Reading withNote(std::string_view text, Reading reading) {
    const std::string number =
        reading.factor == 1 ? "" : fmt::format("{} * ", exact::fractionText(reading.factor));
    reading.notes.insert(reading.notes.begin(),
                         fmt::format("{} is read as {}{}", text::quoted(text), number,
                                     text::shortened(reading.expression)));
    return reading;
}

Reading readConvention(std::string_view text, const Convention& convention) {
    if (convention.reading.empty()) {
        throw text::ParseError(std::string(convention.sentence), std::string(text), 0);
    }
    Reading reading{std::string(convention.reading), false, 1, {}};
    if (!convention.sentence.empty()) {
        reading.notes.emplace_back(convention.sentence);
    }
    return withNote(text, std::move(reading));
}

/// Rejects levels with their reference, and powers of ten as medical units write them.
void checkBeginning(std::string_view text, std::string_view trimmedText) {
    if (trimmedText.starts_with("dB re")) {
        throw text::ParseError(reasonAgainstQualifier("dB", trimmedText.substr(3)),
                               std::string(text), 0);
    }
    constexpr std::string_view ten = "10*";
    if (trimmedText.starts_with(ten) && trimmedText.size() > ten.size() &&
        trimmedText[ten.size()] >= '0' && trimmedText[ten.size()] <= '9') {
        throw text::ParseError("10*3 is 30; a power of ten is written 10^3", std::string(text), 0);
    }
}

/// Adds remarks about an expression that is easily mistaken. Returns whether its usual meaning is
/// not that of the library, as that of Nm^3.
bool isMistakable(const Monomial& terms, std::vector<std::string>& notes) {
    const auto isNegative = [](std::int32_t power) { return power < 0; };
    const auto divisors = std::ranges::count_if(terms.powers, isNegative);
    if (terms.names.size() == 2 && terms.powers[0] == 1 &&
        isPoundPerSquareInch(text::toUtf8(terms.names[0]), text::toUtf8(terms.names[1]),
                             -std::int64_t{terms.powers[1]})) {
        notes.emplace_back(poundsOfForce);
    }
    for (std::size_t i = 0; i < terms.names.size(); ++i) {
        const std::string name = text::toUtf8(terms.names[i]);
        const std::int32_t power = terms.powers[i];
        if ((power == 3 || power == -3) && !gasVolume(name).empty()) {
            return true;
        }
        const auto letter = std::ranges::find(temperatureLetters, name, &Letter::symbol);
        if (letter != temperatureLetters.end() && power == -1 && divisors > 1) {
            notes.push_back(letterSentence(*letter));
        }
        if (std::string remark = remarkOnName(name); !remark.empty()) {
            notes.push_back(std::move(remark));
        }
        if (power != 1 && power != -1 && power != 0 && splitJoined(name).size() > 1) {
            notes.push_back(fmt::format("the power applies to all of {}, which is one unit", name));
        }
    }
    return false;
}

/// Adds a note if a temperature follows the divisor after a *, as in W/m^2*K.
void noteTemperatureAfterDivisor(std::string_view text, std::vector<std::string>& notes) {
    try {
        for (const SpeltName& name : parseSpelling(text).names) {
            if (name.followsDivisor && isTemperature(name.name)) {
                notes.push_back(fmt::format("{} after the * is not in the divisor; a divisor of "
                                            "several units is written in parentheses",
                                            name.name));
                return;
            }
        }
    } catch (const text::ParseError&) {
        return;
    }
}

/// Returns the reading of an expression of the library; empty for another text.
std::optional<Reading> readExpression(std::string_view text) {
    constexpr std::size_t longestMistakable = 200;
    if (text == unitless) {
        return Reading{unitless, true, 1, {}};
    }
    std::string expression = withoutBlanks(text);
    if (!isExpression(text) || !isExpression(expression)) {
        return std::nullopt;
    }
    if (const Convention* const convention = overridingConvention(expression)) {
        return readConvention(text, *convention);
    }
    Reading reading{std::move(expression), true, expressionFactor(text), {}};
    Monomial terms;
    if (text.size() <= longestMistakable && parseUnitExpr(text::toUtf16(text), terms)) {
        if (isMistakable(terms, reading.notes)) {
            return std::nullopt;
        }
        noteTemperatureAfterDivisor(text, reading.notes);
    }
    return reading;
}

} // namespace

Reading readUnit(std::string_view text) {
    if (std::optional<Reading> reading = readExpression(text)) {
        return *std::move(reading);
    }
    const std::string_view trimmedText = trimmed(text);
    if (std::string name = findUnitName(trimmedText);
        !name.empty() && readExpression(name).has_value()) {
        return withNote(text, {std::move(name), false, 1, {}});
    }
    if (const Convention* const convention = conventionOfText(trimmedText)) {
        return readConvention(text, *convention);
    }
    checkBeginning(text, trimmedText);
    return withNote(text, SpellingReader(text).read());
}

} // namespace tvtool::units
