#include "fmi/attributes.h"

namespace tvtool::fmi {

std::string_view requiredName(const Attributes& attributes, const Place& place,
                              Description& description, Remarks& remarks) {
    const char* const name = attributes[Attribute::Name];
    if (name == nullptr) {
        remarks.problem(place, "name is missing");
        return {};
    }
    if (*name == '\0') {
        remarks.problem(place, "name is empty");
    }
    return description.texts.keep(name);
}

} // namespace tvtool::fmi
