// Registers a text as a unit and converts it to itself and to a metre.
#include <tvtypes/units.h>

#include <fnd/except.h>

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static TVTypeSys::UnitTable table;
    static const int metre = table.registerUnit("m", true);
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        const int id = table.registerUnit(text.c_str(), true);
        const TVTypeSys::UnitBase& unit = *table.getUnit(id);
        unit.getScalingFactorToConvertTo(unit);
        unit.getScalingFactorToConvertTo(*table.getUnit(metre));
    } catch (const fnd::except::IException&) {
        // Most texts are not valid units.
    } catch (const boost::bad_rational&) {
        // Some products wrap to a denominator of 0.
    }
    if (table.getNumUnits() > 1000) {
        table.resetToBuiltin();
        table.registerUnit("m", true);
    }
    return 0;
}
