/// \file
/// Files of the fuzzers.
#pragma once

#include "support/require.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include <unistd.h>

namespace fuzzing {

/// A folder of this process, in memory where there is such a place, that is removed at its end.
class TemporaryFolder {
  public:
    TemporaryFolder() { std::filesystem::create_directories(path); }
    ~TemporaryFolder() { std::filesystem::remove_all(path); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    void clear() const {
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            std::filesystem::remove_all(entry.path());
        }
    }

    const std::filesystem::path path =
        (std::filesystem::is_directory("/dev/shm") ? std::filesystem::path("/dev/shm")
                                                   : std::filesystem::temp_directory_path()) /
        ("tvtypes_fuzz_" + std::to_string(getpid()));
};

inline void writeFile(const std::filesystem::path& path, std::string_view content) {
    std::ofstream os(path, std::ios::binary);
    os.write(content.data(), static_cast<std::streamsize>(content.size()));
    os.close();
    require(!os.fail());
}

} // namespace fuzzing
