#include "fmi/source.h"

#include "exchange/input.h"

#include <utility>

namespace tvtool::fmi {

exchange::Source openSource(const std::string& path, findings::Findings& findings) {
    exchange::Input input = exchange::openInput(path);
    return input.archive ? openArchive(std::move(input.archive), findings)
                         : std::move(input.source);
}

} // namespace tvtool::fmi
