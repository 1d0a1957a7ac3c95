// Fixture with a unit database of a few units, in a temporary file.
#pragma once

#include "support/errors.h"

#include <tvtypes/units.h>

#include <fnd/filesystem.h>
#include <tv_services/diagnostics.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

// Scale and offset as JSON fields. Each is given as numerator, denominator and exponent.
inline std::string scales(const std::string& scaling, const std::string& offset) {
    std::string fields;
    std::istringstream numbers(scaling + " " + offset);
    for (const char* of : {"Scaling", "Offset"}) {
        for (const char* part : {"NumeratorOf", "DenominatorOf", "Base10ExponentOf"}) {
            std::string number;
            numbers >> number;
            fields += std::string(", \"") + part + of + "\": " + number;
        }
    }
    return fields;
}

inline std::string abstractRecord(const std::string& name, const std::string& expression) {
    return R"({"Name": ")" + name + R"(", "Expression": ")" + expression + "\"" +
           scales("1 1 0", "0 1 0") + "}";
}

inline std::string record(const std::string& name, const std::string& symbol,
                          const std::string& expression, const std::string& quantity,
                          const std::string& aliases = "", const std::string& scaling = "1 1 0",
                          const std::string& offset = "0 1 0", const std::string& display = "") {
    return R"({"Name": ")" + name + R"(", "Symbol": ")" + symbol + R"(", "Expression": ")" +
           expression + R"(", "Alias": ")" + aliases + R"(", "Display": ")" + display +
           R"(", "UnitSystem": "SI,Nowhere", "AbstractUnit": ")" + quantity + "\"" +
           scales(scaling, offset) + "}";
}

class WithUnitDatabase : public testing::Test {
  protected:
    WithUnitDatabase()
        : root_(std::filesystem::temp_directory_path() /
                ("units_" +
                 std::string(testing::UnitTest::GetInstance()->current_test_info()->name()))),
          path_(root_.string() + std::string(TVTypeSys::UnitDatabase::unitDBPath.begin(),
                                             TVTypeSys::UnitDatabase::unitDBPath.end())) {
        std::filesystem::create_directories(path_.parent_path());
        fnd::filesystem::set_install_path(root_.u16string());
        before_ = tvsvSetWarningHandler([this](const tvsvDiagnosticImpl& warning) {
            warnings_.push_back(messageSummary(warning));
        });
        TVTypeSys::UnitDatabase::_unit_database_.reset();
        writeFile();
    }
    ~WithUnitDatabase() override {
        TVTypeSys::UnitDatabase::_unit_database_.reset();
        tvsvSetWarningHandler(before_);
        fnd::filesystem::set_install_path(u"");
        std::filesystem::remove_all(root_);
    }

    void write(const std::string& text) { std::ofstream(path_) << text; }

    void writeFile() {
        const auto list = [](const std::vector<std::string>& records) {
            std::string text;
            for (const std::string& one : records) {
                text += (text.empty() ? "" : ",\n") + one;
            }
            return "[" + text + "]";
        };
        write("{\"unitSystems\": [{\"Name\": \"SI\"}], \"abstractUnits\": " + list(abstractUnits) +
              ", \"units\": " + list(units) + compounds + "}");
    }

    static TVTypeSys::UnitDatabase& database() {
        return *TVTypeSys::UnitDatabase::getUnitDatabase();
    }
    static const TVTypeSys::UnitBase& unit(const std::u16string& text) {
        const auto found = database().getUnit(text);
        EXPECT_EQ(found.size(), 1);
        return found.begin()->get();
    }
    std::vector<std::string> warnings() { return std::exchange(warnings_, {}); }

    std::vector<std::string> abstractUnits = {
        abstractRecord("length", "length"), abstractRecord("mass", "mass"),
        abstractRecord("time", "time"), abstractRecord("temperature", "thermodynamic_temperature"),
        abstractRecord("force", "mass*length/time^2")};
    std::vector<std::string> units = {
        record("Kilogram", "kg", "kg", "mass"),
        record("Metres", "m", "m", "length", "metre,meter"),
        record("Seconds", "s", "s", "time"),
        record("Kelvin", "K", "K", "temperature"),
        record("newton", "N", "kg*m/s^2", "force"),
        record("kilonewton", "kN", "N", "force", "", "1 1 3"),
        record("kilometre", "km", "m", "length", "", "1 1 3"),
        record("foot", "ft", "m", "length", "feet,kN/ft", "381 125 -1"),
        record("celsius", "degC", "K", "temperature", "", "1 1 0", "27315 100 0", "\u00b0C"),
        record("minute", "min", "s", "time", "", "6 1 1")};
    std::string compounds; // a further variable, with its comma

  private:
    std::filesystem::path root_;
    std::filesystem::path path_;
    std::vector<std::string> warnings_;
    tvsvWarningHandler before_;
};
