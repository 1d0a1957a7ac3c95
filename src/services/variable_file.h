/// \file
/// Reader of the host's variable files, whose variables are arrays of records.
#pragma once

#include <fndi18n/codecvt.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

struct oxArray_tag;
struct oxdFile_tag;

namespace TVTypeSys {

/// Array of records, the value of a variable.
class Records {
  public:
    std::size_t size() const;

    /// Returns a field as a text, or nothing if the field is missing or not a text.
    std::optional<std::u16string> text(std::size_t record, const char* field) const;

    /// Returns the same in UTF-8.
    std::optional<std::string> narrowText(std::size_t record, const char* field) const;

    /// Returns the address of a field: if two records have the same one, they have the same value.
    /// Null if the field is missing. Values that are repeated in a file mostly share an address.
    const void* address(std::size_t record, const char* field) const;

    /// Returns a field as an integer, with its fraction truncated. Returns nothing if the field is
    /// missing, not a number, or out of the range of int.
    std::optional<int> integer(std::size_t record, const char* field) const;

  private:
    friend class VariableFile;
    struct Release {
        void operator()(oxArray_tag* value) const noexcept;
    };
    explicit Records(oxArray_tag* value) : value_(value) {}

    std::unique_ptr<oxArray_tag, Release> value_;
    fnd::i18n::codecvt_ustring_to_string converter_{"", true};
};

/// An open variable file.
class VariableFile {
  public:
    /// Opens a file for reading. Returns nothing on failure; openError has the reason.
    static std::optional<VariableFile> open(const std::u16string& path);

    /// Returns the reason of the last failure of open, with line and column.
    static std::string openError();

    /// Returns the records of a variable, or nothing if the variable is missing or has no records.
    std::optional<Records> records(const char* variable) const;

  private:
    struct Close {
        void operator()(oxdFile_tag* file) const noexcept;
    };
    explicit VariableFile(oxdFile_tag* file) : file_(file) {}

    std::unique_ptr<oxdFile_tag, Close> file_;
};

/// Returns the root folder of the installation.
std::u16string installationRoot();

} // namespace TVTypeSys
