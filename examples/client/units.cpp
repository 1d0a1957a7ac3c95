// Registers units, prints their canonical forms, and converts between them; the last conversion is
// an error.
#include <tvtypes/units.h>

#include <fnd/except.h>

#include <iostream>

int main() {
    TVTypeSys::UnitTable table;
    const TVTypeSys::UnitBase& torque = *table.getUnit(table.registerUnit("lbf*ft", true));
    const TVTypeSys::UnitBase& newtonMetre = *table.getUnit(table.registerUnit("N*m", true));
    std::cout << torque.display << " is ";
    torque.displayCanonicalForm(std::cout);
    std::cout << " times " << torque.baseScalingFactor.toString() << ", or "
              << torque.getScalingFactorToConvertTo(newtonMetre) << " " << newtonMetre.display
              << '\n';
    try {
        torque.getScalingFactorToConvertTo(*table.getUnit(table.registerUnit("N/m", true)));
    } catch (const fnd::except::IException& error) {
        std::cout << error.what() << '\n';
        return 0;
    }
    return 1;
}
