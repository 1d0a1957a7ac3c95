#include "services/error_list.h"
#include "services/errors.h"
#include "services/own_messages.h"
#include "services/text.h"
#include "services/variable_file.h"
#include "units/unit_lookup.h"
#include "units/unit_repository.h"

#include <tvtypes/units/database.h>

namespace TVTypeSys {

namespace {

/// A record of a variable. Reading a field that is missing or has the wrong type throws.
class Record {
  public:
    Record(const Records& records, const char* variable, std::size_t index)
        : records_(records), variable_(variable), index_(index) {}

    std::u16string text(const char* field) const {
        return required(records_.text(index_, field), field);
    }
    std::string narrowText(const char* field) const {
        return required(records_.narrowText(index_, field), field);
    }

    const void* address(const char* field) const { return records_.address(index_, field); }

    Rational rational(const char* numerator, const char* denominator, const char* exponent) const {
        // In sequence, so that the first of several errors is reported.
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
            throwError(own::UnitDatabaseFileLoadRecordError(
                variable_, static_cast<std::int64_t>(index_), field));
        }
        return *std::move(value);
    }

    const Records& records_;
    const char* variable_;
    std::size_t index_;
};

UnitSystem readUnitSystem(const Record& record) { return UnitSystem(record.text("Name")); }

std::unique_ptr<UnitBase> readAbstractUnit(const Record& record) {
    const std::u16string name = record.text("Name");
    const std::u16string expression = record.text("Expression");
    const Rational scaling = record.scaling();
    std::unique_ptr<UnitBase> unit(
        UnitFactory::createAbstractUnit(0, name, expression, "", scaling, record.offset(), {}));
    unit->symbol = name;
    return unit;
}

/// Fields that most units have in common with the unit before. They are read again if they differ.
struct CommonFields {
    const void* systemsAddress = nullptr;
    std::vector<std::u16string> systems;
    const void* quantityAddress = nullptr;
    std::u16string quantity;
};

std::unique_ptr<UnitBase> readUnit(const UnitDatabase& database, const Record& record,
                                   CommonFields& common) {
    std::u16string name = record.text("Name");
    std::u16string symbol = record.text("Symbol");
    const std::u16string expression = record.text("Expression");
    const std::u16string aliases = record.text("Alias");
    std::string display = record.narrowText("Display");
    if (const void* address = record.address("UnitSystem");
        address == nullptr || address != common.systemsAddress) {
        common.systems = splitAtCommas(record.text("UnitSystem"));
        common.systemsAddress = address;
    }
    if (const void* address = record.address("AbstractUnit");
        address == nullptr || address != common.quantityAddress) {
        common.quantity = record.text("AbstractUnit");
        common.quantityAddress = address;
    }
    const UnitBase* abstractUnit = UnitLookup::abstract(database, common.quantity).first;
    if (abstractUnit == nullptr) {
        throwError(units::UnitNotInDatabase(narrow(common.quantity)));
    }
    const Rational scaling = record.scaling();
    std::unique_ptr<UnitBase> unit(UnitFactory::createUnit(0, {}, expression, {}, scaling,
                                                           record.offset(), {}, {}, common.systems,
                                                           false, boost::cref(*abstractUnit)));
    unit->name = std::move(name);
    unit->symbol = std::move(symbol);
    unit->display = std::move(display);
    unit->aliases = splitAtCommas(aliases);
    return unit;
}

/// Reads the records of a variable. Records that cause an error are noted and skipped.
template <class Preparation, class Reading>
void readAll(const VariableFile& file, const char* variable, const std::string& path,
             ErrorList& errors, const Preparation& reserve, const Reading& read) {
    const std::optional<Records> records = file.records(variable);
    if (!records) {
        errors.add(units::UnitDatabaseFileLoadMissingFieldError(path, variable));
        return;
    }
    reserve(records->size());
    for (std::size_t i = 0; i < records->size(); ++i) {
        try {
            read(Record(*records, variable, i));
        } catch (const fnd::except::IUserException& error) {
            errors.add(units::UnitDatabaseFileLoadFieldError(path, variable));
            errors.add(error);
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
        failure.add(own::UnitDatabaseFileUnreadable(VariableFile::openError()));
        failure.throwIfAny();
    }
    const VariableFile& file = *opened;
    const auto add = [](UnitRepository& repository, std::unique_ptr<UnitBase> unit) {
        unit->parseExpressionAndGenerateAST();
        repository.addUnit(std::move(unit));
    };
    ErrorList errors;
    CommonFields common;
    readAll(
        file, "unitSystems", shownPath, errors, [](std::size_t) {},
        [&](const Record& record) { addUnitSystem(readUnitSystem(record)); });
    readAll(
        file, "abstractUnits", shownPath, errors,
        [&](std::size_t count) { abstractUnits_->reserve(count); },
        [&](const Record& record) { add(*abstractUnits_, readAbstractUnit(record)); });
    readAll(
        file, "units", shownPath, errors, [&](std::size_t count) { units_->reserve(count); },
        [&](const Record& record) { add(*units_, readUnit(*this, record, common)); });
    if (file.records("compounds")) { // optional
        readAll(
            file, "compounds", shownPath, errors, [](std::size_t) {},
            [&](const Record& record) {
                units_->compoundFactors().add(record.narrowText("Factors"));
            });
    }
    errors.throwIfAny();
}

} // namespace TVTypeSys
