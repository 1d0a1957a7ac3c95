#include "model/names.h"

#include "text/utf8.h"

#include <algorithm>

namespace tvtool::model {

namespace {

using TVTypeSys::DataTypeTable;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || isDigit(c);
}

/// Makes an identifier, with an underscore for each other character: Modelica.SIunits.Voltage gives
/// Modelica_SIunits_Voltage.
std::string makeIdentifier(std::string_view original) {
    std::string name(original);
    std::erase_if(name, text::isContinuationByte);
    std::ranges::replace_if(
        name, [](char c) { return !isLetterOrDigit(c); }, '_');
    // The beginning decides that a name is a fixed-point name, so a suffix would not change that.
    if (name.empty() || isDigit(name.front()) ||
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

std::string Names::freeName(std::string_view original) {
    std::string name(original);
    if (isFree(name)) {
        return name;
    }
    const std::string identifier = makeIdentifier(original);
    for (name = identifier; !isFree(name) || declared_.contains(name);) {
        int& suffix = nextSuffix_.try_emplace(identifier, 2).first->second;
        name = identifier + '_' + std::to_string(suffix++);
    }
    return name;
}

} // namespace tvtool::model
