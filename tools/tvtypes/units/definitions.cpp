#include "units/definitions.h"

#include "exact/pi.h"
#include "text/number.h"
#include "text/utf16.h"

#include <tvtypes/units.h>

#include <fnd/filesystem.h>
#include <ox/array.h>
#include <oxd/file.h>

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace tvtool::units {

namespace {

struct CloseFile {
    void operator()(oxdFile_tag* file) const noexcept { oxdClose(file); }
};

using Records = std::unique_ptr<oxArray_tag, TOxArrayDeleter>;

constexpr double maximumUnits = 1e9;

/// Calls `read` with each record that has a text in the field.
template <class Reading>
void forEachRecord(oxdFile_tag* file, const char* variable, const char* field,
                   const Reading& read) {
    const Records records(oxdGetVariable(file, variable));
    for (std::size_t i = 0; i < oxGetNumberOfElements(records.get()); ++i) {
        const auto textOf = [&](const char* name) {
            return oxcore::get_ustring(oxGetField(records.get(), i, name));
        };
        if (oxIsString(oxGetField(records.get(), i, field))) {
            read(textOf);
        }
    }
}

std::vector<std::u16string> splitAtCommas(const std::u16string& text) {
    std::vector<std::u16string> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(u',', begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

} // namespace

Definition parseDefinition(std::string_view text) {
    const auto fail = [text] {
        throw std::invalid_argument(fmt::format("\"{}\" is not the factor of a unit", text));
    };
    Definition definition;
    if (std::string_view rest = text; rest.starts_with("pi")) {
        const std::size_t times = std::min(rest.find('*'), rest.size() - 1);
        const std::string_view power = rest.substr(2, times - 2);
        const auto number = power.starts_with('^') ? text::parseNumber<int>(power.substr(1))
                                                   : std::optional(power.empty() ? 1 : 0);
        if (rest[times] != '*' || number.value_or(0) == 0) {
            fail();
        }
        definition.piPower = *number;
        text.remove_prefix(times + 1);
    }
    const std::size_t solidus = std::min(text.find('/'), text.size());
    definition.factor = exact::parseDecimal(text.substr(0, solidus));
    const std::optional<exact::Number> pi = exact::power(exact::pi(), definition.piPower);
    const exact::Number divisor =
        solidus < text.size() ? exact::parseDecimal(text.substr(solidus + 1)) : 1;
    if (definition.factor <= 0 || divisor <= 0 || !pi) {
        fail();
    }
    definition.factor *= *pi / divisor;
    return definition;
}

Definitions::Definitions(const std::u16string& path) {
    const std::unique_ptr<oxdFile_tag, CloseFile> file(oxdOpen(path, "r"));
    if (file == nullptr) {
        throw std::runtime_error(fmt::format("{}: {}", text::toUtf8(path), oxdLastError()));
    }
    const Records database(oxdGetVariable(file.get(), "database"));
    const double count = oxGetScalar(oxGetField(database.get(), 0, "Units"));
    if (!(count >= 0 && count < maximumUnits)) {
        throw std::runtime_error(
            fmt::format("{}: the number of units is missing", text::toUtf8(path)));
    }
    unitCount_ = static_cast<std::size_t>(count);
    forEachRecord(file.get(), "units", "Exact", [this](const auto& textOf) {
        texts_.emplace(textOf("Name"),
                       Texts{text::toUtf8(textOf("Exact")), text::toUtf8(textOf("Uncertainty"))});
    });
    forEachRecord(file.get(), "quantities", "Common", [this](const auto& textOf) {
        common_.emplace(textOf("Name"), splitAtCommas(textOf("Common")));
    });
}

std::optional<Definition> Definitions::find(const std::u16string& unitName) const {
    const auto found = texts_.find(unitName);
    if (found == texts_.end()) {
        return std::nullopt;
    }
    try {
        const auto& [factor, uncertainty] = found->second;
        Definition definition = parseDefinition(factor);
        if (!uncertainty.empty()) {
            definition.uncertainty = exact::toDouble(exact::parseDecimal(uncertainty));
        }
        return definition;
    } catch (const std::invalid_argument& error) {
        throw std::runtime_error(fmt::format("the unit {} of the database is malformed: {}",
                                             text::toUtf8(unitName), error.what()));
    }
}

const std::vector<std::u16string>& Definitions::commonUnits(const std::u16string& quantity) const {
    static const std::vector<std::u16string> none;
    const auto found = common_.find(quantity);
    return found == common_.end() ? none : found->second;
}

const Definitions& definitions() {
    // Kept, since callers have references. The package for Python calls from several threads.
    static std::mutex mutex;
    static std::map<std::u16string, const Definitions> loaded;
    std::u16string path = fnd::filesystem::get_install_path();
    const std::u16string& database = TVTypeSys::UnitDatabase::unitDBPath;
    path.append(database, 0, database.rfind(u'/')).append(u"/unitdefinitions.oxd");
    const std::lock_guard lock(mutex);
    auto found = loaded.find(path);
    if (found == loaded.end()) {
        found = loaded.try_emplace(path, path).first;
    }
    return found->second;
}

} // namespace tvtool::units
