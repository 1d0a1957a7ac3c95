#include "model/path.h"

#include "text/quote.h"

namespace tvtool::model {

bool PathEnd::prepend(std::string_view name) {
    isCut_ = isCut_ || (!names_.empty() && length_ + name.size() > text::longestName);
    if (!isCut_) {
        names_.push_back(name);
        length_ += name.size() + 1;
    }
    return !isCut_;
}

std::string PathEnd::text() const {
    std::string path = isCut_ ? "..." : "";
    for (std::size_t i = names_.size(); i > 0; --i) {
        path += text::shortened(names_[i - 1]);
        path += i == 1 ? "" : ".";
    }
    return path;
}

} // namespace tvtool::model
