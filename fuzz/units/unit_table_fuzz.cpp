// Any sequence of registrations, removals, comparisons and conversions in a table of units,
// compared with a map of texts. An operation that throws changes nothing. Factors of conversions
// are inverse to each other, and their products are factors, as long as no product overflows.
#include "support/require.h"

#include <tvtypes/units.h>

#include <fnd/except.h>
#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace TVTypeSys;
using fuzzing::require;

constexpr int noUnit = -10;

class Script {
  public:
    explicit Script(FuzzedDataProvider& input) : input_(input) {}

    void step() {
        switch (input_.ConsumeIntegralInRange(0, 7)) {
        case 0:
            return remove(pick());
        case 1:
            return add(pick());
        case 2:
            return compare(pick(), pick());
        case 3:
            return convert(pick(), pick(), pick());
        case 4:
            if (input_.ConsumeIntegralInRange(0, 9) == 0) {
                table_.resetToBuiltin();
                ids_ = {{"inherit", -1}, {"unitless", 0}};
            }
            return;
        default:
            registerText(text());
        }
    }

    void check() const {
        std::map<int, bool> used;
        for (const auto& [text, id] : ids_) {
            require(table_.getUnitId(text.c_str()) == id);
            require(table_.isUnitIdValid(id) && table_.getUnit(id) != nullptr);
            used[id] = true;
        }
        require(table_.getNumUnits() == used.size());
    }

  private:
    /// Composes an expression that is mostly valid.
    std::string text() {
        static const char* const names[] = {
            "m", "km", "s",   "ft",    "N",        "degC",    "metre", "kg",       "rad",
            "h", "W",  "bar", "micro", "unitless", "inherit", "zork",  "\xc2\xb0", "1"};
        static const char* const joints[] = {"*", "/", "^", "*(", ")/", " * ", "^-", "/("};
        std::string all;
        do {
            all += input_.PickValueInArray(names);
            if (input_.ConsumeBool()) {
                all += '^' + std::to_string(input_.ConsumeIntegral<std::int8_t>());
            }
            if (!input_.ConsumeBool()) {
                return all;
            }
            all += input_.PickValueInArray(joints);
        } while (input_.remaining_bytes() > 0);
        return all;
    }

    /// Returns an id, mostly one of the table.
    int pick() {
        if (input_.ConsumeIntegralInRange(0, 15) == 0) {
            return input_.ConsumeIntegralInRange(-12, 20);
        }
        const auto skipped = input_.ConsumeIntegralInRange<std::size_t>(0, ids_.size() - 1);
        return std::next(ids_.begin(), static_cast<std::ptrdiff_t>(skipped))->second;
    }

    int greatestId() const {
        int greatest = -1;
        for (const auto& [text, id] : ids_) {
            greatest = std::max(greatest, id);
        }
        return greatest;
    }

    void registerText(const std::string& text) {
        const auto known = ids_.find(text);
        const int expected = known == ids_.end() ? greatestId() + 1 : known->second;
        try {
            require(table_.registerUnit(text.c_str(), input_.ConsumeBool()) == expected);
            require(known != ids_.end() || UnitTable::isAValidUnit(text.c_str()));
            ids_[text] = expected;
        } catch (const fnd::except::IException&) {
            require(known == ids_.end() && !UnitTable::isAValidUnit(text.c_str()));
            require(table_.getUnitId(text.c_str()) == noUnit);
        } catch (const boost::bad_rational&) {
            require(known == ids_.end()); // a product wraps to a denominator of 0
        }
    }

    void remove(int id) {
        if (id < 1) {
            return;
        }
        try {
            table_.removeUnit(table_.getUnit(id));
        } catch (const fnd::except::IException&) {
            return require(!table_.isUnitIdValid(id));
        }
        std::erase_if(ids_, [&](const auto& one) { return one.second == id; });
    }

    /// Adds a copy of a unit under an id that may be in use, with a text of its own.
    void add(int id) {
        const UnitBase* const original = table_.getUnit(id);
        if (original == nullptr) {
            return;
        }
        const std::string text = "added " + std::to_string(++added_);
        UnitBase* const copy = original->clone();
        copy->setId(input_.ConsumeIntegralInRange(1, 12));
        ids_[text] = copy->getId();
        table_.addUnit(std::u16string(text.begin(), text.end()), copy);
    }

    void compare(int a, int b) const {
        const bool areValid = table_.isUnitIdValid(a) && table_.isUnitIdValid(b);
        try {
            const bool areEqual = table_.equivalentUnits(a, b);
            require(areValid && table_.equivalentUnits(b, a) == areEqual);
            require(a != b || areEqual == (a > 0));
        } catch (const fnd::except::IException&) {
            require(!areValid);
        }
    }

    std::optional<double> factor(int from, int to) const {
        try {
            return table_.getUnit(from)->getScalingFactorToConvertTo(*table_.getUnit(to));
        } catch (const fnd::except::IException&) {
            return std::nullopt;
        }
    }

    void convert(int a, int b, int c) const {
        if (!table_.isUnitIdValid(a) || !table_.isUnitIdValid(b) || !table_.isUnitIdValid(c)) {
            return;
        }
        const std::optional<double> there = factor(a, b);
        const std::optional<double> back = factor(b, a);
        const std::optional<double> further = factor(b, c);
        require(there.has_value() == back.has_value());
        if (there && isUsual(*there) && isUsual(*back)) {
            require(std::abs(*there * *back - 1) < 1e-9);
            // A unit without a quantity converts to units that do not convert to each other.
            const std::optional<double> through = factor(a, c);
            if (further && through && isUsual(*further) && isUsual(*through)) {
                require(std::abs(*there * *further / *through - 1) < 1e-9);
            }
        }
    }

    /// Factors beyond are computed from numbers that have lost digits.
    static bool isUsual(double factor) { return std::abs(factor) > 1e-9 && std::abs(factor) < 1e9; }

    FuzzedDataProvider& input_;
    UnitTable table_;
    std::map<std::string, int> ids_{{"inherit", -1}, {"unitless", 0}};
    int added_ = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    Script script(input);
    while (input.remaining_bytes() > 0) {
        script.step();
        script.check();
    }
    return 0;
}
