#include "ssp/store.h"

#include "exchange/archive.h"
#include "exchange/zip_input.h"

#include <system_error>
#include <utility>

namespace tvtool::ssp {

namespace fs = std::filesystem;

Store::Store(std::shared_ptr<std::FILE> archive, std::string name, exchange::Allowance& allowance)
    : archive_(exchange::openZip(std::move(archive), exchange::longestDirectory)),
      name_(std::move(name)),
      allowance_(&allowance) {}

std::string Store::shownPath(std::string_view path) const {
    return isArchive() ? name_ + '/' + std::string(path)
                       : (folder_ / path).lexically_normal().string();
}

bool Store::hasFile(const std::string& path) const {
    // Names end at a null byte for the functions below.
    if (path.find('\0') != std::string::npos) {
        return false;
    }
    std::error_code ignored;
    return isArchive() ? exchange::findEntry(*archive_, path).has_value()
                       : fs::is_regular_file(folder_ / path, ignored);
}

exchange::Input Store::open(const std::string& path) const {
    if (!isArchive()) {
        return exchange::openInput((folder_ / path).string());
    }
    const auto index = exchange::findEntry(*archive_, path);
    if (!index) {
        throw files::ReadError("is not in the archive");
    }
    return exchange::openInput(
        exchange::counted(exchange::openEntry(archive_, *index, path), *allowance_));
}

} // namespace tvtool::ssp
