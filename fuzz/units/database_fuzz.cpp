// Any bytes as the file of the unit database: an error that says where, or units that are found
// under their names and symbols, completed, registered and converted.
#include "support/folder.h"

#include <tvtypes/units.h>

#include <fnd/except.h>
#include <fnd/filesystem.h>
#include <fndi18n/ustring.h>
#include <tv_services/diagnostics.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace TVTypeSys;
using fuzzing::require;

/// An installation whose only file is the database.
class Installation {
  public:
    Installation() {
        std::filesystem::create_directories(path_.parent_path());
        fnd::filesystem::set_install_path(folder_.path.u16string());
        tvsvSetWarningHandler(
            [](const tvsvDiagnosticImpl& warning) { require(!warning.wholeText().empty()); });
    }
    void write(std::string_view content) const { fuzzing::writeFile(path_, content); }

  private:
    fuzzing::TemporaryFolder folder_;
    std::filesystem::path path_ =
        folder_.path.string() +
        std::string(UnitDatabase::unitDBPath.begin(), UnitDatabase::unitDBPath.end());
};

bool contains(const UnitBase::ReferenceSet& units, const UnitBase& unit) {
    return std::ranges::any_of(units, [&](const UnitBase& one) { return &one == &unit; });
}

void search(const UnitDatabase& database, const UnitBase& unit) {
    const bool isAbstract = unit.getUnitType() == 1;
    for (const std::u16string& text : {unit.name, unit.symbol}) {
        const UnitBase::ReferenceSet found =
            isAbstract ? database.getAbstractUnit(text) : database.getUnit(text);
        // Of units that compare as equal, a set has one.
        require(text.empty() || contains(found, unit) || found.count(boost::cref(unit)) == 1);
    }
    std::vector<std::u16string> words;
    const std::u16string prefix = unit.name.substr(0, 2);
    database.getAutoCompleteUnitSuggestions(UnitDatabase::SearchByName, prefix, words);
    require(std::ranges::all_of(words, [&](const auto& word) { return word.starts_with(prefix); }));
    require(isAbstract || unit.name.empty() || std::ranges::find(words, unit.name) != words.end());
}

void convert(UnitTable& table, const UnitBase& unit, int& previous) {
    try {
        const int id =
            table.registerUnit(ConvertUStringToStdString(unit.symbol, true).c_str(), true);
        const UnitBase& registered = *table.getUnit(id);
        registered.getScalingFactorToConvertTo(registered);
        if (previous >= 0) {
            const std::string product = ConvertUStringToStdString(
                unit.symbol + u"*" + table.getUnit(previous)->symbol, true);
            table.registerUnit(product.c_str(), true);
            registered.getScalingFactorToConvertTo(*table.getUnit(previous));
        }
        previous = id;
    } catch (const fnd::except::IException&) {
        // Any text can be a symbol.
    } catch (const boost::bad_rational&) {
        // Some products wrap to a denominator of 0.
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Installation installation;
    installation.write({reinterpret_cast<const char*>(data), size});
    UnitDatabase::_unit_database_.reset();
    try {
        UnitDatabase::getUnitDatabase();
    } catch (const fnd::except::IException& error) {
        require(!error.diagnostic().wholeText().empty());
    } catch (const boost::bad_rational&) {
        // A denominator is 0.
    }
    const UnitDatabase& database = *UnitDatabase::getUnitDatabase();
    UnitTable table;
    int previous = -1;
    for (const UnitBase& unit : database.getAllAbstractUnits()) {
        search(database, unit);
    }
    for (const UnitBase& unit : database.getAllUnits()) {
        search(database, unit);
        convert(table, unit, previous);
    }
    return 0;
}
