#include "fmi/structured_name.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace tvtool::fmi {

namespace {

constexpr std::string_view escapes = "'\"?\\abfnrtv";
constexpr std::uint32_t maxIndex = std::numeric_limits<std::int32_t>::max();

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isNonDigit(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

/// Each operation takes what it reads off the text, or notes the fault and gives false.
class NameParser {
  public:
    NameParser(std::string_view text, StructuredName& name) : text_(text), name_(name) {}

    std::optional<NameFault> parse() {
        name_.parts.clear();
        name_.indices.clear();
        name_.isDerivative = text_.starts_with("der(");
        if (name_.isDerivative) {
            position_ = 4;
        }
        const bool isRead = path() && (!name_.isDerivative || endOfDerivative()) &&
                            (position_ == text_.size() || fail("the end"));
        return isRead ? std::nullopt : std::optional(fault_);
    }

  private:
    bool at(char c) const { return position_ < text_.size() && text_[position_] == c; }

    bool fail(const char* expected) {
        fault_ = {position_, expected};
        return false;
    }

    bool path() {
        while (part()) {
            if (!at('.')) {
                return true;
            }
            ++position_;
        }
        return false;
    }

    bool part() {
        const std::size_t begin = position_;
        if (!(at('\'') ? quotedName() : identifier())) {
            return false;
        }
        NamePart part;
        part.name = text_.substr(begin, position_ - begin);
        part.firstIndex = name_.indices.size();
        if (at('[') && !indices()) {
            return false;
        }
        part.indexCount = name_.indices.size() - part.firstIndex;
        part.text = text_.substr(begin, position_ - begin);
        name_.parts.push_back(part);
        return true;
    }

    bool identifier() {
        if (position_ == text_.size() || !isNonDigit(text_[position_])) {
            return fail("a name");
        }
        while (position_ < text_.size() &&
               (isNonDigit(text_[position_]) || isDigit(text_[position_]))) {
            ++position_;
        }
        return true;
    }

    bool quotedName() {
        const std::size_t first = ++position_;
        for (; position_ < text_.size() && !at('\''); ++position_) {
            if (!at('\\')) {
                continue;
            }
            ++position_;
            if (position_ == text_.size() ||
                escapes.find(text_[position_]) == std::string_view::npos) {
                return fail("an escape");
            }
        }
        if (position_ == text_.size()) {
            return fail("a quote that ends the name");
        }
        if (position_ == first) {
            return fail("a character in quotes");
        }
        ++position_;
        return true;
    }

    bool indices() {
        do {
            ++position_;
            std::uint32_t index = 0;
            const char* const begin = text_.data() + position_;
            const char* const end = text_.data() + text_.size();
            const auto [stop, error] = std::from_chars(begin, end, index);
            if (stop == begin) {
                return fail("an index");
            }
            if (error != std::errc() || index > maxIndex) {
                return fail("an index of at most 2147483647");
            }
            position_ += static_cast<std::size_t>(stop - begin);
            name_.indices.push_back(index);
        } while (at(','));
        return close(']', "a comma or a closing bracket");
    }

    bool endOfDerivative() {
        if (at(',')) {
            const std::size_t first = ++position_;
            while (position_ < text_.size() && isDigit(text_[position_])) {
                ++position_;
            }
            if (position_ == first) {
                return fail("the order of the derivative");
            }
        }
        return close(')', "a closing parenthesis");
    }

    bool close(char bracket, const char* expected) {
        if (!at(bracket)) {
            return fail(expected);
        }
        ++position_;
        return true;
    }

    std::string_view text_;
    StructuredName& name_;
    std::size_t position_ = 0;
    NameFault fault_;
};

} // namespace

std::optional<NameFault> parseName(std::string_view text, StructuredName& name) {
    return NameParser(text, name).parse();
}

} // namespace tvtool::fmi
