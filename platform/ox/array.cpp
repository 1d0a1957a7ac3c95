#include <fndi18n/ustring.h>
#include <ox/array.h>

#include <algorithm>
#include <cassert>
#include <limits>
#include <memory>
#include <numeric>
#include <string_view>
#include <utility>
#include <variant>

namespace {

/// An array of records. Fields are stored record by record, in the order of the names.
struct Records {
    std::size_t count;
    std::vector<std::string> fieldNames;
    std::vector<std::size_t> index; // positions of the names in the order of isBefore
    std::vector<std::unique_ptr<oxArray_tag, TOxArrayDeleter>> fields;
};

using Content = std::variant<double, std::string, Records>;

} // namespace

struct oxArray_tag {
    Content content;
    mutable int references = 1;
    mutable bool temporary = true;
};

namespace {

oxArray_tag* make(Content content) {
    return std::make_unique<oxArray_tag>(oxArray_tag{std::move(content)}).release();
}

/// Returns the content of a value of this kind; null for other kinds.
template <class Kind, class Value>
auto* contentOf(Value* value) {
    return value == nullptr ? nullptr : std::get_if<Kind>(&value->content);
}

/// Order of the index of fields: by length first, which is cheaper to compare and mostly differs.
bool isBefore(std::string_view left, std::string_view right) {
    return left.size() != right.size() ? left.size() < right.size() : left < right;
}

std::vector<std::size_t> sortedPositions(const std::vector<std::string>& names) {
    std::vector<std::size_t> index(names.size());
    std::iota(index.begin(), index.end(), std::size_t{0});
    std::stable_sort(index.begin(), index.end(), [&names](std::size_t left, std::size_t right) {
        return isBefore(names[left], names[right]);
    });
    return index;
}

/// Returns the position of a field name; the number of fields if there is none. Binary search.
std::size_t fieldPosition(const oxArray_tag* value, const char* fieldName) {
    const Records* records = contentOf<Records>(value);
    if (records == nullptr) {
        return 0;
    }
    const std::vector<std::string>& names = records->fieldNames;
    const std::vector<std::size_t>& index = records->index;
    const std::string_view name = fieldName == nullptr ? "" : fieldName;
    const auto found = std::lower_bound(index.begin(), index.end(), name,
                                        [&names](std::size_t position, std::string_view sought) {
                                            return isBefore(names[position], sought);
                                        });
    return found != index.end() && names[*found] == name ? *found : names.size();
}

/// Returns the slot of a field; null if there is no such record or field.
template <class Kind>
auto* fieldAt(Kind* records, std::size_t index, std::size_t fieldIndex) {
    const bool exists =
        records != nullptr && index < records->count && fieldIndex < records->fieldNames.size();
    return exists ? &records->fields[index * records->fieldNames.size() + fieldIndex] : nullptr;
}

} // namespace

oxArray_tag* oxCreateDoubleScalar(double value) { return make(value); }

oxArray_tag* oxCreateString(const char* text) {
    return oxCreateString(std::string(text == nullptr ? "" : text));
}

oxArray_tag* oxCreateString(std::string text) { return make(std::move(text)); }

oxArray_tag* oxCreateRecords(std::size_t count, const std::vector<std::string>& fieldNames) {
    Records records{count, fieldNames, sortedPositions(fieldNames), {}};
    if (!fieldNames.empty()) {
        if (count > records.fields.max_size() / fieldNames.size()) {
            return nullptr;
        }
        records.fields.resize(count * fieldNames.size());
    }
    return make(std::move(records));
}

bool oxIsDouble(const oxArray_tag* value) { return contentOf<double>(value) != nullptr; }

bool oxIsString(const oxArray_tag* value) { return contentOf<std::string>(value) != nullptr; }

bool oxIsRecords(const oxArray_tag* value) { return contentOf<Records>(value) != nullptr; }

double oxGetScalar(const oxArray_tag* value) {
    const double* number = contentOf<double>(value);
    return number != nullptr ? *number : std::numeric_limits<double>::quiet_NaN();
}

std::size_t oxGetNumberOfElements(const oxArray_tag* value) {
    const Records* records = contentOf<Records>(value);
    const std::size_t otherwise = value == nullptr ? 0 : 1;
    return records != nullptr ? records->count : otherwise;
}

const std::vector<std::string>& oxGetFieldNames(const oxArray_tag* value) {
    static const std::vector<std::string> none;
    const Records* records = contentOf<Records>(value);
    return records != nullptr ? records->fieldNames : none;
}

const oxArray_tag* oxGetField(const oxArray_tag* value, std::size_t index, const char* fieldName) {
    return oxGetFieldAt(value, index, fieldPosition(value, fieldName));
}

const oxArray_tag* oxGetFieldAt(const oxArray_tag* value, std::size_t index,
                                std::size_t fieldIndex) {
    const auto* field = fieldAt(contentOf<Records>(value), index, fieldIndex);
    return field == nullptr ? nullptr : field->get();
}

bool oxSetField(oxArray_tag* value, std::size_t index, const char* fieldName,
                oxArray_tag* fieldValue) {
    return oxSetFieldAt(value, index, fieldPosition(value, fieldName), fieldValue);
}

bool oxSetFieldAt(oxArray_tag* value, std::size_t index, std::size_t fieldIndex,
                  oxArray_tag* fieldValue) {
    auto* field = fieldAt(contentOf<Records>(value), index, fieldIndex);
    if (field == nullptr) {
        return false;
    }
    field->reset(fieldValue);
    return true;
}

const oxArray_tag* oxShareArray(const oxArray_tag* value) {
    assert(value != nullptr);
    ++value->references;
    value->temporary = false;
    return value;
}

void oxDestroyArray(oxArray_tag* value) {
    if (value != nullptr && --value->references == 0) {
        delete value;
    }
}

int oxGetReferenceCount(const oxArray_tag* value) {
    assert(value != nullptr);
    return value->references;
}

bool oxIsTemporary(const oxArray_tag* value) {
    assert(value != nullptr);
    return value->temporary;
}

namespace oxcore {

std::string get_string(const oxArray_tag* value) {
    const std::string* text = contentOf<std::string>(value);
    return text != nullptr ? *text : std::string();
}

std::string get_string(const oxArray_tag* value,
                       const fnd::i18n::codecvt_ustring_to_string& converter) {
    return converter(get_ustring(value));
}

std::basic_string<char16_t> get_ustring(const oxArray_tag* value) {
    const std::string* text = contentOf<std::string>(value);
    return text != nullptr ? fnd::i18n::to_ustring(*text) : std::basic_string<char16_t>();
}

} // namespace oxcore
