#include "services/text.h"

#include <tvtypes/units/database.h>

#include <ostream>

namespace TVTypeSys {

UnitSystem::UnitSystem(const std::u16string& name) : name_(name) {}
UnitSystem::UnitSystem(const UnitSystem& other) = default;
UnitSystem::~UnitSystem() = default;

const std::u16string& UnitSystem::getName() const { return name_; }

void UnitSystem::print(std::ostream& stream) const {
    stream << "Unit System: '" << narrow(getName()) << "'" << std::endl;
}

bool UnitSystem::isValidUnitSystemName(const std::u16string& text) {
    return UnitDatabase::getUnitDatabase()->getUnitSystem(text) != nullptr;
}

bool UnitSystem::isValidStringForUnitSystemName(const std::u16string& text) {
    return isAlphanumeric(text);
}

std::ostream& operator<<(std::ostream& stream, const UnitSystem& system) {
    system.print(stream);
    return stream;
}

} // namespace TVTypeSys
