#include "units/spelling_reader.h"

#include "text/quote.h"
#include "units/conventions.h"
#include "units/mistakable.h"
#include "units/name_reading.h"
#include "units/phrases.h"
#include "units/product.h"
#include "units/spelling.h"
#include "units/unit_names.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tvtool::units {

namespace {

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
        const Letter* const letter = temperatureLetter(unit);
        if (letter != nullptr && power == -1) {
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

} // namespace

Reading readSpelling(std::string_view text) { return SpellingReader(text).read(); }

} // namespace tvtool::units
