// The header of any bytes: an Error, or what comes back from the header that is written for it.
#include "convert/npy.h"

#include <cstdint>
#include <cstdlib>
#include <sstream>

namespace {

using namespace tvtool::convert;

bool isSame(const NpyHeader& a, const NpyHeader& b) {
    return a.element == b.element && a.shape.sizes == b.shape.sizes &&
           a.shape.fortranOrder == b.shape.fortranOrder && a.count == b.count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream is(std::string(reinterpret_cast<const char*>(data), size));
    NpyHeader header;
    try {
        header = readNpyHeader(is);
    } catch (const Error&) {
        return 0;
    }
    std::istringstream written(npyHeader(header.element, header.shape));
    if (!isSame(readNpyHeader(written), header)) {
        std::abort();
    }
    return 0;
}
