#include "units/json.h"

#include "text/safe_text.h"

#include <boost/json.hpp>

#include <cmath>

namespace tvtool::units {

namespace {

namespace json = boost::json;

json::value textOrNull(const std::string& text) {
    return text.empty() ? json::value(nullptr) : json::value(text);
}

json::value numberOrNull(const std::optional<double>& number) {
    return number && std::isfinite(*number) ? json::value(*number) : json::value(nullptr);
}

void print(const json::object& object, std::ostream& os) {
    os << text::safeText(json::serialize(object)) << '\n';
}

} // namespace

void printJson(const std::vector<UnitSheet>& sheets, std::ostream& os) {
    json::array units;
    for (const UnitSheet& sheet : sheets) {
        units.push_back(json::object{{"text", sheet.text},
                                     {"expression", sheet.expression},
                                     {"name", textOrNull(sheet.name)},
                                     {"symbol", textOrNull(sheet.symbol)},
                                     {"display", textOrNull(sheet.display)},
                                     {"aliases", json::value_from(sheet.aliases)},
                                     {"definition", textOrNull(sheet.definition)},
                                     {"quantity", textOrNull(sheet.quantity)},
                                     {"canonical", textOrNull(sheet.canonical)},
                                     {"base", textOrNull(sheet.base)},
                                     {"factor", textOrNull(sheet.factor)},
                                     {"factorDecimal", numberOrNull(sheet.factorDecimal)},
                                     {"conversion", textOrNull(sheet.conversion)},
                                     {"systems", json::value_from(sheet.systems)},
                                     {"convertible", json::value_from(sheet.convertible)},
                                     {"convertibleCount", sheet.convertibleCount},
                                     {"notes", json::value_from(sheet.notes)}});
    }
    print({{"units", std::move(units)}}, os);
}

void printJson(const UnitFactor& factor, std::ostream& os) {
    print({{"from", factor.from},
           {"to", factor.to},
           {"factor", numberOrNull(factor.factor)},
           {"exact", textOrNull(factor.exact)},
           {"exactDecimal", numberOrNull(factor.exactDecimal)},
           {"differs", factor.differs},
           {"conversion", textOrNull(factor.conversion)},
           {"reason", textOrNull(factor.reason)}},
          os);
}

void printJson(const std::vector<UnitLine>& lines, std::ostream& os) {
    json::array units;
    for (const UnitLine& line : lines) {
        units.push_back(json::object{{"name", line.name},
                                     {"symbol", textOrNull(line.symbol)},
                                     {"quantity", textOrNull(line.quantity)},
                                     {"definition", textOrNull(line.definition)},
                                     {"systems", json::value_from(line.systems)}});
    }
    print({{"units", std::move(units)}}, os);
}

void printJson(const std::vector<UnitWord>& words, std::ostream& os) {
    json::array rows;
    for (const UnitWord& word : words) {
        rows.push_back(json::object{
            {"word", word.word}, {"kind", word.kind}, {"unit", textOrNull(word.unit)}});
    }
    print({{"words", std::move(rows)}}, os);
}

} // namespace tvtool::units
