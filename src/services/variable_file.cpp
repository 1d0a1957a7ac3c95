#include "services/variable_file.h"

#include <fnd/filesystem.h>
#include <ox/array.h>
#include <oxd/file.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace TVTypeSys {

void Records::Release::operator()(oxArray_tag* value) const noexcept { oxDestroyArray(value); }

std::size_t Records::size() const { return oxGetNumberOfElements(value_.get()); }

const oxArray_tag* Records::fieldValue(std::size_t record, const char* name) const {
    const std::vector<std::string>& names = oxGetFieldNames(value_.get());
    if (next_ >= names.size() || names[next_] != name) {
        const auto found = std::find(names.begin(), names.end(), name);
        next_ = static_cast<std::size_t>(found - names.begin());
    }
    const oxArray_tag* value = oxGetFieldAt(value_.get(), record, next_);
    next_ = next_ + 1 < names.size() ? next_ + 1 : 0;
    return value;
}

std::optional<std::u16string> Records::text(std::size_t record, const char* field) const {
    const oxArray_tag* value = fieldValue(record, field);
    if (!oxIsString(value)) {
        return std::nullopt;
    }
    return oxcore::get_ustring(value);
}

std::optional<int> Records::integer(std::size_t record, const char* field) const {
    using Limits = std::numeric_limits<int>;
    // NaN, which is in no range, if the field is not a number.
    const double value = oxGetScalar(fieldValue(record, field));
    if (!(value > Limits::min() - 1.0 && value < Limits::max() + 1.0)) {
        return std::nullopt;
    }
    return static_cast<int>(value);
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
    if (!oxIsRecords(records.value_.get())) {
        return std::nullopt;
    }
    return records;
}

std::u16string installationRoot() { return fnd::filesystem::get_install_path(); }

} // namespace TVTypeSys
