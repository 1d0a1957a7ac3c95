#pragma once

#include <string_view>

namespace tvtypes_res {

/// Contents of data/messages.json.
extern const std::string_view messagesJson;

} // namespace tvtypes_res
