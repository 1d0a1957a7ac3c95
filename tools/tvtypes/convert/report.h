/// \file
/// Report on a conversion, as JSON.
#pragma once

#include "convert/conversion.h"

#include <boost/json.hpp>

#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace tvtool::convert {

/// Results as JSON values, up to a number of them.
class CollectingSink : public Sink {
  public:
    explicit CollectingSink(Element element) : element_(element) {}

    void write(const std::byte* elements, std::size_t count) override;

    /// Returns the results: numbers, and texts for those that JSON has no numbers for. Empty if
    /// there are too many of them for a report.
    const std::optional<boost::json::array>& values() const { return values_; }

  private:
    Element element_;
    std::optional<boost::json::array> values_{std::in_place};
};

struct ConversionReport {
    std::string from; ///< type in the input
    std::string to;
    std::string rounding;
    std::string overflow;
    Losses losses;
    std::optional<boost::json::array> values; ///< empty if they are in a file
};

void printJson(const ConversionReport& report, std::ostream& os);

} // namespace tvtool::convert
