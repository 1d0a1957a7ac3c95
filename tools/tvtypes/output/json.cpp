#include "output/json.h"

#include "text/quote.h"
#include "text/safe_text.h"

#include <fmt/format.h>

namespace tvtool::output {

namespace json = boost::json;

std::string cellText(const json::value& value, std::size_t longest) {
    switch (value.kind()) {
    case json::kind::null:
        return {};
    case json::kind::bool_:
        return value.get_bool() ? "yes" : "no";
    case json::kind::string:
        return text::safeText(text::shortened(value.get_string(), longest));
    case json::kind::array: {
        std::string list;
        for (const json::value& entry : value.get_array()) {
            list += (list.empty() ? "" : ", ") + cellText(entry, longest);
        }
        return list;
    }
    case json::kind::double_:
        return fmt::format("{}", value.get_double());
    default:
        return json::serialize(value);
    }
}

std::string jsonText(const json::value& value) { return text::safeText(json::serialize(value)); }

void printJson(const json::object& object, std::ostream& os) { os << jsonText(object) << '\n'; }

json::object envelope(std::string_view command, json::object members) {
    json::object object{{"command", jsonValue(command)}, {"schemaVersion", schemaVersion}};
    object.reserve(object.size() + members.size() + 1);
    for (auto& member : members) {
        object.emplace(member.key(), std::move(member.value()));
    }
    return object;
}

void printJson(std::string_view command, json::object members, std::ostream& os) {
    json::object object = envelope(command, std::move(members));
    object.emplace("findings", json::array()); // has no effect if there is one
    printJson(object, os);
}

} // namespace tvtool::output
