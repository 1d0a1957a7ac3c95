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

/// The parts of a text between commas. Throws a Fault if one of them is empty, unless the text is.
std::vector<std::string> splitList(std::string_view text);

/// Reads the fields of a record. A field that nobody has asked for is a fault, so that a field with
/// a misspelled name is found.
class Record {
  public:
    explicit Record(const boost::json::object& fields) : fields_(fields) {}

    /// Throws a Fault if the field is missing, empty or no text.
    std::string text(std::string_view field);
    std::optional<std::string> optionalText(std::string_view field);
    std::vector<std::string> list(std::string_view field);
    std::optional<int> optionalInteger(std::string_view field);
    bool flag(std::string_view field);
    /// The list that the text member \p key of the object \p field holds.
    std::vector<std::string> listWithin(std::string_view field, std::string_view key);

    /// Throws a Fault if there is a field that has not been asked for.
    void finish() const;

  private:
    const boost::json::value* find(std::string_view field);

    const boost::json::object& fields_;
    std::set<std::string, std::less<>> asked_;
};

} // namespace tvdata
