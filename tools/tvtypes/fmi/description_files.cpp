#include "fmi/description_files.h"

#include "exchange/xml.h"
#include "files/read_error.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include <sys/stat.h>

namespace tvtool::fmi {

namespace fs = std::filesystem;

namespace {

std::string openError(int errorNumber) {
    return "cannot be opened: " + std::generic_category().message(errorNumber);
}

bool endsWith(const std::string& path, std::string_view ending) {
    return path.size() > ending.size() &&
           std::ranges::equal(std::string_view(path).substr(path.size() - ending.size()), ending,
                              {}, [](unsigned char c) { return std::tolower(c); });
}

/// Ends the parsing at the root element.
class RootHandler : public exchange::XmlHandler {
  public:
    struct Root {
        bool isDescription;
    };
    [[noreturn]] void startElement(std::string_view name, const char* const*,
                                   exchange::Position) override {
        throw Root{name == "fmiModelDescription"};
    }
    void endElement() override {}
};

/// Returns whether the root of an XML file is that of a description. A file without a root is none.
/// Throws a files::ReadError if the file cannot be read.
bool isDescription(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw files::ReadError(openError(errno));
    }
    RootHandler handler;
    try {
        exchange::parseXml(
            [&file](std::span<char> buffer) {
                constexpr std::size_t step = 4096;
                file.read(buffer.data(),
                          static_cast<std::streamsize>(std::min(buffer.size(), step)));
                return static_cast<std::size_t>(file.gcount());
            },
            handler);
    } catch (const RootHandler::Root& root) {
        return root.isDescription;
    } catch (const files::ReadError&) {
        return false;
    }
    return false;
}

class Search {
  public:
    void add(const std::string& argument) {
        if (isDirectory(argument)) {
            searchDirectory(argument);
        } else if (isFirst(argument)) {
            found_.push_back({argument, {}});
        }
    }

    std::vector<DescriptionFile> found() && { return std::move(found_); }

  private:
    /// Returns whether a file or directory was not visited before. Standard input, pipes and what
    /// does not exist have no identity but their name.
    bool isFirst(const std::string& path) {
        struct stat status {};
        if (path == "-" || stat(path.c_str(), &status) != 0 ||
            (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode))) {
            return names_.insert(path).second;
        }
        return visited_.emplace(status.st_dev, status.st_ino).second;
    }

    void searchDirectory(const std::string& directory) {
        if (!isFirst(directory)) {
            return;
        }
        std::error_code error;
        fs::directory_iterator entries(directory, error);
        std::vector<std::string> paths;
        for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
            paths.push_back(entries->path().string());
        }
        if (error) {
            found_.push_back({directory, openError(error.value())});
        }
        std::ranges::sort(paths);
        for (const std::string& path : paths) {
            if (isDirectory(path)) {
                searchDirectory(path);
            } else {
                addIfDescription(path);
            }
        }
    }

    void addIfDescription(const std::string& path) {
        const bool isXml = endsWith(path, ".xml");
        if (!isXml && !endsWith(path, ".fmu")) {
            return;
        }
        std::error_code error;
        const fs::file_status status = fs::status(path, error);
        if (status.type() == fs::file_type::not_found || status.type() == fs::file_type::none) {
            found_.push_back({path, openError(error ? error.value() : ENOENT)});
            return;
        }
        if (!fs::is_regular_file(status) || !isFirst(path)) {
            return;
        }
        try {
            if (!isXml || isDescription(path)) {
                found_.push_back({path, {}});
            }
        } catch (const files::ReadError& unreadable) {
            found_.push_back({path, unreadable.what()});
        }
    }

    std::vector<DescriptionFile> found_;
    std::set<std::pair<dev_t, ino_t>> visited_;
    std::set<std::string> names_;
};

} // namespace

bool isDirectory(const std::string& argument) {
    std::error_code ignored;
    return argument != "-" && fs::is_directory(argument, ignored);
}

std::vector<DescriptionFile> findDescriptionFiles(const std::vector<std::string>& arguments) {
    Search search;
    for (const std::string& argument : arguments) {
        search.add(argument);
    }
    return std::move(search).found();
}

} // namespace tvtool::fmi
