#include "record.h"

#include "fault.h"

#include <boost/json/value.hpp>
#include <fmt/format.h>

namespace tvdata {

namespace {

std::string nonEmptyText(const boost::json::value& value, std::string_view field) {
    if (!value.is_string() || value.get_string().empty()) {
        throw Fault(fmt::format("\"{}\" is not a text or is empty", field));
    }
    return std::string(value.get_string());
}

} // namespace

std::vector<std::string> splitList(std::string_view text) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        const std::string_view part = text.substr(0, comma);
        if (part.empty() || part.starts_with(' ') || part.ends_with(' ')) {
            throw Fault("a list has an empty part, or blanks beside a comma");
        }
        parts.emplace_back(part);
        if (comma == std::string_view::npos) {
            break;
        }
        text.remove_prefix(comma + 1);
        if (text.empty()) {
            throw Fault("a list ends in a comma");
        }
    }
    return parts;
}

std::string Record::text(std::string_view field) {
    const boost::json::value* const value = find(field);
    if (value == nullptr) {
        throw Fault(fmt::format("\"{}\" is missing", field));
    }
    return nonEmptyText(*value, field);
}

std::optional<std::string> Record::optionalText(std::string_view field) {
    const boost::json::value* const value = find(field);
    return value == nullptr ? std::nullopt : std::optional(nonEmptyText(*value, field));
}

std::vector<std::string> Record::list(std::string_view field) {
    return splitList(optionalText(field).value_or(""));
}

std::optional<int> Record::optionalInteger(std::string_view field) {
    const boost::json::value* const value = find(field);
    if (value == nullptr) {
        return std::nullopt;
    }
    constexpr int limit = 1000;
    if (!value->is_int64() || value->get_int64() < -limit || value->get_int64() > limit) {
        throw Fault(fmt::format("\"{}\" is not an integer from -1000 to 1000", field));
    }
    return static_cast<int>(value->get_int64());
}

bool Record::flag(std::string_view field) {
    const boost::json::value* const value = find(field);
    if (value != nullptr && !value->is_bool()) {
        throw Fault(fmt::format("\"{}\" is neither true nor false", field));
    }
    return value != nullptr && value->get_bool();
}

std::vector<std::string> Record::listWithin(std::string_view field, std::string_view key) {
    const boost::json::value* const value = find(field);
    if (value == nullptr) {
        return {};
    }
    if (!value->is_object()) {
        throw Fault(fmt::format("\"{}\" is not an object", field));
    }
    const boost::json::value* const member = value->get_object().if_contains(key);
    return member == nullptr ? std::vector<std::string>() : splitList(nonEmptyText(*member, key));
}

void Record::finish() const {
    for (const auto& field : fields_) {
        if (!read_.contains(std::string_view(field.key()))) {
            throw Fault(fmt::format("unknown field \"{}\"", std::string_view(field.key())));
        }
    }
}

const boost::json::value* Record::find(std::string_view field) {
    read_.emplace(field);
    return fields_.if_contains(field);
}

} // namespace tvdata
