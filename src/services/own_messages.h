/// \file
/// Messages of this library that a host's catalogue does not have. They bring their sentences.
#pragma once

#include <tvtypes_res/base_msg_id.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TVTypeSys {

/// A message with a sentence of its own.
class OwnMessage : public msgcore::BaseMsgID {
  public:
    ~OwnMessage() override;
    std::string text() const override { return sentence_; }

  protected:
    /// Takes the full id, the texts of the arguments, and the sentence with the arguments filled
    /// in.
    OwnMessage(std::string_view id, std::vector<std::string> arguments, std::string sentence);

  private:
    std::string sentence_;
};

/// Messages by name; the id of InvalidStructIndex is TorvaneTypes::general::InvalidStructIndex.
namespace own {

/// An id of a type that is not a struct. Arguments: the id. The message has the id of the
/// catalogue's InvalidDataTypeId, whose sentence is about ids without a type.
class NotAStruct final : public OwnMessage {
  public:
    NotAStruct(const std::string& type, std::int64_t id);
};

/// No id is left for another entry. Argument: the greatest id. Like NotAStruct.
class NoIdLeft final : public OwnMessage {
  public:
    explicit NoIdLeft(std::int64_t greatest);
};

/// An index of a view. Arguments: name of the struct type, index.
class InvalidStructIndex final : public OwnMessage {
  public:
    InvalidStructIndex(const std::string& type, std::int64_t index);
};

/// TorvaneTypes::Dimensions. Arguments: index from 0, number of dimensions.
class InvalidDimensionIndex final : public OwnMessage {
  public:
    InvalidDimensionIndex(std::int64_t index, std::int64_t count);
};

/// TorvaneTypes::Unit, after UnitDatabaseFileOpenError. Argument: the reason.
class UnitDatabaseFileUnreadable final : public OwnMessage {
  public:
    explicit UnitDatabaseFileUnreadable(const std::string& reason);
};

/// TorvaneTypes::Unit, after UnitDatabaseFileLoadFieldError. Arguments: variable, index of the
/// record from 0, field.
class UnitDatabaseFileLoadRecordError final : public OwnMessage {
  public:
    UnitDatabaseFileLoadRecordError(const std::string& variable, std::int64_t index,
                                    const std::string& field);
};

/// A text that is not an expression of units in the database. Argument: the text. The message has
/// an id of the catalogue, whose own sentence is about other texts too.
class InvalidUnit final : public OwnMessage {
  public:
    /// \param id      without "TorvaneTypes::"
    /// \param unknown a name in the text that no unit has; "" if the text is not an expression
    InvalidUnit(const std::string& id, const std::string& text, const std::string& unknown);
};

} // namespace own

} // namespace TVTypeSys
