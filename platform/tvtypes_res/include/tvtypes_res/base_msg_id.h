/// \file
/// What every message id is: the full id and the arguments of its sentence.
#pragma once

#include <fnd/export.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace msgcore {

/// A message with its arguments. Each id is a class derived from this one.
class TV_PLATFORM_API BaseMsgID {
  public:
    virtual ~BaseMsgID();
    BaseMsgID(const BaseMsgID&) = delete;
    BaseMsgID& operator=(const BaseMsgID&) = delete;

    /// The full id, such as TorvaneTypes::general::InvalidDataTypeId.
    const std::string& id() const { return id_; }

    /// The arguments in order; numbers in decimal.
    const std::vector<std::string>& arguments() const { return arguments_; }

    /// The catalogue's sentence with the arguments filled in.
    std::string text() const;

  protected:
    BaseMsgID(std::string_view id, std::vector<std::string> arguments);

    static std::string argumentText(std::int64_t number) { return std::to_string(number); }
    static const std::string& argumentText(const std::string& text) { return text; }

  private:
    std::string id_;
    std::vector<std::string> arguments_;
};

template <class Derived, class Signature>
class Message;

/// The constructor of a message class: the types of `Signature` are the types of its arguments.
template <class Derived, class... Arguments>
class Message<Derived, void(Arguments...)> : public BaseMsgID {
  public:
    static constexpr std::size_t argumentCount = sizeof...(Arguments);

    explicit Message(const Arguments&... arguments)
        : BaseMsgID(Derived::ID, {argumentText(arguments)...}) {}
};

} // namespace msgcore
