#include "support.h"

#include "model/model.h"

#include <tvtypes/units.h>

#include <fnd/filesystem.h>

#include <gmock/gmock.h>

namespace tvtool {

namespace {

using testing::HasSubstr;

constexpr const char* description =
    "<fmiModelDescription fmiVersion=\"3.0\" modelName=\"M\" instantiationToken=\"t\" "
    "variableNamingConvention=\"structured\"><CoSimulation modelIdentifier=\"M\"/><UnitDefinitions>"
    "<Unit name=\"m\"><BaseUnit m=\"1\"/></Unit><Unit name=\"N.m\"/></UnitDefinitions>"
    "<TypeDefinitions><Float64Type name=\"Torque\" unit=\"N.m\"/></TypeDefinitions><ModelVariables>"
    "<Float64 name=\"a.x\" valueReference=\"1\" unit=\"m\"/>"
    "<Float64 name=\"b.x\" valueReference=\"2\" unit=\"N.m\"/>"
    "<Float64 name=\"c.x\" valueReference=\"3\" unit=\"m\"/>"
    "<Float64 name=\"d.x\" valueReference=\"4\"/>"
    "<Float64 name=\"e.x\" valueReference=\"5\" declaredType=\"Torque\"/>"
    "<Float64 name=\"f.x\" valueReference=\"6\" declaredType=\"Torque\" unit=\"m\"/>"
    "</ModelVariables><ModelStructure/></fmiModelDescription>";

TEST(ModelUnits, AreSetInStructElements) {
    model::Model model(textSource(description), {});
    EXPECT_TRUE(model.findings.all().empty());
    const int metre = model.units.all().at(0).id;
    const int newtonMetre = model.units.all().at(1).id;
    EXPECT_NE(metre, newtonMetre);
    const auto typeAt = [&](const char* name) { return model.structs.find(name)->id; };
    const auto unitAt = [&](const char* name) {
        auto& type =
            static_cast<StructDataType&>(model::typeRecord(model.types.table(), typeAt(name)));
        return type.getElements()[0]->unitId;
    };
    EXPECT_EQ(unitAt("a"), metre);
    EXPECT_EQ(unitAt("b"), newtonMetre);
    EXPECT_EQ(unitAt("d"), model::inheritedUnit);
    EXPECT_EQ(unitAt("e"), newtonMetre);
    EXPECT_EQ(unitAt("f"), metre);
    // A difference in units alone makes two types.
    EXPECT_EQ(typeAt("a"), typeAt("c"));
    EXPECT_NE(typeAt("a"), typeAt("b"));
}

/// Hides the unit database.
class WithoutDatabase {
  public:
    WithoutDatabase() { moveTo(u"/nowhere"); }
    ~WithoutDatabase() { moveTo(u""); }

  private:
    static void moveTo(const char16_t* path) {
        TVTypeSys::UnitDatabase::getUnitDatabase()->clearAll();
        fnd::filesystem::set_install_path(path);
    }
};

TEST(ModelUnits, NeedTheUnitDatabase) {
    const TemporaryFolder folder;
    const std::string file = folder.write("m.xml", description);
    {
        const WithoutDatabase nowhere;
        expectRejection(run({"unit", "m"}), "/nowhere/");
        TVTypeSys::UnitDatabase::getUnitDatabase()->clearAll();
        const Outcome inspection = run({"inspect", file});
        EXPECT_EQ(inspection.status, 0);
        EXPECT_THAT(inspection.out, HasSubstr("units are not looked at"));
    }
    EXPECT_EQ(run({"unit", "m"}).status, 0);
}

} // namespace

} // namespace tvtool
