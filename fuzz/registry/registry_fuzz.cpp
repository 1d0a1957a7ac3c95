// Any sequence of operations on a table of types, with a client's hook that throws or changes the
// table. After each operation ids, names and alias chains agree; an error changes nothing.
#include "support/require.h"

#include <tvtypes/datatypetable.h>

#include <fnd/except.h>
#include <fuzzer/FuzzedDataProvider.h>

#include <boost/make_shared.hpp>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using namespace TVTypeSys;
using fuzzing::require;

constexpr auto clientSource = static_cast<DataTypeSource>(2);
constexpr int noType = -10;
constexpr int firstClientId = 14;

/// A table in which types of a client replace others of the same name, on request.
class Table : public DataTypeTable {
  public:
    bool replaces = false;

    bool shortCircuitRegistration(DataTypeSource source) const override {
        return !replaces || source != clientSource;
    }
    int lastId() const { return getNumDataTypes() - 2; }
    DataType& at(int id) { return *getDataTypeAt(static_cast<std::size_t>(id + 1)); }
    const DataType& at(int id) const { return *getDataTypeAt(static_cast<std::size_t>(id + 1)); }
};

/// What a client sees of a type: name, target of an alias, size, storage and qualifier.
using Row = std::tuple<std::string, int, int, int, DataTypeQualifier>;

std::vector<Row> rows(const Table& table) {
    std::vector<Row> all;
    for (int id = -1; id <= table.lastId(); ++id) {
        const DataType& type = table.at(id);
        all.emplace_back(type.getName(), type.getIdAliasedTo(), type.getSize(), type.getStorageId(),
                         type.getType());
    }
    return all;
}

/// A hook that does what the next byte selects.
class Hook : public ClientDataTypeCheckCallback {
  public:
    Hook(Table& table, FuzzedDataProvider& input) : table_(table), input_(input) {}

    void checkRegisteredType(DataType* type, const char* /*blockPath*/) override {
        if (isRunning_) {
            return;
        }
        isRunning_ = true;
        const int id = type->getId();
        const int action = input_.ConsumeIntegralInRange(0, 7);
        if (action == 1 || action == 2) {
            // What a hook does to earlier types is not undone, so it replaces none here.
            const bool replaces = std::exchange(table_.replaces, false);
            table_.registerDataType("Nested", clientSource, nullptr);
            table_.replaces = replaces;
        }
        if (action == 3) {
            table_.setDataTypeIdAliasedTo(id, input_.ConsumeIntegralInRange(-12, 16));
        }
        if (action == 4) {
            table_.setClientDataTypeCheckCallback({});
        }
        isRunning_ = false;
        if (action == 2 || action == 5) {
            table_.checkDataTypeId(table_.getNumDataTypes()); // throws
        }
    }
    void onResetToBuiltin() override {}

  private:
    Table& table_;
    FuzzedDataProvider& input_;
    bool isRunning_ = false;
};

void checkConsistency(const Table& table) {
    for (int id = -1; id <= table.lastId(); ++id) {
        const DataType& type = table.at(id);
        require(type.getId() == id);
        int first = -1;
        while (std::string(table.at(first).getName()) != type.getName()) {
            ++first;
        }
        require(table.getDataTypeId(type.getName()) == first);
        int target = id;
        for (int steps = 0; table.getDataTypeIdAliasedTo(target) != noType; ++steps) {
            require(steps < table.getNumDataTypes());
            target = table.getDataTypeIdAliasedTo(target);
            require(table.isDataTypeIdValid(target));
            require(table.alreadyAliasedToDirectlyOrIndirectly(id, target));
        }
        require(table.isDataTypeIdValid(table.getDataTypeAliasedThruTo(id)->getId()));
        static_cast<void>(table.getDTACompliantString(id));
    }
}

bool isAliased(const Table& table, int id) {
    for (int other = 0; other <= table.lastId(); ++other) {
        if (table.getDataTypeIdAliasedTo(other) == id) {
            return true;
        }
    }
    return false;
}

/// Calls the operations that check their id.
void lookUp(const Table& table, int id) {
    require(table.isDataTypeIdValid(id) == (id >= -1 && id <= table.lastId()));
    static_cast<void>(table.isEnumType(id));
    static_cast<void>(table.IsFixptDTNotScaledDouble(id));
    static_cast<void>(table.getDataTypeLoggingId(id));
    static_cast<void>(table.getDataTypeProperties("", id));
    table.checkDataTypeId(id);
}

void step(Table& table, FuzzedDataProvider& input) {
    const std::string name =
        input.PickValueInArray({"A", "B", "C", "D", "double", "auto", "sfix16_En3", "flts32",
                                "boolean", "", "2", "rtt_0"});
    const int anyId = input.ConsumeIntegralInRange(-12, table.lastId() + 3);
    const int id = table.lastId() < firstClientId
                       ? noType
                       : input.ConsumeIntegralInRange(firstClientId, table.lastId());
    const auto source = input.ConsumeBool() ? clientSource : DataTypeSourceUnchecked;
    // Built-in types are not replaced.
    table.replaces = input.ConsumeBool() && table.getDataTypeId(name.c_str()) >= firstClientId;
    switch (input.ConsumeIntegralInRange(0, 9)) {
    case 0:
        table.registerDataType(name.c_str(), source, "");
        break;
    case 1:
        table.registerAliasDataType(name.c_str(), source, anyId, nullptr);
        break;
    case 2:
        table.registerStructDataType(name.c_str(), source, nullptr);
        break;
    case 3:
        if (id != noType) {
            table.setDataTypeIdAliasedTo(id, anyId);
        }
        break;
    case 4:
        if (id != noType) {
            table.setDataTypeStorageId(id, input.ConsumeBool() ? anyId : 1'000'000);
        }
        break;
    case 5:
        if (id != noType) {
            table.at(id).setSize(input.ConsumeIntegralInRange(-1, 16));
        }
        break;
    case 6:
        if (id != noType && !isAliased(table, table.lastId())) {
            table.removeDataType(&table.at(table.lastId()));
        }
        break;
    case 7:
        lookUp(table, anyId);
        break;
    case 8:
        if (input.ConsumeIntegralInRange(0, 9) == 0) {
            table.resetToBuiltin();
        }
        break;
    default:
        table.setClientDataTypeCheckCallback(boost::make_shared<Hook>(table, input));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    Table table;
    while (input.remaining_bytes() > 0) {
        const std::vector<Row> before = rows(table);
        try {
            step(table, input);
        } catch (const fnd::except::IException&) {
            require(rows(table) == before);
        }
        checkConsistency(table);
    }
    return 0;
}
