#include "units/unit_names.h"

#include "text/utf16.h"
#include "units/words.h"

#include <tvtypes/units.h>

#include <memory>
#include <unordered_map>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;
using TVTypeSys::UnitDatabase;

/// No name is as long, in bytes.
constexpr std::size_t longestName = 80;

using NamesByFoldedName = std::unordered_map<std::string, std::vector<std::string>>;

/// All names by their text without case. The database is read once, and so is this.
const NamesByFoldedName& namesByFoldedName() {
    static const NamesByFoldedName& names = *[] {
        auto created = std::make_unique<NamesByFoldedName>();
        for (const std::string& word : unitWords()) {
            (*created)[text::foldCase(word)].push_back(word);
        }
        return created.release();
    }();
    return names;
}

const UnitBase* findUnitBase(std::string_view text) {
    const UnitBase::ReferenceSet units =
        UnitDatabase::getUnitDatabase()->getUnit(text::toUtf16(text));
    return units.empty() ? nullptr : &units.begin()->get();
}

} // namespace

std::string findUnitName(std::string_view text) {
    const UnitBase* const unit = findUnitBase(text);
    if (unit == nullptr) {
        return {};
    }
    if (UnitBase::isValidUnitExpr(text::toUtf16(text))) {
        return std::string(text);
    }
    for (const std::u16string* const name : {&unit->symbol, &unit->name}) {
        if (findUnitBase(text::toUtf8(*name)) == unit && UnitBase::isValidUnitExpr(*name)) {
            return text::toUtf8(*name);
        }
    }
    return {};
}

std::string quantityOfUnit(std::string_view name) {
    const auto* const unit = dynamic_cast<const TVTypeSys::Unit*>(findUnitBase(name));
    return unit == nullptr ? "" : text::toUtf8(unit->abstractUnit.get().name);
}

std::string fullNameOfUnit(std::string_view name) {
    const UnitBase* const unit = findUnitBase(name);
    return unit == nullptr ? "" : text::toUtf8(unit->name);
}

std::vector<std::string> caseVariants(std::string_view text) {
    if (text.size() > longestName) {
        return {};
    }
    const auto found = namesByFoldedName().find(text::foldCase(text));
    return found == namesByFoldedName().end() ? std::vector<std::string>() : found->second;
}

} // namespace tvtool::units
