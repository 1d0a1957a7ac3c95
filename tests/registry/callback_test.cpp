// Callbacks that change the table in the middle of a registration.
#include "table_fixture.h"

#include <boost/make_shared.hpp>

#include <functional>
#include <stdexcept>
#include <string>

using namespace TVTypeSys;

namespace {

using Action = std::function<void(DataTypeTable&, int)>;

// Runs an action with the id of each new type that is named "New".
class Callback : public ClientDataTypeCheckCallback {
  public:
    Callback(DataTypeTable& table, Action action) : table_(table), action_(std::move(action)) {}
    void checkRegisteredType(DataType* dataType, const char* /*blockPath*/) override {
        if (dataType->getName() == std::string("New")) {
            action_(table_, dataType->getId());
            lastId = table_.getNumDataTypes() - 2; // this object must still exist
        }
    }
    void onResetToBuiltin() override {}
    int lastId = 0;

  private:
    DataTypeTable& table_;
    Action action_;
};

int plain(DataTypeTable& table, const char* name) {
    return table.registerDataType(name, clientSource, nullptr);
}

void reject(DataTypeTable& table) { table.checkDataTypeId(-2); }

// The types of clients in order, each with its direct target and the end of its chain: "P New>6>6".
// Checks ids and lookups by name.
std::string listing(DataTypeTable& table) {
    std::string text;
    for (int id = 14; id < table.getNumDataTypes() - 1; ++id) {
        const DataType& type = at(table, id);
        EXPECT_EQ(id, type.getId());
        const int first = table.getDataTypeId(type.getName());
        EXPECT_LE(first, id);
        EXPECT_STREQ(type.getName(), at(table, first).getName());
        EXPECT_LE(-1, type.getSize());
        text += (text.empty() ? "" : " ") + std::string(type.getName());
        if (type.getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
            text += ">" + std::to_string(type.getIdAliasedTo()) + ">" +
                    std::to_string(type.getIdAliasedThruTo());
        }
    }
    return text;
}

} // namespace

TEST(Callback, MayChangeTable) {
    const char* const rejected = "InvalidDataTypeId(-2)";
    const struct {
        const char* action;
        bool replaces; // the table has a type "New" already, with id 15
        Action run;
        const char* error;
        const char* types;
    } cases[] = {
        {"alias", false, [](auto& table, int id) { table.setDataTypeIdAliasedTo(id, 6); }, nullptr,
         "P Q>14>14 New>6>6"},
        {"remove", false, [](auto& table, int id) { table.removeDataType(&at(table, id)); },
         nullptr, "P Q>14>14"},
        {"reset", false, [](auto& table, int) { table.resetToBuiltin(); }, nullptr, ""},
        {"register", false, [](auto& table, int) { plain(table, "Other"); }, nullptr,
         "P Q>14>14 New Other"},
        {"register the same name", false, [](auto& table, int) { plain(table, "New"); }, nullptr,
         "P Q>14>14 New"},
        {"uninstall", false,
         [](auto& table, int) {
             table.setClientDataTypeCheckCallback(nullptr);
             plain(table, "Other");
         },
         nullptr, "P Q>14>14 New Other"},
        {"register and reject", false,
         [](auto& table, int) {
             plain(table, "Other");
             reject(table);
         },
         rejected, "P Q>14>14"},
        {"remove, register and reject", false,
         [](auto& table, int id) {
             table.removeDataType(&at(table, id));
             plain(table, "Other");
             reject(table);
         },
         rejected, "P Q>14>14"},
        {"reset and reject", false,
         [](auto& table, int) {
             table.resetToBuiltin();
             reject(table);
         },
         rejected, ""},
        {"turn types into aliases of new ones and reject", false,
         [](auto& table, int id) {
             const int other = plain(table, "Other");
             table.setDataTypeIdAliasedTo(14, other);
             table.setDataTypeIdAliasedTo(other, id);
             table.setDataTypeIdAliasedTo(id, 3);
             reject(table);
         },
         rejected, "P Q>14>14"},
        {"turn a type into an alias and reject", false,
         [](auto& table, int) {
             table.setDataTypeIdAliasedTo(14, 3);
             reject(table);
         },
         rejected, "P>3>3 Q>14>14"},
        {"replace", true, [](auto&, int) {}, nullptr, "P New Q>15>15"},
        {"replace and register", true, [](auto& table, int) { plain(table, "Other"); }, nullptr,
         "P New Q>15>15 New Other"},
        {"replace by an alias", true,
         [](auto& table, int id) { table.setDataTypeIdAliasedTo(id, 14); }, nullptr,
         "P New>14>14 Q>15>15"},
        {"replace by an alias of itself", true,
         [](auto& table, int id) { table.setDataTypeIdAliasedTo(id, 16); },
         "DataTypeAliasLoop(New, Q)", "P New Q>15>15"},
        {"turn the existing type into an alias", true,
         [](auto& table, int id) { table.setDataTypeIdAliasedTo(15, id); }, nullptr,
         "P New Q>15>15"},
        {"turn the existing type into an alias and reject", true,
         [](auto& table, int id) {
             table.setDataTypeIdAliasedTo(14, 15);
             table.setDataTypeIdAliasedTo(15, id);
             reject(table);
         },
         rejected, "P>15>15 New Q>15>15"},
        {"remove instead of replacing", true,
         [](auto& table, int id) {
             table.removeDataType(&at(table, id));
             plain(table, "Other");
         },
         nullptr, "P New Q>15>15 Other"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.action);
        ReplacingTable replacing;
        DataTypeTable keeping;
        DataTypeTable& table = c.replaces ? replacing : keeping;
        plain(table, "P");
        const int target = c.replaces ? plain(table, "New") : 14;
        table.registerAliasDataType("Q", clientSource, target, nullptr);
        table.setClientDataTypeCheckCallback(boost::make_shared<Callback>(table, c.run));
        int id = 0;
        EXPECT_EQ(c.error == nullptr ? "no error" : c.error,
                  thrownError([&] { id = plain(table, "New"); }));
        EXPECT_EQ(c.error != nullptr ? 0 : c.replaces ? 15 : 16, id);
        EXPECT_EQ(c.types, listing(table));
        table.setClientDataTypeCheckCallback(nullptr);
        plain(table, "Last");
        listing(table);
    }
}

TEST(Callback, OtherExceptionsKeepNewTypes) {
    for (const bool replaces : {false, true}) {
        ReplacingTable table;
        if (replaces) {
            plain(table, "New");
        }
        table.setClientDataTypeCheckCallback(
            boost::make_shared<Callback>(table, [](DataTypeTable& caller, int) {
                plain(caller, "Other");
                throw std::runtime_error("failed");
            }));
        EXPECT_THROW(plain(table, "New"), std::runtime_error);
        EXPECT_EQ(replaces ? "New New Other" : "New Other", listing(table));
    }
}
