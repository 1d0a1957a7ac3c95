/// \file
/// One record of a source file.
#pragma once

#include <boost/json/object.hpp>

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tvdata {

/// Splits a text at commas. Throws Fault if a part is empty or has blanks at its ends; "" has no
/// parts.
std::vector<std::string> splitList(std::string_view text);

/// Reads the fields of a record. finish() detects fields with a misspelled name, which were never
/// read.
class Record {
  public:
    explicit Record(const boost::json::object& fields) : fields_(fields) {}

    /// Returns a field. Each throws Fault if it has the wrong type, text() also if it is missing.
    /// An empty text is invalid.
    std::string text(std::string_view field);
    std::optional<std::string> optionalText(std::string_view field);
    std::vector<std::string> list(std::string_view field);
    std::optional<int> optionalInteger(std::string_view field);
    bool flag(std::string_view field);
    /// Returns the list of the member `key` of the object `field`.
    std::vector<std::string> listWithin(std::string_view field, std::string_view key);

    /// Throws Fault if there is a field that has not been read.
    void finish() const;

  private:
    const boost::json::value* find(std::string_view field);

    const boost::json::object& fields_;
    std::set<std::string, std::less<>> read_;
};

} // namespace tvdata
