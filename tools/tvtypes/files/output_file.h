/// \file
/// Files that a command writes.
#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

struct stat;

namespace tvtool::files {

class TemporaryFile;

/// The path of the standard input, or the standard output.
inline constexpr const char* standardStream = "-";

/// Whether an output file may replace the input of its command.
enum class InPlace { Refused, Allowed };

/// An output that appears as a whole or not at all: bytes are written to a temporary file in the
/// same folder, which commit() renames. Without commit(), and if a signal ends the process, what
/// was there stays. The file behind a symbolic link is replaced, and not the link; a replaced file
/// keeps its permissions.
///
/// A device, a pipe, and an open descriptor such as /dev/stdout or "-" are written directly.
///
/// All operations throw a FileError.
class OutputFile {
  public:
    /// Throws if the path is neither of these, or is the regular file at `input` and must not
    /// replace it. An input that is written directly is refused in any case.
    OutputFile(const std::string& path, const std::string& input, InPlace inPlace);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    void write(const void* bytes, std::size_t count);
    /// Returns whether bytes are written to their destination at once.
    bool isDirect() const { return !temporary_; }
    /// Moves to the beginning, so that the next bytes overwrite the first ones. \pre !isDirect()
    void rewind();
    /// Replaces the file at the path.
    void commit();

  private:
    struct CloseFile {
        void operator()(std::FILE* file) const noexcept { static_cast<void>(std::fclose(file)); }
    };
    /// An owned descriptor.
    struct Descriptor {
        explicit Descriptor(int descriptor) : number(descriptor) {}
        ~Descriptor();
        Descriptor(const Descriptor&) = delete;
        Descriptor& operator=(const Descriptor&) = delete;

        int number;
    };

    /// \param replaced the file at the path; null if there is none
    void createTemporary(const std::filesystem::path& target, const struct stat* replaced);
    void openStream(int descriptor);
    [[noreturn]] void fail(int errorNumber) const;

    std::string path_;
    std::string name_; ///< of the file to replace, in its folder
    std::optional<Descriptor> folder_;
    std::unique_ptr<TemporaryFile> temporary_; ///< null if the output is written directly
    std::unique_ptr<std::FILE, CloseFile> file_;
};

} // namespace tvtool::files
