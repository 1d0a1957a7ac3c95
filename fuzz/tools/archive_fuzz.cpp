// Opens any bytes as an archive and unpacks the description. Only a files::ReadError is allowed,
// and no more bytes than the limit.
#include "fmi/source.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace {

using namespace tvtool;

constexpr std::uint64_t maxSize = std::uint64_t{1} << 20;

void unpack(const std::string& path) {
    findings::Findings findings;
    const exchange::Source source =
        fmi::openArchive(std::shared_ptr<std::FILE>(std::fopen(path.c_str(), "rb"), &std::fclose),
                         findings, maxSize);
    std::array<char, 4096> buffer{};
    std::uint64_t total = 0;
    while (const std::size_t count = source(buffer)) {
        total += count;
        if (count > buffer.size() || total > maxSize) {
            std::abort();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int file = memfd_create("archive", 0);
    static const std::string path = "/proc/self/fd/" + std::to_string(file);
    if (ftruncate(file, 0) != 0 || pwrite(file, data, size, 0) != static_cast<ssize_t>(size)) {
        std::abort();
    }
    try {
        unpack(path);
    } catch (const files::ReadError&) {
        // Most bytes are no archive.
    }
    return 0;
}
