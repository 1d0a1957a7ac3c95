#include "model/path.h"

namespace tvtool::model {

namespace {

constexpr std::size_t longest = 120;

bool isContinuationByte(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

} // namespace

std::string shortened(std::string_view text) {
    if (text.size() <= longest) {
        return std::string(text);
    }
    std::size_t end = longest;
    while (end > 0 && isContinuationByte(text[end])) {
        --end;
    }
    return std::string(text.substr(0, end)) + "...";
}

bool PathEnd::prepend(std::string_view name) {
    isCut_ = isCut_ || (!names_.empty() && length_ + name.size() > longest);
    if (!isCut_) {
        names_.push_back(name);
        length_ += name.size() + 1;
    }
    return !isCut_;
}

std::string PathEnd::text() const {
    std::string path = isCut_ ? "..." : "";
    for (std::size_t i = names_.size(); i > 0; --i) {
        path += shortened(names_[i - 1]);
        path += i == 1 ? "" : ".";
    }
    return path;
}

} // namespace tvtool::model
