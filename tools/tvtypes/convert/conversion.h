/// \file
/// Conversion of elements by the library, with a count of the losses: of a vector, of a whole
/// source, and of a source under all modes.
#pragma once

#include "convert/streams.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tvtool::convert {

/// The number of occurrences, and the indices of the first ones, from 0.
struct Occurrences {
    std::uint64_t count = 0;
    std::vector<std::uint64_t> first;

    void add(std::uint64_t index);
};

/// The greatest absolute difference between a result and its source.
struct GreatestError {
    double value = 0;
    std::uint64_t index = 0;
};

struct Losses {
    std::uint64_t elements = 0;
    Occurrences lost;       ///< elements that differ when they are converted back
    Occurrences overflowed; ///< the lost ones that are out of range of the destination
    /// Of the elements that are finite before and after, wrapped and saturated ones too. Empty if
    /// no such element was lost.
    std::optional<GreatestError> greatestError;
    std::uint64_t nan = 0;        ///< elements of the source that are NaN, in one part at least
    std::uint64_t infinities = 0; ///< elements of the source that are infinite and not NaN

    /// Returns a sentence with the counts and the first indices.
    std::string summary() const;
};

/// Returns the destination of a conversion that keeps complex elements complex. Throws an Error for
/// those and a destination other than double and single, since files have no complex integers.
Element destinationOf(Element source, Type destination);

/// Converts the elements of one vector in blocks.
class Conversion {
  public:
    Conversion(Element source, Element destination, Modes modes)
        : source_(source), destination_(destination), modes_(modes) {}

    Element source() const { return source_; }
    Element destination() const { return destination_; }
    const Losses& losses() const { return losses_; }

    void convert(const std::byte* from, std::byte* to, std::size_t count);

  private:
    /// Converts elements and returns whether all of them kept their values.
    bool convertExactly(const std::byte* from, std::byte* to, std::size_t count) const;
    bool dropsImaginaryPart(const std::byte* from, std::size_t count) const;
    bool overflows(const std::byte* element) const;
    void addError(const std::byte* from, const std::byte* to, std::uint64_t index);
    void countNonFinite(const std::byte* from, std::size_t count);

    Element source_;
    Element destination_;
    Modes modes_;
    Losses losses_;
};

/// Converts all elements of a source into a sink, in chunks, so that the memory does not depend on
/// their number. Shows a progress bar on the last line of `terminal` while it runs, if `terminal`
/// is not null and the number of elements is known.
void convertAll(Source& source, Conversion& conversion, Sink& sink, std::ostream* terminal);

/// Prints the results of converting each value of the source: a line for each overflow mode, a
/// column for each rounding mode. Modes that make no difference for the pair of types share one.
void printModes(Source& source, Type destination, bool colour, std::ostream& os);

} // namespace tvtool::convert
