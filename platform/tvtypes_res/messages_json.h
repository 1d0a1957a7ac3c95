#pragma once

#include <string_view>

namespace tvtypes_res {

/// The text of the message catalogue.
extern const std::string_view messagesJson;

} // namespace tvtypes_res
