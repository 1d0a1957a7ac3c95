#include "model/names.h"

#include "text/utf8.h"

#include <algorithm>

namespace tvtool::model {

namespace {

using TVTypeSys::DataTypeTable;

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

/// An identifier that looks like the name: Modelica.SIunits.Voltage gives
/// Modelica_SIunits_Voltage, a character an underscore.
std::string identifierLike(std::string_view original) {
    std::string name(original);
    std::erase_if(name, text::isContinuationByte);
    std::ranges::replace_if(
        name, [](char c) { return !isLetterOrDigit(c); }, '_');
    // What a name of fixed-point form means is settled by its beginning, so a suffix would not do.
    if (name.empty() || (name.front() >= '0' && name.front() <= '9') ||
        DataTypeTable::isInstrinsicFixptName(name.c_str(), nullptr)) {
        name.insert(0, "type_");
    }
    return name;
}

} // namespace

bool Names::isFree(const std::string& name) const {
    return DataTypeTable::isAValidDataType(name.c_str()) &&
           !DataTypeTable::isInstrinsicFixptName(name.c_str(), nullptr) &&
           table_.getDataTypeId(name.c_str()) == INVALID_DATA_TYPE_ID;
}

std::string Names::nameFor(std::string_view original) {
    std::string name(original);
    if (isFree(name)) {
        return name;
    }
    name = identifierLike(original);
    if (isFree(name) && !declared_.contains(name)) {
        return name;
    }
    int& suffix = nextSuffix_.try_emplace(name, 2).first->second;
    std::string made;
    do {
        made = name + '_' + std::to_string(suffix++);
    } while (!isFree(made) || declared_.contains(made));
    return made;
}

} // namespace tvtool::model
