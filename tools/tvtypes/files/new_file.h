/// \file
/// A file that comes into being as a whole or not at all.
#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

namespace tvtool::files {

/// Bytes go to a file beside the one that is meant, until commit() puts it in its place. If that
/// does not happen, nothing is left. All operations throw a std::runtime_error, whose text is a
/// sentence to show as it stands.
class NewFile {
  public:
    /// Refuses what exists and is no plain file.
    explicit NewFile(const std::string& path);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void write(const void* bytes, std::size_t count);
    /// The next bytes replace the first ones.
    void rewind();
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
