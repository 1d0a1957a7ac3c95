#include "services/variable_file.h"

#include <fnd/filesystem.h>
#include <fndi18n/codecvt.h>
#include <ox/array.h>
#include <oxd/file.h>

#include <limits>

namespace TVTypeSys {

void Records::Release::operator()(oxArray_tag* value) const noexcept { oxDestroyArray(value); }

std::size_t Records::size() const { return oxGetNumberOfElements(value_.get()); }

std::optional<std::u16string> Records::text(std::size_t record, const char* field) const {
    const oxArray_tag* value = oxGetField(value_.get(), record, field);
    if (value == nullptr || !oxIsString(value)) {
        return std::nullopt;
    }
    return oxcore::get_ustring(value);
}

std::optional<std::string> Records::narrowText(std::size_t record, const char* field) const {
    const oxArray_tag* value = oxGetField(value_.get(), record, field);
    if (value == nullptr || !oxIsString(value)) {
        return std::nullopt;
    }
    return oxcore::get_string(value, converter_);
}

const void* Records::address(std::size_t record, const char* field) const {
    return oxGetField(value_.get(), record, field);
}

std::optional<int> Records::integer(std::size_t record, const char* field) const {
    using Limits = std::numeric_limits<int>;
    const oxArray_tag* value = oxGetField(value_.get(), record, field);
    if (value == nullptr || !oxIsDouble(value)) {
        return std::nullopt;
    }
    const double number = oxGetScalar(value);
    if (!(number > Limits::min() - 1.0 && number < Limits::max() + 1.0)) {
        return std::nullopt;
    }
    return static_cast<int>(number);
}

void VariableFile::Close::operator()(oxdFile_tag* file) const noexcept { oxdClose(file); }

std::optional<VariableFile> VariableFile::open(const std::u16string& path) {
    VariableFile file(oxdOpen(path, "r"));
    if (file.file_ == nullptr) {
        return std::nullopt;
    }
    return file;
}

std::string VariableFile::openError() { return oxdLastError(); }

std::optional<Records> VariableFile::records(const char* variable) const {
    Records records(oxdGetVariable(file_.get(), variable));
    if (records.value_ == nullptr || !oxIsRecords(records.value_.get())) {
        return std::nullopt;
    }
    return records;
}

std::u16string installationRoot() { return fnd::filesystem::get_install_path(); }

} // namespace TVTypeSys
