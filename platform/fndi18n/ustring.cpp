#include "utf8.h"

#include <fndi18n/ustring.h>

#include <unicode/uchar.h>

#include <algorithm>
#include <ostream>
#include <utility>

namespace fnd::i18n {

fnd::ustring to_ustring(const char* text) {
    return fromUtf8(text == nullptr ? std::string_view() : std::string_view(text));
}

fnd::ustring to_ustring(const std::string& text) { return fromUtf8(text); }

} // namespace fnd::i18n

std::string ConvertUStringToStdString(const std::basic_string<char16_t>& text,
                                      bool /*substitute*/) {
    return fnd::i18n::toUtf8(text);
}

std::basic_string<char16_t> ConvertStdStringToUString(const std::string& text,
                                                      bool /*substitute*/) {
    return fnd::i18n::fromUtf8(text);
}

bool tvsvIsalphanum(char16_t character) { return u_isalnum(character) != 0; }

std::ostream& operator<<(std::ostream& out, const std::basic_string<char16_t>& text) {
    return out << fnd::i18n::toUtf8(text);
}

void delimited_ustring_to_vector(std::vector<std::basic_string<char16_t>>& pieces,
                                 const std::basic_string<char16_t>& text, char16_t delimiter,
                                 char16_t escape) {
    std::vector<std::basic_string<char16_t>> found;
    if (!text.empty()) {
        const auto delimiters = std::count(text.begin(), text.end(), delimiter);
        found.reserve(static_cast<std::size_t>(delimiters) + 1);
        found.emplace_back();
    }
    const char16_t* const end = text.data() + text.size();
    for (const char16_t* run = text.data(); run != end;) {
        const char16_t* stop = std::find_if(run, end, [&](char16_t character) {
            return character == delimiter || (character == escape && escape != u'\0');
        });
        found.back().append(run, stop);
        if (stop == end) {
            break;
        }
        run = stop + 1;
        if (*stop != escape || escape == u'\0') {
            found.emplace_back();
        } else if (run != end) {
            found.back() += *run++;
        }
    }
    pieces = std::move(found);
}
