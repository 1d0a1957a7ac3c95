/// \file
/// The lines of which a file of facts is made.
#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tvtool::dims {

/// A line is no fact and no question. What it says is a sentence to show as it stands.
class LineError : public std::runtime_error {
  public:
    LineError(const std::string& sentence, std::size_t at)
        : std::runtime_error(sentence), position(at) {}

    std::size_t position; ///< of the byte at which it goes wrong
};

enum class Sign { Equal, Greater, Less };
const char* textOf(Sign sign);

struct Side {
    std::string text;
    std::size_t position = 0; ///< in the line
};

/// `N > 2 # Gain1` states a fact for a block, `N > 2 ?` asks for it.
struct FactLine {
    Side left;
    Sign sign = Sign::Equal;
    Side right;
    bool isQuestion = false;
    std::string block; ///< empty if the line names none
};

/// Takes a line apart. Empty for one that is blank or a comment, which begins with #. Throws a
/// LineError.
std::optional<FactLine> splitLine(std::string_view line);

} // namespace tvtool::dims
