#include <ox/array.h>

#include <limits>
#include <memory>
#include <utility>
#include <variant>

struct oxArray_tag {
    std::variant<double, std::string> content;
    mutable int references = 1;
    mutable bool temporary = true;
};

namespace {

oxArray_tag* make(std::variant<double, std::string> content) {
    return std::make_unique<oxArray_tag>(oxArray_tag{std::move(content)}).release();
}

} // namespace

oxArray_tag* oxCreateDoubleScalar(double value) { return make(value); }

oxArray_tag* oxCreateString(const char* text) {
    return make(std::string(text == nullptr ? "" : text));
}

bool oxIsDouble(const oxArray_tag* value) { return std::holds_alternative<double>(value->content); }

bool oxIsString(const oxArray_tag* value) {
    return std::holds_alternative<std::string>(value->content);
}

double oxGetScalar(const oxArray_tag* value) {
    const double* number = std::get_if<double>(&value->content);
    return number != nullptr ? *number : std::numeric_limits<double>::quiet_NaN();
}

const oxArray_tag* oxShareArray(const oxArray_tag* value) {
    ++value->references;
    value->temporary = false;
    return value;
}

void oxDestroyArray(oxArray_tag* value) {
    if (value != nullptr && --value->references == 0) {
        delete value;
    }
}

int oxGetReferenceCount(const oxArray_tag* value) { return value->references; }

bool oxIsTemporary(const oxArray_tag* value) { return value->temporary; }

namespace oxcore {

std::string get_string(const oxArray_tag* value) {
    const std::string* text = std::get_if<std::string>(&value->content);
    return text != nullptr ? *text : std::string();
}

} // namespace oxcore
