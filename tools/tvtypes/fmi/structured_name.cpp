#include "fmi/structured_name.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace tvtool::fmi {

namespace {

constexpr std::string_view escapes = "'\"?\\abfnrtv";
constexpr std::string_view digits = "0123456789";
constexpr std::string_view nameCharacters =
    "0123456789_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::uint32_t maxIndex = std::numeric_limits<std::int32_t>::max();

/// Recursive descent. A function for a rule of the grammar consumes its text and returns true, or
/// sets the fault and returns false.
class NameParser {
  public:
    NameParser(std::string_view text, StructuredName& name) : text_(text), name_(name) {}

    std::optional<NameFault> parse() {
        name_.parts.clear();
        name_.indices.clear();
        name_.isDerivative = take("der(");
        const bool isParsed = path() && (!name_.isDerivative || endOfDerivative()) &&
                              (position_ == text_.size() || fail("the end"));
        return isParsed ? std::nullopt : std::optional(fault_);
    }

  private:
    bool fail(const char* expected) {
        fault_ = {position_, expected};
        return false;
    }

    /// Consumes the token if it is next.
    bool take(std::string_view token) {
        const bool isNext = text_.substr(position_).starts_with(token);
        position_ += isNext ? token.size() : 0;
        return isNext;
    }

    /// Consumes the longest sequence of these characters. Returns whether there is one.
    bool takeAll(std::string_view characters) {
        const std::size_t begin = position_;
        position_ = std::min(text_.find_first_not_of(characters, begin), text_.size());
        return position_ > begin;
    }

    bool path() {
        do {
            if (!part()) {
                return false;
            }
        } while (take("."));
        return true;
    }

    bool part() {
        const std::size_t begin = position_;
        if (!(take("'") ? restOfQuotedName() : identifier())) {
            return false;
        }
        NamePart part{text_.substr(begin, position_ - begin), {}, name_.indices.size(), 0};
        if (take("[") && !restOfIndices()) {
            return false;
        }
        part.indexCount = name_.indices.size() - part.firstIndex;
        part.text = text_.substr(begin, position_ - begin);
        name_.parts.push_back(part);
        return true;
    }

    bool identifier() {
        const bool isDigit = digits.find(text_.substr(position_, 1)) != std::string_view::npos;
        return (!isDigit && takeAll(nameCharacters)) || fail("a name");
    }

    bool restOfQuotedName() {
        const std::size_t first = position_;
        while (position_ < text_.size() && text_[position_] != '\'') {
            if (take("\\") && (position_ == text_.size() ||
                               escapes.find(text_[position_]) == std::string_view::npos)) {
                return fail("an escape");
            }
            ++position_;
        }
        if (position_ == first && position_ < text_.size()) {
            return fail("a character in quotes");
        }
        return take("'") || fail("a quote that ends the name");
    }

    bool restOfIndices() {
        do {
            std::uint32_t index = 0;
            const char* const begin = text_.data() + position_;
            const auto [stop, error] = std::from_chars(begin, text_.data() + text_.size(), index);
            if (stop == begin) {
                return fail("an index");
            }
            if (error != std::errc() || index > maxIndex) {
                return fail("an index of at most 2147483647");
            }
            position_ += static_cast<std::size_t>(stop - begin);
            name_.indices.push_back(index);
        } while (take(","));
        return take("]") || fail("a comma or a closing bracket");
    }

    bool endOfDerivative() {
        if (take(",") && !takeAll(digits)) {
            return fail("the order of the derivative");
        }
        return take(")") || fail("a closing parenthesis");
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
