/// \file
/// Files of the host that hold variables, read as arrays of records.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

struct oxArray_tag;
struct oxdFile_tag;

namespace TVTypeSys {

/// The records of a variable.
class Records {
  public:
    std::size_t size() const;

    /// A field of a record, if it is there and a text.
    std::optional<std::u16string> text(std::size_t record, const char* field) const;

    /// A field of a record, if it is there and a number that an int can hold once its fraction is
    /// cut off.
    std::optional<int> integer(std::size_t record, const char* field) const;

  private:
    friend class VariableFile;
    struct Release {
        void operator()(oxArray_tag* value) const noexcept;
    };
    explicit Records(oxArray_tag* value) : value_(value) {}
    const oxArray_tag* fieldOf(std::size_t record, const char* name) const;

    std::unique_ptr<oxArray_tag, Release> value_;
    /// Where the next field is looked for first: fields are mostly read in their order.
    mutable std::size_t next_ = 0;
};

/// An open file.
class VariableFile {
  public:
    /// Nothing if the file does not open.
    static std::optional<VariableFile> open(const std::u16string& path);

    /// Why it did not, the last time.
    static std::string whyNotOpened();

    /// The records of a variable, if there is one and it has records.
    std::optional<Records> records(const char* variable) const;

  private:
    struct Close {
        void operator()(oxdFile_tag* file) const noexcept;
    };
    explicit VariableFile(oxdFile_tag* file) : file_(file) {}

    std::unique_ptr<oxdFile_tag, Close> file_;
};

/// The root of the installation.
std::u16string installationRoot();

} // namespace TVTypeSys
