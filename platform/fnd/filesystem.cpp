#include <fnd/filesystem.h>

#include <dlfcn.h>

#include <filesystem>
#include <memory>
#include <mutex>
#include <system_error>

namespace fnd::filesystem {

namespace {

namespace files = std::filesystem;

constexpr int parentsToTry = 3;

/// An address in this library for dladdr. Not exported, so that no other library can interpose it.
const char anchor = 0;

files::path libraryFolder() {
    Dl_info library{};
    if (dladdr(&anchor, &library) == 0 || library.dli_fname == nullptr) {
        return {};
    }
    std::error_code unresolved;
    const files::path resolved = files::canonical(library.dli_fname, unresolved);
    return (unresolved ? files::path(library.dli_fname) : resolved).parent_path();
}

files::path rootNear(const files::path& folder) {
    files::path parent = folder;
    for (int i = 0; i < parentsToTry; ++i) {
        parent = parent.parent_path();
        files::path root = parent / "share" / "tvtypes";
        std::error_code missing;
        if (files::is_directory(root, missing)) {
            return root;
        }
    }
    return folder.parent_path() / "share" / "tvtypes";
}

fnd::ustring defaultPath() {
    const files::path root = rootNear(libraryFolder());
    try {
        return root.u16string();
    } catch (const files::filesystem_error&) { // the path is not UTF-8
        return {};
    }
}

struct InstallPath {
    std::mutex mutex;
    fnd::ustring path; // "" if not set
};

InstallPath& installPath() {
    // Never destroyed, like the default root: destructors of static objects may load files.
    static InstallPath& path = *std::make_unique<InstallPath>().release();
    return path;
}

} // namespace

fnd::ustring get_install_path() {
    static const auto& defaultRoot = *std::make_unique<const fnd::ustring>(defaultPath()).release();
    InstallPath& configured = installPath();
    const std::lock_guard lock(configured.mutex);
    return configured.path.empty() ? defaultRoot : configured.path;
}

void set_install_path(const fnd::ustring& path) {
    InstallPath& configured = installPath();
    const std::lock_guard lock(configured.mutex);
    configured.path = path;
}

} // namespace fnd::filesystem
