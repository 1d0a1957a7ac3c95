/// \file
/// A file that is written as a whole or not at all.
#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

namespace tvtool::files {

/// Writes to a temporary file in the same folder, which commit() renames. Without commit() the
/// destructor removes it. All operations throw a std::runtime_error, whose text names the file and
/// is complete as a sentence.
class NewFile {
  public:
    /// Throws if the path exists and is no regular file.
    explicit NewFile(const std::string& path);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void write(const void* bytes, std::size_t count);
    /// Moves to the beginning, so that the next bytes overwrite the first ones.
    void rewind();
    /// Replaces the file at the path.
    void commit();

  private:
    struct Close {
        void operator()(std::FILE* file) const noexcept { static_cast<void>(std::fclose(file)); }
    };

    [[noreturn]] void fail(int errorNumber) const;

    std::string path_;
    std::filesystem::path target_;
    std::filesystem::path temporary_;
    std::unique_ptr<std::FILE, Close> file_;
};

} // namespace tvtool::files
