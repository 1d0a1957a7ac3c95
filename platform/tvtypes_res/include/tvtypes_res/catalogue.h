/// \file
/// Message catalogue: one sentence for each message id, as an ICU message pattern.
#pragma once

#include <fnd/export.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvtypes_res {

/// A row of the table of messages.
struct MessageSignature {
    std::string_view id;       ///< full id
    std::size_t argumentCount; ///< number of arguments of the sentence
};

/// Returns all messages, in the order of the table.
TV_PLATFORM_API const std::vector<MessageSignature>& allMessages();

/// Sentences by message id. An invalid catalogue is no error: a message without a usable sentence
/// is formatted as its id and arguments.
class TV_PLATFORM_API Catalogue {
  public:
    /// Parses a catalogue.
    /// \param json an object of objects: namespace, name of the message, pattern with {0}, {1} and
    /// so on.
    ///             Anything else is ignored
    explicit Catalogue(std::string_view json);

    /// Returns the catalogue that is compiled in.
    static const Catalogue& builtIn();

    /// Returns the sentence of a message with its arguments filled in. Without a usable pattern:
    /// the id, a colon and the arguments, separated by commas.
    std::string text(std::string_view id, const std::vector<std::string>& arguments) const;

    /// Returns what is wrong with the entry of a message: it is missing, is not a pattern, or does
    /// not use exactly the arguments of the message. No value if it is valid.
    std::optional<std::string> faultOf(const MessageSignature& message) const;

    /// Returns the ids that have an entry, sorted.
    std::vector<std::string> ids() const;

  private:
    std::map<std::string, std::string, std::less<>> patterns_;
};

} // namespace tvtypes_res
