#include "messages_json.h"

#include <tvtypes_res/catalogue.h>
#include <tvtypes_res/messages.h>

#include <boost/json/parse.hpp>
#include <unicode/messagepattern.h>
#include <unicode/msgfmt.h>

#include <initializer_list>
#include <memory>
#include <set>

namespace tvtypes_res {

namespace {

/// Text of a message without a usable pattern: the id and the arguments.
std::string fallbackText(std::string_view id, const std::vector<std::string>& arguments) {
    std::string text(id);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        text += i == 0 ? ": " : ", ";
        text += arguments[i];
    }
    return text;
}

/// Returns the numbers of the arguments of a pattern; no value if it is not a pattern with numbered
/// arguments.
std::optional<std::set<std::size_t>> argumentsUsed(const std::string& pattern) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::MessagePattern parsed(icu::UnicodeString::fromUTF8(pattern), nullptr, status);
    if (U_FAILURE(status) || parsed.hasNamedArguments()) {
        return std::nullopt;
    }
    std::set<std::size_t> used;
    for (int32_t i = 0; i < parsed.countParts(); ++i) {
        const icu::MessagePattern::Part& part = parsed.getPart(i);
        if (part.getType() == UMSGPAT_PART_TYPE_ARG_NUMBER) {
            used.insert(static_cast<std::size_t>(part.getValue()));
        }
    }
    return used;
}

} // namespace

const std::vector<MessageSignature>& allMessages() {
#define TVTYPES_SIGNATURE(space, name, signature)                                                  \
    {TorvaneTypes::space::name::ID, TorvaneTypes::space::name::argumentCount},
    // Neither this nor the catalogue is ever destroyed: destructors of static objects may fail.
    static const auto& messages =
        *std::make_unique<const std::vector<MessageSignature>>(
             std::initializer_list<MessageSignature>{TVTYPES_MESSAGE_TABLE(TVTYPES_SIGNATURE)})
             .release();
#undef TVTYPES_SIGNATURE
    return messages;
}

Catalogue::Catalogue(std::string_view json) {
    boost::json::error_code error;
    const boost::json::value root =
        boost::json::parse(boost::json::string_view(json.data(), json.size()), error);
    if (error || !root.is_object()) {
        return;
    }
    for (const auto& [space, messages] : root.get_object()) {
        if (!messages.is_object()) {
            continue;
        }
        for (const auto& [name, pattern] : messages.get_object()) {
            if (const boost::json::string* text = pattern.if_string()) {
                std::string id = "TorvaneTypes::";
                id.append(space.data(), space.size()).append("::").append(name.data(), name.size());
                patterns_.emplace(std::move(id), std::string(text->data(), text->size()));
            }
        }
    }
}

const Catalogue& Catalogue::builtIn() {
    static const auto& catalogue = *std::make_unique<const Catalogue>(messagesJson).release();
    return catalogue;
}

std::string Catalogue::text(std::string_view id, const std::vector<std::string>& arguments) const {
    const auto found = patterns_.find(id);
    if (found == patterns_.end()) {
        return fallbackText(id, arguments);
    }
    const std::optional<std::set<std::size_t>> used = argumentsUsed(found->second);
    if (!used || (!used->empty() && *used->rbegin() >= arguments.size())) {
        return fallbackText(id, arguments);
    }
    std::vector<icu::Formattable> values;
    values.reserve(arguments.size());
    for (const std::string& argument : arguments) {
        values.emplace_back(icu::UnicodeString::fromUTF8(argument));
    }
    UErrorCode status = U_ZERO_ERROR;
    icu::MessageFormat format(icu::UnicodeString::fromUTF8(found->second), icu::Locale::getRoot(),
                              status);
    icu::UnicodeString sentence;
    icu::FieldPosition ignored(icu::FieldPosition::DONT_CARE);
    format.format(values.data(), static_cast<int32_t>(values.size()), sentence, ignored, status);
    if (U_FAILURE(status)) {
        return fallbackText(id, arguments);
    }
    std::string text;
    sentence.toUTF8String(text);
    return text;
}

std::optional<std::string> Catalogue::faultOf(const MessageSignature& message) const {
    const auto found = patterns_.find(message.id);
    if (found == patterns_.end()) {
        return "the catalogue has no entry";
    }
    const std::optional<std::set<std::size_t>> used = argumentsUsed(found->second);
    if (!used) {
        return "the entry is not a message pattern with numbered arguments";
    }
    std::set<std::size_t> expected;
    for (std::size_t i = 0; i < message.argumentCount; ++i) {
        expected.insert(i);
    }
    if (*used != expected) {
        return "the entry does not use exactly the arguments of the message";
    }
    return std::nullopt;
}

std::vector<std::string> Catalogue::ids() const {
    std::vector<std::string> ids;
    for (const auto& entry : patterns_) {
        ids.push_back(entry.first);
    }
    return ids;
}

} // namespace tvtypes_res
