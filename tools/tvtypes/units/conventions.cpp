#include "units/conventions.h"

#include "text/quote.h"
#include "units/unit_names.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>

namespace tvtool::units {

namespace {

constexpr std::string_view conductivity =
    "mK is metre kelvin here; a quotient by the millikelvin is written 1/mK";
constexpr std::string_view normalVolume = "a gas volume at reference conditions is written Nm3";
constexpr std::string_view revolutions =
    "U is the revolution in German texts, and the enzyme unit; write rpm or rev/s, or enzyme_unit";
constexpr std::string_view minuteOrFoot =
    "' is the minute of arc, the minute and the foot; write arcmin, min or ft";
constexpr std::string_view secondOrInch =
    "\" is the second of arc, the second and the inch; write arcsec, s or in";
constexpr std::string_view arbitrary =
    "a.u. is any of arbitrary, atomic and astronomical units; write au for the last";
constexpr std::string_view acidity =
    "pH is a logarithm of a concentration, not a multiple of a unit";
constexpr std::string_view currentKind =
    "AC and DC are kinds of current, which a unit does not have; write V or A";
constexpr std::string_view moleNote = "the gram mole is the mole, the kilogram mole 1000 of them";

constexpr std::array<Convention, 9> overriding{{{"W/mK", "W/(m*K)", conductivity},
                                                {"W/(mK)", "W/(m*K)", conductivity},
                                                {"mW/mK", "mW/(m*K)", conductivity},
                                                {"mW/(mK)", "mW/(m*K)", conductivity},
                                                {"kW/mK", "kW/(m*K)", conductivity},
                                                {"kW/(mK)", "kW/(m*K)", conductivity},
                                                {"U/min", "", revolutions},
                                                {"U/s", "", revolutions},
                                                {"1/U", "", revolutions}}};

constexpr std::array<Convention, 44> texts{{{"none", "unitless", ""},
                                            {"None", "unitless", ""},
                                            {"NONE", "unitless", ""},
                                            {"n/a", "unitless", ""},
                                            {"n.a.", "unitless", ""},
                                            {"N.A.", "unitless", ""},
                                            {"no unit", "unitless", ""},
                                            {"no units", "unitless", ""},
                                            {"Unitless", "unitless", ""},
                                            {"Dimensionless", "unitless", ""},
                                            {"dimless", "unitless", ""},
                                            {"adimensional", "unitless", ""},
                                            {"ratio", "unitless", ""},
                                            {"fraction", "unitless", ""},
                                            {"[-]", "unitless", ""},
                                            {"(-)", "unitless", ""},
                                            {"[]", "unitless", ""},
                                            {"[ ]", "unitless", ""},
                                            {"--", "unitless", ""},
                                            {"---", "unitless", ""},
                                            {"p.u", "pu", ""},
                                            {"per-unit", "pu", ""},
                                            {"per cent", "percent", ""},
                                            {"per mille", "permil", ""},
                                            {"parts per million", "ppm", ""},
                                            {"parts per billion", "ppb", ""},
                                            {"r.p.m.", "rpm", ""},
                                            {"m.p.h.", "mph", ""},
                                            {"p.s.i.", "psi", ""},
                                            {"h.p.", "hp", ""},
                                            {"c.f.m.", "cfm", ""},
                                            {"g.p.m.", "gpm", ""},
                                            {"U.S. gallon", "us_gallon", ""},
                                            {"U.S. gal", "gal_us", ""},
                                            {"a.u.", "", arbitrary},
                                            {"a.u", "", arbitrary},
                                            {"'", "", minuteOrFoot},
                                            {"\"", "", secondOrInch},
                                            {"''", "", secondOrInch},
                                            {"\u2019", "", minuteOrFoot},
                                            {"\u201D", "", secondOrInch},
                                            {"U min-1", "", revolutions},
                                            {"U\u00B7min-1", "", revolutions},
                                            {"U.min-1", "", revolutions}}};

constexpr std::array<Convention, 25> names{
    {{"C\u00B0", "degC", ""},
     {"F\u00B0", "degF", ""},
     {"\u2032\u2032", "arcsec", ""},
     {"gmol", "mol", moleNote},
     {"gmole", "mol", moleNote},
     {"kgmol", "kmol", moleNote},
     {"kgmole", "kmol", moleNote},
     {"lbmole", "lbmol", ""},
     {"ftlbs", "ft_lbf", ""},
     {"ftlbf", "ft_lbf", ""},
     {"lbsft", "lbf_ft", ""},
     {"lbfft", "lbf_ft", ""},
     {"inlb", "lbf_in", ""},
     {"inlbs", "lbf_in", ""},
     {"inlbf", "lbf_in", ""},
     {"lbin", "lbf_in", ""},
     {"lbfin", "lbf_in", ""},
     {"ozin", "ozf_in", ""},
     {"inoz", "ozf_in", ""},
     {"pH", "", acidity},
     {"AC", "", currentKind},
     {"DC", "", currentKind},
     {"Nm3", "", normalVolume},
     {"Sm3", "", normalVolume},
     {"gm", "", "gm is no symbol; the gram is g, the gigametre Gm"}}};

/// Names whose cubes are gas volumes at reference conditions, with the names of these.
constexpr std::array<std::array<std::string_view, 2>, 4> gasVolumes{
    {{"Nm", "Nm3"}, {"Sm", "Sm3"}, {"Ncm", "scc"}, {"Scm", "scc"}}};

struct Level {
    std::string_view suffix; ///< after dB
    std::string_view reference;
};

constexpr std::array<Level, 22> levels{{{"m", "1 mW"},
                                        {"mW", "1 mW"},
                                        {"W", "1 W"},
                                        {"k", "1 kW"},
                                        {"V", "1 V"},
                                        {"mV", "1 mV"},
                                        {"uV", "1 uV"},
                                        {"\u00B5V", "1 uV"},
                                        {"\u03BCV", "1 uV"},
                                        {"u", "0.775 V"},
                                        {"uA", "1 uA"},
                                        {"A", "20 uPa, with the weighting A"},
                                        {"B", "20 uPa, with the weighting B"},
                                        {"C", "20 uPa, with the weighting C"},
                                        {"Z", "20 uPa, or that of radar reflectivity"},
                                        {"SPL", "20 uPa"},
                                        {"i", "the isotropic antenna"},
                                        {"d", "the dipole antenna"},
                                        {"c", "the carrier"},
                                        {"FS", "full scale"},
                                        {"sm", "1 m^2"},
                                        {"Hz", "1 Hz"}}};

constexpr std::array<std::string_view, 7> gauge{"g", "_g", "gauge", "_gauge", "ga", "G", "rel"};
constexpr std::array<std::string_view, 8> absolute{"a",   "_a",   "abs", "_abs",
                                                   "Abs", "_ABS", "A",   "absolute"};
constexpr std::array<std::string_view, 14> measuredAs{
    "AC", "DC", "ac", "dc", "rms", "RMS", "_rms", "pp", "PP", "p_p", "_pp", "pk", "peak", "eff"};
constexpr std::array<std::string_view, 6> ofPower{"el", "_el", "mech", "_th", "_e", "peak"};
constexpr std::array<std::string_view, 8> referenceConditions{"n",   "N",   "s",   "S",
                                                              "STP", "NTP", "std", "norm"};
constexpr std::array<std::string_view, 3> roots{"sqrt", "rt", "root"};

const Convention* find(std::span<const Convention> rows, std::string_view text) {
    const auto found = std::ranges::find(rows, text, &Convention::text);
    return found == rows.end() ? nullptr : &*found;
}

bool contains(std::span<const std::string_view> words, std::string_view word) {
    return std::ranges::find(words, word) != words.end();
}

std::string levelReason(std::string_view name, std::string_view suffix) {
    const auto level = std::ranges::find(levels, suffix, &Level::suffix);
    return fmt::format("{} is a level{}{}, not a multiple of a unit; write dB for a difference of "
                       "levels",
                       name, level == levels.end() ? "" : " relative to ",
                       level == levels.end() ? "" : level->reference);
}

std::string pressureReason(std::string_view unit, std::string_view word) {
    const bool isGauge = contains(gauge, word);
    const std::string symbol = fmt::format("{}{}", unit, isGauge ? 'g' : 'a');
    return fmt::format("{} ({}) is {} pressure; write {}", unit, word,
                       isGauge ? "gauge" : "absolute",
                       findUnitName(symbol).empty() ? std::string(unit) : symbol);
}

/// Returns the reason against a unit of the database with a suffix.
std::string suffixReason(std::string_view unit, std::string_view suffix) {
    const std::string quantity = quantityOfUnit(unit);
    if (quantity == "pressure" && (contains(gauge, suffix) || contains(absolute, suffix))) {
        return pressureReason(unit, suffix);
    }
    const bool isElectrical = quantity == "voltage" || quantity == "electric_current";
    const bool isPower = quantity == "power" || quantity == "energy";
    if ((isElectrical && contains(measuredAs, suffix)) || (isPower && contains(ofPower, suffix))) {
        return fmt::format("{} says what is measured, which is no part of a unit; write {}", suffix,
                           unit);
    }
    if (quantity == "volume" && contains(referenceConditions, suffix)) {
        return fmt::format("{} ({}) is a gas volume at reference conditions; write Nm3, Sm3, NL "
                           "or scf",
                           unit, suffix);
    }
    return {};
}

} // namespace

const Convention* overridingConvention(std::string_view text) { return find(overriding, text); }
const Convention* conventionOfText(std::string_view text) { return find(texts, text); }
const Convention* conventionOfName(std::string_view name) { return find(names, name); }

std::string_view gasVolume(std::string_view name) {
    const auto found = std::ranges::find(gasVolumes, name, [](const auto& row) { return row[0]; });
    return found == gasVolumes.end() ? std::string_view() : (*found)[1];
}

std::string reasonAgainstName(std::string_view name) {
    constexpr std::string_view decibel = "dB";
    constexpr std::size_t longestSuffix = 9;
    if (name.starts_with(decibel) && name.size() > decibel.size()) {
        return levelReason(text::shortened(name), name.substr(decibel.size()));
    }
    for (const std::string_view root : roots) {
        if (name.starts_with(root) && !findUnitName(name.substr(root.size())).empty()) {
            return "the root of a unit is no unit, since units have whole powers";
        }
    }
    for (std::size_t length = std::min(longestSuffix, name.size()); length > 0; --length) {
        const std::size_t end = name.size() - length;
        if (std::string reason = suffixReason(name.substr(0, end), name.substr(end));
            !reason.empty()) {
            return reason;
        }
    }
    return {};
}

std::string reasonAgainstQualifier(std::string_view name, std::string_view qualifier) {
    if (name == "dB") {
        return levelReason(fmt::format("dB({})", text::shortened(qualifier)), qualifier);
    }
    return suffixReason(name, qualifier);
}

} // namespace tvtool::units
