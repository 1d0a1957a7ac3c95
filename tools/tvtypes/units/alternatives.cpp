#include "units/alternatives.h"

#include "units/joined.h"
#include "units/spelling.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <set>

namespace tvtool::units {

namespace {

struct Meaning {
    std::string_view name;
    std::string_view other;
    int offset = 0; ///< in coherent SI units
};

constexpr int atmosphere = 101325;
constexpr int standardPressure = 100000;

/// Names that mean other units in other fields or countries.
constexpr Meaning meanings[] = {
    // Revolutions and events.
    {"Hz", "rev/s"},
    {"kHz", "1000 rev/s"},
    {"rpm", "1/min"},
    {"RPM", "1/min"},
    {"rps", "1/s"},
    {"rev", "1"},
    {"revolution", "1"},
    {"turn", "1"},
    {"cycle", "rev"},
    {"cycles", "rev"},
    {"bpm", "rev/min"},
    {"U", "rev"},
    {"U", "1"},
    // Masses and forces.
    {"kg", "kgf"},
    {"g", "g0"},
    {"g", "gf"},
    {"mg", "mg0"},
    {"t", "tf"},
    {"lb", "lbf"},
    {"lbs", "lbf"},
    {"pound", "lbf"},
    {"pounds", "lbf"},
    {"lb", "lbt"},
    {"oz", "ozf"},
    {"oz", "ozt"},
    {"oz", "floz"},
    {"oz", "floz_imp"},
    {"ounce", "floz"},
    {"ounce", "ozt"},
    {"gr", "g"},
    {"ct", "1"},
    {"cwt", "cwt_imp"},
    {"ton", "t"},
    {"ton", "ton_imp"},
    {"ton", "TR"},
    {"ton", "tonf"},
    {"ton", "tonf_imp"},
    {"ton", "t_TNT"},
    {"tons", "t"},
    {"tons", "ton_imp"},
    {"tons", "TR"},
    {"tons", "tonf"},
    {"tonf", "tf"},
    {"tonf", "tonf_imp"},
    {"kt", "kn"},
    // Lengths, areas, volumes.
    {"ft", "ft_us"},
    {"mi", "mi_us"},
    {"mi", "nmi"},
    {"mile", "nmi"},
    {"nm", "nmi"},
    {"M", "nmi"},
    {"mil", "mm"},
    {"mil", "mil_angle"},
    {"pt", "pt_imp"},
    {"pt", "pt_dry"},
    {"pt", "pt_typ"},
    {"qt", "qt_imp"},
    {"qt", "qt_dry"},
    {"gal", "gal_imp"},
    {"gal", "gal_dry"},
    {"gal", "Gal"},
    {"Gal", "gal"},
    {"gallon", "gal_imp"},
    {"gallons", "gal_imp"},
    {"pint", "pt_imp"},
    {"quart", "qt_imp"},
    {"gpm", "gal_imp/min"},
    {"gph", "gal_imp/h"},
    {"gpd", "gal_imp/d"},
    {"mpg", "mpg_imp"},
    {"floz", "floz_imp"},
    {"fl_oz", "floz_imp"},
    {"gi", "gi_imp"},
    {"bu", "bu_imp"},
    {"bbl", "bbl_imp"},
    {"bbl", "bbl_dry"},
    {"cup", "cup_metric"},
    {"tbsp", "tbsp_metric"},
    {"tsp", "tsp_metric"},
    {"a", "are"},
    {"Ha", "ha"},
    {"b", "barn"},
    {"pc", "1"},
    {"Nm3", "m^3"},
    {"Sm3", "m^3"},
    {"NL", "L"},
    {"Nl", "L"},
    {"slpm", "L/min"},
    {"sccm", "cm^3/min"},
    {"scf", "ft^3"},
    {"scfm", "ft^3/min"},
    {"MMscfd", "1000000 ft^3/d"},
    // Times.
    {"h", "h_planck"},
    {"mo", "30 d"},
    {"month", "30 d"},
    {"yr", "yr_365"},
    {"yr", "yr_tropical"},
    {"year", "yr_365"},
    {"year", "yr_tropical"},
    {"a", "yr_365"},
    {"a", "yr_tropical"},
    {"min", "arcmin"},
    {"sec", "arcsec"},
    {"d", "d_sidereal"},
    {"Gs", "G"},
    {"Gy", "1000000000 yr"},
    {"Ma", "1"},
    // Energies and powers.
    {"cal", "cal_IT"},
    {"cal", "cal_15"},
    {"cal", "cal_20"},
    {"cal", "cal_mean"},
    {"kcal", "kcal_IT"},
    {"Mcal", "Mcal_IT"},
    {"Btu", "Btu_th"},
    {"Btu", "Btu_59"},
    {"Btu", "Btu_39"},
    {"Btu", "Btu_mean"},
    {"BTU", "Btu_th"},
    {"BTU", "Btu_59"},
    {"kBtu", "1000 Btu_th"},
    {"MMBtu", "1000000 Btu_th"},
    {"therm", "thm_us"},
    {"thm", "thm_us"},
    {"hp", "PS"},
    {"hp", "hp_E"},
    {"hp", "hp_S"},
    {"HP", "PS"},
    {"HP", "hp_E"},
    {"bhp", "hp_S"},
    {"PS", "hp"},
    {"cv", "hp"},
    {"CV", "hp"},
    {"toe", "10000000000 cal"},
    // Pressures, as absolute values.
    {"barg", "bar", atmosphere},
    {"barg", "bar", standardPressure},
    {"psig", "psi", atmosphere},
    {"kPag", "kPa", atmosphere},
    {"kPag", "kPa", standardPressure},
    {"mbarg", "mbar", atmosphere},
    {"MPag", "MPa", atmosphere},
    {"inHg", "inHg_60F"},
    {"inH2O", "inH2O_60F"},
    {"inWC", "inH2O_60F"},
    {"at", "atm"},
    {"at", "At"},
    {"atm", "at"},
    // Temperatures.
    {"C", "degC"},
    {"F", "degF"},
    {"R", "degR"},
    {"R", "R_gas"},
    // Others.
    {"A", "angstrom"},
    {"G", "g0"},
    {"D", "dpt"},
    {"D", "darcy"},
    {"N", "mol/L"},
    {"rad", "rd"},
    {"mrad", "mrd"},
    {"krad", "krd"},
    {"ppt", "permil"},
    {"ph", "1"},
    {"dB", "1"},
    {"dB", "0.1"},
    {"bel", "1"},
    {"B", "bel"},
    {"B", "1"},
    {"pH", "1"},
    {"Mm3", "1000000 m^3"},
    {"Mm3", "1000 m^3"},
};

/// Expressions of frequencies, which are often those of revolutions.
constexpr Meaning frequencies[] = {
    {"1/s", "rev/s"}, {"1/min", "rev/min"}, {"1/h", "rev/h"}, {"N/A", "unitless"}};

/// Collects readings in which a name is replaced.
class Collector {
  public:
    explicit Collector(std::string_view text) : text_(text) {}

    void addWhole(const std::string& expression) {
        for (const Meaning& row : frequencies) {
            if (expression == row.name) {
                add(std::string(row.other), expression, "a frequency", 0);
            }
        }
    }

    void addNames() {
        const Spelling spelling = parseSpelling(text_);
        std::set<std::string_view> seen;
        for (const SpeltName& name : spelling.names) {
            if (!seen.insert(name.name).second) {
                continue;
            }
            for (const Meaning& row : meanings) {
                if (row.name == name.name) {
                    replace(spelling, name.name, row.other, row.offset);
                }
            }
            if (const std::string product = productOf(name.name); !product.empty()) {
                replace(spelling, name.name, product, 0);
            }
            if (findUnitName(name.name).empty()) {
                for (const std::string& variant : caseVariants(name.name)) {
                    replace(spelling, name.name, variant, 0);
                }
            }
        }
    }

    std::vector<Alternative> take() { return std::move(alternatives_); }

  private:
    /// Returns the product that a name is instead of one unit: m*s for ms, N*m for Nm.
    static std::string productOf(std::string_view name) {
        std::vector<UnitPower> parts = splitJoined(name);
        if (name == "ms" || name == "mK") {
            parts = {{"m", 1}, {std::string(name.substr(1)), 1}};
        }
        std::string text;
        for (const UnitPower& part : parts) {
            text += fmt::format("{}{}", text.empty() ? "" : "*", part.name);
            text += part.power == 1 ? "" : fmt::format("^{}", part.power);
        }
        return parts.size() < 2 ? "" : text;
    }

    void replace(const Spelling& spelling, std::string_view name, std::string_view other,
                 int offset) {
        const bool isAlone = name == text_ || !findUnitName(other).empty();
        const std::string part = isAlone ? std::string(other) : fmt::format("({})", other);
        std::string text;
        std::size_t end = 0;
        for (const SpeltName& spelt : spelling.names) {
            if (spelt.name == name) {
                text += text_.substr(end, spelt.position - end);
                text += part;
                end = spelt.position + name.size();
            }
        }
        text += text_.substr(end);
        add(text, std::string(name), fullNameOfUnit(name), offset);
    }

    void add(const std::string& text, const std::string& name, std::string usualMeaning,
             int offset) {
        constexpr std::size_t most = 40;
        if (alternatives_.size() < most) {
            try {
                alternatives_.push_back({readUnit(text), offset, name, std::move(usualMeaning)});
            } catch (const text::ParseError&) {
                return;
            }
        }
    }

    std::string_view text_;
    std::vector<Alternative> alternatives_;
};

} // namespace

std::vector<Alternative> alternativeReadings(std::string_view text) {
    constexpr std::size_t longest = 100;
    if (text.size() > longest) {
        return {};
    }
    Collector collector(text);
    try {
        collector.addNames();
        collector.addWhole(readUnit(text).expression);
    } catch (const text::ParseError&) {
        return collector.take();
    }
    return collector.take();
}

} // namespace tvtool::units
