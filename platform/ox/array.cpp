#include <fndi18n/ustring.h>
#include <ox/array.h>

#include <algorithm>
#include <cstdint>
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
    bool distinctNames;
    std::size_t next; // position that is tried first: fields are mostly read in their order
    std::vector<std::unique_ptr<oxArray_tag, TOxArrayDeleter>> fields;
};

// Records are apart, so that the numbers and texts, which are most values, are small.
using Content = std::variant<double, std::string, std::unique_ptr<Records>>;

} // namespace

struct oxArray_tag {
    explicit oxArray_tag(Content&& made) : content(std::move(made)) {}

    Content content;
    mutable int references = 1;
    mutable bool temporary = true;
    oxArray_tag* nextDestroyed = nullptr; // during oxDestroyArray
};

namespace {

template <class Kind>
oxArray_tag* make(Kind&& content) {
    return std::make_unique<oxArray_tag>(std::forward<Kind>(content)).release();
}

/// Returns the content of a value of this kind; null for other kinds.
template <class Kind>
const Kind* contentOf(const oxArray_tag* value) {
    return value == nullptr ? nullptr : std::get_if<Kind>(&value->content);
}

/// Returns the records of a value; null for other kinds.
Records* recordsOf(const oxArray_tag* value) {
    const auto* records = contentOf<std::unique_ptr<Records>>(value);
    return records == nullptr ? nullptr : records->get();
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

/// Whether no two names are equal. Equal ones are adjacent in the index.
bool areDistinct(const std::vector<std::string>& names, const std::vector<std::size_t>& index) {
    return std::adjacent_find(index.begin(), index.end(),
                              [&names](std::size_t left, std::size_t right) {
                                  return names[left] == names[right];
                              }) == index.end();
}

/// Returns the position of the first field with a name; the number of fields if there is none. The
/// field after the last one found, or the first one, or else a binary search.
std::size_t fieldPosition(const oxArray_tag* value, const char* fieldName) {
    Records* records = recordsOf(value);
    if (records == nullptr || fieldName == nullptr) {
        return SIZE_MAX;
    }
    const std::vector<std::string>& names = records->fieldNames;
    const std::string_view name = fieldName;
    std::size_t position = records->next;
    const auto isAtPosition = [&] { return position < names.size() && names[position] == name; };
    if (!isAtPosition()) {
        position = 0; // the first field of the next record
    }
    if (!isAtPosition() || !records->distinctNames) {
        const std::vector<std::size_t>& index = records->index;
        const auto found = std::lower_bound(index.begin(), index.end(), name,
                                            [&names](std::size_t one, std::string_view sought) {
                                                return isBefore(names[one], sought);
                                            });
        if (found == index.end() || names[*found] != name) {
            return names.size();
        }
        position = *found;
    }
    records->next = position + 1 < names.size() ? position + 1 : 0;
    return position;
}

/// Returns the slot of a field; null if there is no such record or field.
std::unique_ptr<oxArray_tag, TOxArrayDeleter>* fieldAt(Records* records, std::size_t index,
                                                       std::size_t fieldIndex) {
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
    std::vector<std::size_t> index = sortedPositions(fieldNames);
    const bool distinct = areDistinct(fieldNames, index);
    auto records =
        std::make_unique<Records>(Records{count, fieldNames, std::move(index), distinct, 0, {}});
    if (!fieldNames.empty()) {
        if (count > records->fields.max_size() / fieldNames.size()) {
            return nullptr;
        }
        records->fields.resize(count * fieldNames.size());
    }
    return make(std::move(records));
}

bool oxIsDouble(const oxArray_tag* value) { return contentOf<double>(value) != nullptr; }

bool oxIsString(const oxArray_tag* value) { return contentOf<std::string>(value) != nullptr; }

bool oxIsRecords(const oxArray_tag* value) { return recordsOf(value) != nullptr; }

double oxGetScalar(const oxArray_tag* value) {
    const double* number = contentOf<double>(value);
    return number != nullptr ? *number : std::numeric_limits<double>::quiet_NaN();
}

std::size_t oxGetNumberOfElements(const oxArray_tag* value) {
    const Records* records = recordsOf(value);
    const std::size_t otherwise = value == nullptr ? 0 : 1;
    return records != nullptr ? records->count : otherwise;
}

const std::vector<std::string>& oxGetFieldNames(const oxArray_tag* value) {
    // Never destroyed: destructors of static objects may read values.
    static const auto& none = *std::make_unique<const std::vector<std::string>>().release();
    const Records* records = recordsOf(value);
    return records != nullptr ? records->fieldNames : none;
}

const oxArray_tag* oxGetField(const oxArray_tag* value, std::size_t index, const char* fieldName) {
    return oxGetFieldAt(value, index, fieldPosition(value, fieldName));
}

const oxArray_tag* oxGetFieldAt(const oxArray_tag* value, std::size_t index,
                                std::size_t fieldIndex) {
    const auto* field = fieldAt(recordsOf(value), index, fieldIndex);
    return field == nullptr ? nullptr : field->get();
}

bool oxSetField(oxArray_tag* value, std::size_t index, const char* fieldName,
                oxArray_tag* fieldValue) {
    return oxSetFieldAt(value, index, fieldPosition(value, fieldName), fieldValue);
}

bool oxSetFieldAt(oxArray_tag* value, std::size_t index, std::size_t fieldIndex,
                  oxArray_tag* fieldValue) {
    auto* field = fieldAt(recordsOf(value), index, fieldIndex);
    if (field == nullptr) {
        return false;
    }
    field->reset(fieldValue);
    return true;
}

const oxArray_tag* oxShareArray(const oxArray_tag* value) {
    if (value != nullptr) {
        ++value->references;
        value->temporary = false;
    }
    return value;
}

void oxDestroyArray(oxArray_tag* value) {
    // A linked list of the values to destroy, since records may be nested to any depth.
    oxArray_tag* first = nullptr;
    const auto release = [&first](oxArray_tag* released) {
        if (released != nullptr && --released->references == 0) {
            released->nextDestroyed = std::exchange(first, released);
        }
    };
    release(value);
    while (first != nullptr) {
        const std::unique_ptr<oxArray_tag> destroyed(first);
        first = destroyed->nextDestroyed;
        if (Records* records = recordsOf(destroyed.get())) {
            for (auto& field : records->fields) {
                release(field.release());
            }
        }
    }
}

int oxGetReferenceCount(const oxArray_tag* value) {
    return value == nullptr ? 0 : value->references;
}

bool oxIsTemporary(const oxArray_tag* value) { return value != nullptr && value->temporary; }

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
