/// \file
/// The catalogue: for every message id one sentence, as an ICU message pattern.
#pragma once

#include <fnd/export.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvtypes_res {

/// What the table of messages says of one message.
struct MessageSignature {
    std::string_view id;
    std::size_t argumentCount;
};

/// All messages, in the order of the table.
TV_PLATFORM_API const std::vector<MessageSignature>& allMessages();

/// Sentences by message id. Reading and formatting never fail: what a faulty catalogue cannot say
/// is said as the id and the arguments.
class TV_PLATFORM_API Catalogue {
  public:
    /// \param json an object of objects: the space, the message's name, the pattern with {0}, {1}
    ///             and so on. A text of another form gives an empty catalogue.
    explicit Catalogue(std::string_view json);

    /// The catalogue that is compiled in.
    static const Catalogue& builtIn();

    /// The sentence of the message with its arguments filled in. Where there is no usable pattern:
    /// the id, a colon and the arguments, separated by commas.
    std::string text(std::string_view id, const std::vector<std::string>& arguments) const;

    /// What is wrong with the entry of one message, if anything: it is missing, is no pattern, or
    /// does not use exactly the arguments that the message has.
    std::optional<std::string> faultOf(const MessageSignature& message) const;

    /// The ids that have an entry, sorted.
    std::vector<std::string> ids() const;

  private:
    std::map<std::string, std::string, std::less<>> patterns_;
};

} // namespace tvtypes_res
