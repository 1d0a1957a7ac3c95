#include "source_file.h"

#include "fault.h"

#include <boost/json/parse.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <type_traits>

namespace tvdata {

namespace {

struct Kind {
    std::string_view member;
    void (*add)(Record&, Catalogue&, CompoundFactors&);
};

template <auto Add>
void addTo(Record& record, Catalogue& catalogue, CompoundFactors& compounds) {
    if constexpr (std::is_invocable_v<decltype(Add), Catalogue&, Record&>) {
        (catalogue.*Add)(record);
    } else {
        (compounds.*Add)(record);
    }
}

constexpr std::array<Kind, 6> kinds{{{"systems", addTo<&Catalogue::addSystem>},
                                     {"prefixes", addTo<&Catalogue::addPrefix>},
                                     {"quantities", addTo<&Catalogue::addQuantity>},
                                     {"units", addTo<&Catalogue::addUnit>},
                                     {"classes", addTo<&CompoundFactors::addClass>},
                                     {"combinations", addTo<&CompoundFactors::addCombination>}}};

boost::json::value parseFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    if (!file) {
        throw Fault(path + ": cannot be read");
    }
    boost::json::error_code error;
    boost::json::value value = boost::json::parse(text, error);
    if (error || !value.is_object()) {
        throw Fault(fmt::format("{}: {}", path, error ? error.message() : "is not an object"));
    }
    return value;
}

/// Returns the number of a record and its name, if it has one.
std::string recordLabel(const boost::json::value& record, std::size_t number) {
    const boost::json::value* const name =
        record.is_object() ? record.get_object().if_contains("name") : nullptr;
    return name != nullptr && name->is_string()
               ? fmt::format("{} ({})", number, std::string_view(name->get_string()))
               : fmt::format("{}", number);
}

} // namespace

void readSourceFile(const std::string& path, Catalogue& catalogue, CompoundFactors& compounds) {
    const boost::json::value file = parseFile(path);
    for (const auto& [member, records] : file.get_object()) {
        const auto kind = std::ranges::find(kinds, std::string_view(member), &Kind::member);
        if (kind == kinds.end() || !records.is_array()) {
            throw Fault(
                fmt::format("{}: \"{}\" is not a list of records", path, std::string_view(member)));
        }
        for (std::size_t i = 0; i < records.get_array().size(); ++i) {
            const boost::json::value& fields = records.get_array()[i];
            try {
                if (!fields.is_object()) {
                    throw Fault("is not an object");
                }
                Record record(fields.get_object());
                kind->add(record, catalogue, compounds);
            } catch (const Fault& fault) {
                throw Fault(fmt::format("{}: {}, record {}: {}", path, std::string_view(member),
                                        recordLabel(fields, i + 1), fault.what()));
            }
        }
    }
}

} // namespace tvdata
