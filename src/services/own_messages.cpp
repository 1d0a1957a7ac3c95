#include "services/own_messages.h"

#include <utility>

namespace TVTypeSys {

OwnMessage::OwnMessage(std::string_view id, std::vector<std::string> arguments,
                       std::string sentence)
    : BaseMsgID(id, std::move(arguments)), sentence_(std::move(sentence)) {}

OwnMessage::~OwnMessage() = default;

namespace {

std::string invalidUnitSentence(const std::string& text, const std::string& unknown) {
    const bool beginsWithDigit = !unknown.empty() && unknown[0] >= '0' && unknown[0] <= '9';
    std::string sentence = "\"";
    if (unknown.empty() || beginsWithDigit) {
        sentence.append(text).append("\" is not a unit expression. A unit expression consists of "
                                     "names, powers with ^ and whole numbers, *, / and "
                                     "parentheses, such as kg*m/s^2.");
        return sentence;
    }
    sentence.append(unknown);
    if (unknown != text) {
        sentence.append("\" in \"").append(text);
    }
    sentence.append("\" is not the name, symbol or alias of a unit in the unit database. Names are "
                    "case-sensitive.");
    return sentence;
}

} // namespace

namespace own {

NotAStruct::NotAStruct(const std::string& type, std::int64_t id)
    : OwnMessage("TorvaneTypes::general::InvalidDataTypeId", {std::to_string(id)},
                 "The data type \"" + type + "\" with the id " + std::to_string(id) +
                     " is not a struct type.") {}

NoIdLeft::NoIdLeft(std::int64_t greatest)
    : OwnMessage("TorvaneTypes::general::InvalidDataTypeId", {std::to_string(greatest)},
                 "The greatest id, " + std::to_string(greatest) +
                     ", is in use, so that there is none for another entry.") {}

InvalidStructIndex::InvalidStructIndex(const std::string& type, std::int64_t index)
    : OwnMessage("TorvaneTypes::general::InvalidStructIndex", {type, std::to_string(index)},
                 "The index " + std::to_string(index) + " is out of range for the struct type \"" +
                     type + "\". Indices count from 0.") {}

InvalidDimensionIndex::InvalidDimensionIndex(std::int64_t index, std::int64_t count)
    : OwnMessage("TorvaneTypes::Dimensions::InvalidDimensionIndex",
                 {std::to_string(index), std::to_string(count)},
                 "The dimension index " + std::to_string(index) + " is out of range: there are " +
                     std::to_string(count) + " dimensions, counted from 0.") {}

UnitDatabaseFileUnreadable::UnitDatabaseFileUnreadable(const std::string& reason)
    : OwnMessage("TorvaneTypes::Unit::UnitDatabaseFileUnreadable", {reason},
                 "The reason is: " + reason + ".") {}

UnitDatabaseFileLoadRecordError::UnitDatabaseFileLoadRecordError(const std::string& variable,
                                                                 std::int64_t index,
                                                                 const std::string& field)
    : OwnMessage("TorvaneTypes::Unit::UnitDatabaseFileLoadRecordError",
                 {variable, std::to_string(index), field},
                 "The field \"" + field + "\" of record " + std::to_string(index) + " of \"" +
                     variable +
                     "\", counted from 0, is missing or has the wrong type. A text is a string, a "
                     "number is within 32 bits.") {}

InvalidUnit::InvalidUnit(const std::string& id, const std::string& text, const std::string& unknown)
    : OwnMessage("TorvaneTypes::" + id, {text}, invalidUnitSentence(text, unknown)) {}

} // namespace own

} // namespace TVTypeSys
