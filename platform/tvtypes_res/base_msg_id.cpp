#include <tvtypes_res/base_msg_id.h>
#include <tvtypes_res/catalogue.h>

#include <utility>

namespace msgcore {

BaseMsgID::BaseMsgID(std::string_view id, std::vector<std::string> arguments)
    : id_(id), arguments_(std::move(arguments)) {}

BaseMsgID::~BaseMsgID() = default;

std::string BaseMsgID::text() const {
    return tvtypes_res::Catalogue::builtIn().text(id_, arguments_);
}

} // namespace msgcore
