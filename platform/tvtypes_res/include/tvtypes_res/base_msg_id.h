/// \file
/// Base class of messages: an id and the arguments of its sentence.
#pragma once

#include <fnd/export.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace msgcore {

/// A message with its arguments. Each message id is a derived class; one that is not in the
/// catalogue overrides text().
class TV_PLATFORM_API BaseMsgID {
  public:
    virtual ~BaseMsgID();
    BaseMsgID(const BaseMsgID&) = delete;
    BaseMsgID& operator=(const BaseMsgID&) = delete;

    /// Returns the full id, such as TorvaneTypes::general::InvalidDataTypeId.
    const std::string& id() const { return id_; }

    /// Returns the arguments in order, numbers in decimal.
    const std::vector<std::string>& arguments() const { return arguments_; }

    /// Returns the catalogue's sentence with the arguments filled in.
    virtual std::string text() const;

  protected:
    /// Takes the full id and the texts of the arguments.
    BaseMsgID(std::string_view id, std::vector<std::string> arguments);

    /// \name Conversion of arguments
    /// @{

    /// Returns the text of an argument.
    static std::string argumentText(std::int64_t number) { return std::to_string(number); }
    static const std::string& argumentText(const std::string& text) { return text; }
    /// @}

  private:
    std::string id_;
    std::vector<std::string> arguments_;
};

template <class Derived, class Signature>
class Message;

/// Base of a message class: `Derived::ID` is its full id, `Arguments` are the types of its
/// arguments.
template <class Derived, class... Arguments>
class Message<Derived, void(Arguments...)> : public BaseMsgID {
  public:
    /// Number of arguments of the sentence.
    static constexpr std::size_t argumentCount = sizeof...(Arguments);

    /// Converts the arguments to texts.
    explicit Message(const Arguments&... arguments)
        : BaseMsgID(Derived::ID, {argumentText(arguments)...}) {}
};

} // namespace msgcore
