#include "ssp/archives.h"

namespace tvtool::ssp {

Opened Archives::open(const FileKey& key) {
    if (const auto known = kept_.find(key); known != kept_.end()) {
        return {known->second.get(), nullptr, {}};
    }
    const auto& [store, path] = key;
    exchange::Input input = store->open(path);
    if (!input.archive) {
        return {nullptr, nullptr, std::move(input.source)};
    }
    auto owner =
        std::make_unique<Store>(std::move(input.archive), store->shownPath(path), unpacked_);
    const Store* const archive = owner.get();
    return {archive, std::move(owner), {}};
}

void Archives::keep(Opened& opened, const FileKey& key) {
    if (opened.owner != nullptr) {
        kept_.emplace(key, std::move(opened.owner));
    }
}

const Store& Archives::get(const FileKey& key) {
    std::string& fault = faults_[key];
    if (fault.empty()) {
        try {
            Opened opened = open(key);
            if (opened.archive != nullptr) {
                keep(opened, key);
                return *opened.archive;
            }
            fault = "is no archive";
        } catch (const files::ReadError& error) {
            fault = error.what();
        }
    }
    throw files::ReadError(fault);
}

} // namespace tvtool::ssp
