#include "units/mistakable.h"

#include "text/parse_error.h"
#include "text/utf16.h"
#include "units/conventions.h"
#include "units/joined.h"
#include "units/name_reading.h"
#include "units/spelling.h"
#include "units/unit_names.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace tvtool::units {

namespace {

constexpr std::array<Letter, 3> temperatureLetters{
    {{"C", "coulomb", "K or degC"}, {"F", "farad", "degF or degR"}, {"R", "roentgen", "degR"}}};

} // namespace

const Letter* temperatureLetter(std::string_view symbol) {
    const auto* const letter = std::ranges::find(temperatureLetters, symbol, &Letter::symbol);
    return letter == temperatureLetters.end() ? nullptr : letter;
}

std::string letterSentence(const Letter& letter) {
    return fmt::format("{} is the {}; a temperature is {}", letter.symbol, letter.unit,
                       letter.temperature);
}

bool isPoundPerSquareInch(std::string_view mass, std::string_view length, std::int64_t power) {
    const bool isPound = mass == "lb" || mass == "lbs" || mass == "pound" || mass == "pounds";
    const bool isInch = length == "in" || length == "inch" || length == "inches";
    return isPound && ((isInch && power == 2) || (length == "in2" && power == 1));
}

bool isTemperature(std::string_view unit) {
    const std::string quantity = quantityOfUnit(unit);
    return quantity == "thermodynamic_temperature" || quantity == "temperature_difference";
}

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
        const Letter* const letter = temperatureLetter(name);
        if (letter != nullptr && power == -1 && divisors > 1) {
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

} // namespace tvtool::units
