/// \file
/// Shortening of texts to a width, so that different texts remain different.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tvtool::output {

/// Returns a text of at most `width` columns that has "..." in place of the middle, or the text if
/// it is not wider.
std::string shortenedInTheMiddle(std::string_view text, std::size_t width);

/// The shortenings of the texts of a column.
///
/// A text that is too wide loses its middle. Different texts that become equal by that form a
/// group. A group is sorted, so that each text shares its longest beginning with a neighbour, and
/// each text also keeps the place where it first differs from both:
/// "plant...l[12].sp...temperature". What is still taken by another text, or too narrow for three
/// parts, gets a number: "plant...ature~2".
///
/// Takes O(n log n) comparisons of texts at most, for the groups, and keeps a hash of each text and
/// the texts of the groups.
class Shortening {
  public:
    /// Appends the text with an index. Its result does not change.
    using TextAt = std::function<void(std::size_t index, std::string& text)>;

    /// \param width in columns, at least 5
    Shortening(std::size_t count, const TextAt& textAt, std::size_t width);

    /// Returns the shortening of one of the texts.
    std::string operator()(std::string_view text) const;

  private:
    void resolve(std::vector<std::string> group);

    std::size_t width_;
    std::unordered_set<std::size_t> taken_;                   ///< hashes of results
    std::unordered_map<std::size_t, std::string> exceptions_; ///< by the hash of the text
};

/// Returns the first of `count` names as a list: as many as fit into `width` columns, but at most
/// `most`, and then the number of the others: "a, b and 3 more". If not even two of them fit, they
/// are shortened, and remain different.
std::string nameList(std::size_t count, const Shortening::TextAt& nameAt, std::size_t width,
                     std::size_t most = 3);

} // namespace tvtool::output
