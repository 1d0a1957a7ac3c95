#pragma once

#include <fndi18n/codecvt.h>

#include <cstddef>
#include <string>

struct oxArray_tag;

// Its enumerators have other names on other hosts.
enum oxClassID : int;

const oxArray_tag* oxShareArray(const oxArray_tag* value);
void oxDestroyArray(oxArray_tag* value);
bool oxIsDouble(const oxArray_tag* value);
bool oxIsString(const oxArray_tag* value);
bool oxIsRecords(const oxArray_tag* value);
double oxGetScalar(const oxArray_tag* value);
std::size_t oxGetNumberOfElements(const oxArray_tag* value);
const oxArray_tag* oxGetField(const oxArray_tag* value, std::size_t index, const char* fieldName);
void* oxCallocEx(std::size_t count, std::size_t elementSize);

struct TOxArrayDeleter {
    void operator()(oxArray_tag* value) const;
};

namespace oxcore {

std::string get_string(const oxArray_tag* value,
                       const fnd::i18n::codecvt_ustring_to_string& converter);
std::u16string get_ustring(const oxArray_tag* value);

} // namespace oxcore
