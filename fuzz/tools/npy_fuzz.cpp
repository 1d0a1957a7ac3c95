// Any bytes as a NumPy file: an error, or a header that comes back from what is written for it.
// Then the elements are read as a conversion reads them.
#include "convert/npy.h"
#include "convert/streams.h"
#include "files/file_error.h"
#include "support/require.h"

#include <cstdint>
#include <sstream>
#include <vector>

namespace {

using namespace tvtool;
using namespace tvtool::convert;
using fuzzing::require;

NpyHeader readHeader(const std::string& bytes) {
    std::istringstream is(bytes);
    files::InputFile file("-", is);
    return readNpyHeader(file);
}

bool isSame(const NpyHeader& a, const NpyHeader& b) {
    return a.element == b.element && a.shape.sizes == b.shape.sizes &&
           a.shape.fortranOrder == b.shape.fortranOrder && a.count == b.count;
}

void readElements(const std::string& bytes, const NpyHeader& header) {
    std::istringstream is(bytes);
    const std::unique_ptr<Source> source = openFile("-", is, Format::Npy, std::nullopt);
    require(source->element() == header.element && source->count() == header.count);
    constexpr std::size_t most = 7;
    std::vector<std::byte> buffer(most * sizeOf(header.element));
    std::uint64_t total = 0;
    while (const std::size_t count = source->read(buffer.data(), most)) {
        total += count;
        require(count <= most && total <= header.count);
    }
    require(total == header.count);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    try {
        const NpyHeader header = readHeader(bytes);
        require(isSame(readHeader(npyHeader(header.element, header.shape)), header));
        readElements(bytes, header);
    } catch (const Error&) {
    } catch (const files::FileError&) {
    }
    return 0;
}
