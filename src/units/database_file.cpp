#include "services/error_list.h"
#include "services/refuse.h"
#include "services/text.h"
#include "services/variable_file.h"
#include "units/unit_lookup.h"
#include "units/unit_repository.h"

#include <tvtypes/units/database.h>

namespace TVTypeSys {

namespace {

/// A record of a variable, whose fields must be there.
class Record {
  public:
    Record(const Records& records, const char* variable, std::size_t index)
        : records_(records), variable_(variable), index_(index) {}

    std::u16string text(const char* field) const {
        return required(records_.text(index_, field), field);
    }

    Rational rational(const char* numerator, const char* denominator, const char* exponent) const {
        // One after the other, so that of several faults the first in this order is told.
        const int top = integer(numerator);
        const int bottom = integer(denominator);
        return {top, bottom, integer(exponent)};
    }
    Rational scaling() const {
        return rational("NumeratorOfScaling", "DenominatorOfScaling", "Base10ExponentOfScaling");
    }
    Rational offset() const {
        return rational("NumeratorOfOffset", "DenominatorOfOffset", "Base10ExponentOfOffset");
    }

  private:
    int integer(const char* field) const {
        return required(records_.integer(index_, field), field);
    }

    template <class Value>
    Value required(std::optional<Value> value, const char* field) const {
        if (!value) {
            refuse(units::UnitDatabaseFileLoadRecordError(
                variable_, static_cast<std::int64_t>(index_), field));
        }
        return *std::move(value);
    }

    const Records& records_;
    const char* variable_;
    std::size_t index_;
};

UnitSystem unitSystemOf(const Record& record) { return UnitSystem(record.text("Name")); }

std::unique_ptr<UnitBase> abstractUnitOf(const Record& record) {
    const std::u16string name = record.text("Name");
    const std::u16string expression = record.text("Expression");
    const Rational scaling = record.scaling();
    std::unique_ptr<UnitBase> unit(
        UnitFactory::createAbstractUnit(0, name, expression, "", scaling, record.offset(), {}));
    unit->symbol = name;
    return unit;
}

std::unique_ptr<UnitBase> unitOf(const UnitDatabase& database, const Record& record) {
    const std::u16string name = record.text("Name");
    const std::u16string symbol = record.text("Symbol");
    const std::u16string expression = record.text("Expression");
    const std::u16string aliases = record.text("Alias");
    const std::u16string display = record.text("Display");
    const std::u16string systems = record.text("UnitSystem");
    const std::u16string quantity = record.text("AbstractUnit");
    const UnitBase* abstractUnit = UnitLookup::abstract(database, quantity).first;
    if (abstractUnit == nullptr) {
        refuse(units::UnitNotInDatabase(narrow(quantity)));
    }
    const Rational scaling = record.scaling();
    std::unique_ptr<UnitBase> unit(
        UnitFactory::createUnit(0, name, expression, narrow(display), scaling, record.offset(), {},
                                "", splitAtCommas(systems), false, boost::cref(*abstractUnit)));
    unit->symbol = symbol;
    unit->aliases = splitAtCommas(aliases);
    return unit;
}

/// Reads the records of a variable one by one, and passes over those that are refused.
template <class Preparation, class Reading>
void readAll(const VariableFile& file, const char* variable, const std::string& path,
             ErrorList& failures, const Preparation& prepareFor, const Reading& read) {
    const std::optional<Records> records = file.records(variable);
    if (!records) {
        failures.add(units::UnitDatabaseFileLoadMissingFieldError(path, variable));
        return;
    }
    prepareFor(records->size());
    for (std::size_t i = 0; i < records->size(); ++i) {
        try {
            read(Record(*records, variable, i));
        } catch (const fnd::except::IUserException& refusal) {
            failures.add(units::UnitDatabaseFileLoadFieldError(path, variable));
            failures.add(refusal);
        }
    }
}

} // namespace

void UnitDatabase::loadUnitDatabase(const std::u16string& path) {
    const std::string shownPath = narrow(path);
    const std::optional<VariableFile> opened = VariableFile::open(path);
    if (!opened) {
        ErrorList failure;
        failure.add(units::UnitDatabaseFileOpenError(shownPath));
        failure.add(units::UnitDatabaseFileUnreadable(VariableFile::openError()));
        failure.throwIfAny();
    }
    const VariableFile& file = *opened;
    const auto add = [](UnitRepository& repository, std::unique_ptr<UnitBase> unit) {
        unit->parseExpressionAndGenerateAST();
        repository.addUnit(std::move(unit));
    };
    ErrorList failures;
    readAll(
        file, "unitSystems", shownPath, failures, [](std::size_t) {},
        [&](const Record& record) { addUnitSystem(unitSystemOf(record)); });
    readAll(
        file, "abstractUnits", shownPath, failures,
        [&](std::size_t count) { abstractUnits_->reserve(count); },
        [&](const Record& record) { add(*abstractUnits_, abstractUnitOf(record)); });
    readAll(
        file, "units", shownPath, failures, [&](std::size_t count) { units_->reserve(count); },
        [&](const Record& record) { add(*units_, unitOf(*this, record)); });
    failures.throwIfAny();
}

} // namespace TVTypeSys
