#include "convert/run.h"

#include <vector>

namespace tvtool::convert {

namespace {

constexpr std::size_t chunk = std::size_t{64} << 10;

} // namespace

void convertAll(Source& source, Conversion& conversion, Sink& sink, Progress& progress) {
    std::vector<std::byte> from(chunk * sizeOf(conversion.source()));
    std::vector<std::byte> to(chunk * sizeOf(conversion.destination()));
    while (const std::size_t count = source.read(from.data(), chunk)) {
        conversion.convert(from.data(), to.data(), count);
        sink.write(to.data(), count);
        progress.reached(conversion.losses().elements);
    }
    sink.finish();
}

} // namespace tvtool::convert
