#include "exchange/records.h"

#include <algorithm>

namespace tvtool::exchange {

namespace {

constexpr std::array<std::string_view, baseTypeCount> names{
    "Float64", "Float32", "Int8",    "UInt8",  "Int16",  "UInt16", "Int32",      "UInt32",
    "Int64",   "UInt64",  "Boolean", "String", "Binary", "Clock",  "Enumeration"};

} // namespace

std::string_view baseTypeName(BaseType base, int fmiMajorVersion) {
    if (fmiMajorVersion < 3 && base == BaseType::Float64) {
        return "Real";
    }
    if (fmiMajorVersion < 3 && base == BaseType::Int32) {
        return "Integer";
    }
    return base == BaseType::None ? "unknown" : names[static_cast<std::size_t>(base)];
}

std::string_view Texts::keep(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    char* const copy = static_cast<char*>(memory_.allocate(text.size(), 1));
    std::copy(text.begin(), text.end(), copy);
    return {copy, text.size()};
}

std::string_view Texts::intern(std::string_view text) {
    const auto known = interned_.find(text);
    return known != interned_.end() ? *known : *interned_.insert(keep(text)).first;
}

} // namespace tvtool::exchange
