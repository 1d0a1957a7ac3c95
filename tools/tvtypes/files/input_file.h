/// \file
/// Files of bytes that a command reads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

namespace tvtool::files {

/// A file, a pipe or the standard input, which is read once from its beginning. All operations
/// throw a FileError.
class InputFile {
  public:
    /// Opens a file. The path "-" is the standard input, `standardInput`, which must outlive it.
    InputFile(std::string path, std::istream& standardInput);

    /// Returns the next bytes, which remain to be read; fewer at the end. `count` is at most 64.
    std::string_view peek(std::size_t count);
    /// Reads up to `most` bytes and returns their number; fewer only at the end.
    std::size_t read(void* bytes, std::size_t most);
    bool isAtEnd() { return peek(1).empty(); }
    /// Returns the number of bytes that are left; empty if the file has no size, as a pipe.
    std::optional<std::uint64_t> bytesLeft() const;

    /// Throws a FileError with the sentence.
    [[noreturn]] void fail(const std::string& sentence) const;

  private:
    std::size_t readStream(char* bytes, std::size_t most);

    std::string path_;
    std::ifstream file_;
    std::istream& is_;
    std::string ahead_; ///< bytes from the stream that have not been returned by read()
    std::optional<std::uint64_t> size_;
    std::uint64_t done_ = 0;
};

} // namespace tvtool::files
