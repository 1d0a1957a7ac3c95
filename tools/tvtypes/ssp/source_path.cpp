#include "ssp/source_path.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstddef>
#include <vector>

namespace tvtool::ssp {

namespace {

std::string decoded(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char byte = 0;
        const char* const digits = text.data() + i + 1;
        if (text[i] == '%' && i + 2 < text.size() &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            result += static_cast<char>(byte);
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

} // namespace

bool isAbsolute(std::string_view source) {
    if (source.starts_with('/') || source.starts_with('\\')) {
        return true;
    }
    const std::size_t colon = source.find(':');
    if (colon == std::string_view::npos || colon == 0 || source.find('/') < colon ||
        source.find('#') < colon || std::isalpha(static_cast<unsigned char>(source[0])) == 0) {
        return false;
    }
    for (const char c : source.substr(0, colon)) {
        if (std::isalnum(static_cast<unsigned char>(c)) == 0 && c != '+' && c != '-' && c != '.') {
            return false;
        }
    }
    return true;
}

SourcePath resolveSource(std::string_view folder, std::string_view source) {
    const std::size_t hash = source.find('#');
    SourcePath result;
    if (hash != std::string_view::npos) {
        result.fragment = decoded(source.substr(hash + 1));
    }
    const std::string whole = std::string(folder) + decoded(source.substr(0, hash));
    std::vector<std::string_view> segments;
    for (std::size_t begin = 0; begin <= whole.size();) {
        const std::size_t end = std::min(whole.find('/', begin), whole.size());
        const std::string_view segment = std::string_view(whole).substr(begin, end - begin);
        begin = end + 1;
        if (segment == ".." && !segments.empty() && segments.back() != "..") {
            segments.pop_back();
        } else if (!segment.empty() && segment != ".") {
            segments.push_back(segment);
        }
    }
    for (const std::string_view segment : segments) {
        result.path += result.path.empty() ? "" : "/";
        result.path += segment;
    }
    return result;
}

std::string pathIn(const std::string& folder, std::string_view name) {
    return folder + (folder.empty() ? "" : "/") + std::string(name);
}

std::string folderOf(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return std::string(path.substr(0, slash == std::string_view::npos ? 0 : slash + 1));
}

} // namespace tvtool::ssp
