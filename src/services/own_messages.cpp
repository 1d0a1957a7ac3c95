#include "services/own_messages.h"

#include <utility>

namespace TVTypeSys {

OwnMessage::OwnMessage(std::string_view id, std::vector<std::string> arguments,
                       std::string sentence)
    : BaseMsgID(id, std::move(arguments)), sentence_(std::move(sentence)) {}

OwnMessage::~OwnMessage() = default;

namespace own {

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

} // namespace own

} // namespace TVTypeSys
