/// \file
/// Message classes, one for each id. The constructor takes the arguments of the sentence in the
/// order of message_table.h, as in `TorvaneTypes::general::InvalidDataTypeId(-2)`.
#pragma once

#include <tvtypes_res/base_msg_id.h>
#include <tvtypes_res/message_table.h>

namespace TorvaneTypes {

using Text = std::string;    ///< type of text arguments
using Number = std::int64_t; ///< type of number arguments

/// Defines the class of one row of the table.
#define TVTYPES_DEFINE_MESSAGE(space, name, signature)                                             \
    namespace space {                                                                              \
    /** The message `name`. */                                                                     \
    class name final : public msgcore::Message<name, signature> {                                  \
      public:                                                                                      \
        /** The full id. */                                                                        \
        static constexpr std::string_view ID = "TorvaneTypes::" #space "::" #name;                 \
        using Message::Message;                                                                    \
    };                                                                                             \
    }

TVTYPES_MESSAGE_TABLE(TVTYPES_DEFINE_MESSAGE)

#undef TVTYPES_DEFINE_MESSAGE

} // namespace TorvaneTypes
