/// \file
/// The message ids: one class each, built with the arguments of its sentence in the order of
/// message_table.h, as in `TorvaneTypes::general::InvalidDataTypeId(-2)`.
#pragma once

#include <tvtypes_res/base_msg_id.h>
#include <tvtypes_res/message_table.h>

namespace TorvaneTypes {

using Text = std::string;
using Number = std::int64_t;

#define TVTYPES_DEFINE_MESSAGE(space, name, signature)                                             \
    namespace space {                                                                              \
    class name final : public msgcore::Message<name, signature> {                                  \
      public:                                                                                      \
        static constexpr std::string_view ID = "TorvaneTypes::" #space "::" #name;                 \
        using Message::Message;                                                                    \
    };                                                                                             \
    }

TVTYPES_MESSAGE_TABLE(TVTYPES_DEFINE_MESSAGE)

#undef TVTYPES_DEFINE_MESSAGE

} // namespace TorvaneTypes
