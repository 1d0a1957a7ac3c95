// Callbacks that change the table in the middle of a registration.
#include "table_fixture.h"

#include <boost/make_shared.hpp>

#include <stdexcept>

using namespace TVTypeSys;

namespace {

int plain(DataTypeTable& table, const std::string& name) {
    return table.registerDataType(name.c_str(), clientSource, nullptr);
}

// Performs steps when a type named "New" is registered: "+A" registers a type; "14>new" makes a
// type an alias.
class ScriptedCallback : public ClientDataTypeCheckCallback {
  public:
    ScriptedCallback(DataTypeTable& table, const char* steps) : table_(table), steps_(steps) {}
    void checkRegisteredType(DataType* dataType, const char* /*blockPath*/) override {
        if (dataType->getName() != std::string("New")) {
            return;
        }
        const int newId = dataType->getId();
        const auto idOf = [&](const std::string& text) {
            return text == "new" ? newId : text == "last" ? last_ : std::stoi(text);
        };
        std::istringstream steps(steps_);
        for (std::string step; steps >> step;) {
            if (const std::size_t arrow = step.find('>'); arrow != std::string::npos) {
                table_.setDataTypeIdAliasedTo(idOf(step.substr(0, arrow)),
                                              idOf(step.substr(arrow + 1)));
            } else if (step[0] == '+') {
                last_ = plain(table_, step.substr(1));
            } else if (step == "remove") {
                table_.removeDataType(&at(table_, newId));
            } else if (step == "reset") {
                table_.resetToBuiltin();
            } else if (step == "uninstall") {
                table_.setClientDataTypeCheckCallback(nullptr);
            } else if (step == "reject") {
                table_.checkDataTypeId(-2);
            } else {
                throw std::runtime_error(step);
            }
        }
        last_ = -1; // this object must still exist
    }
    void onResetToBuiltin() override {}

  private:
    DataTypeTable& table_;
    std::string steps_;
    int last_ = -1;
};

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

TEST(ScriptedCallback, MayChangeTable) {
    const char* const none = "no error";
    const char* const rejected = "InvalidDataTypeId(-2)";
    const struct {
        const char* steps;
        bool replaces; // the table has a type "New" already, with id 15
        const char* error;
        const char* types;
    } cases[] = {
        {"new>6", false, none, "P Q>14>14 New>6>6"},
        {"remove", false, none, "P Q>14>14"},
        {"reset", false, none, ""},
        {"+New", false, none, "P Q>14>14 New"},
        {"uninstall +Other", false, none, "P Q>14>14 New Other"},
        {"+Other reject", false, rejected, "P Q>14>14"},
        {"remove +Other reject", false, rejected, "P Q>14>14"},
        {"reset reject", false, rejected, ""},
        {"+Other 14>last last>new new>3 reject", false, rejected, "P Q>14>14"},
        {"14>3 reject", false, rejected, "P>3>3 Q>14>14"},
        {"+Other", true, none, "P New Q>15>15 New Other"},
        {"new>14", true, none, "P New>14>14 Q>15>15"},
        {"new>16", true, "DataTypeAliasLoop(New, Q)", "P New Q>15>15"},
        {"15>new", true, none, "P New Q>15>15"},
        {"14>15 15>new reject", true, rejected, "P>15>15 New Q>15>15"},
        {"remove +Other", true, none, "P New Q>15>15 Other"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.steps);
        ReplacingTable replacing;
        DataTypeTable keeping;
        DataTypeTable& table = c.replaces ? replacing : keeping;
        plain(table, "P");
        const int target = c.replaces ? plain(table, "New") : 14;
        table.registerAliasDataType("Q", clientSource, target, nullptr);
        table.setClientDataTypeCheckCallback(boost::make_shared<ScriptedCallback>(table, c.steps));
        int id = 0;
        EXPECT_ERROR(c.error, id = plain(table, "New"));
        EXPECT_EQ(c.error != none ? 0 : c.replaces ? 15 : 16, id);
        EXPECT_EQ(c.types, listing(table));
        table.setClientDataTypeCheckCallback(nullptr);
        plain(table, "Last");
        listing(table);
    }
}

TEST(ScriptedCallback, OtherExceptionsKeepNewTypes) {
    for (const bool replaces : {false, true}) {
        ReplacingTable table;
        if (replaces) {
            plain(table, "New");
        }
        table.setClientDataTypeCheckCallback(
            boost::make_shared<ScriptedCallback>(table, "+Other failed"));
        EXPECT_THROW(plain(table, "New"), std::runtime_error);
        EXPECT_EQ(replaces ? "New New Other" : "New Other", listing(table));
    }
}
