/// \file
/// The namespaces of the elements of a file.
#pragma once

#include "ssp/records.h"

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tvtool::ssp {

/// The namespaces of the standard, and all others.
enum class Vocabulary : std::uint8_t { Structure, Common, Values, Mapping, Dictionary, Foreign };

/// Resolves the prefixes of names. Faults are findings, once for each prefix: the names are then
/// read by the usual meaning of the prefix.
class Namespaces {
  public:
    /// \param usual the namespace of the root element, for names without a prefix
    Namespaces(Vocabulary usual, findings::Findings& findings)
        : usual_(usual), findings_(findings) {}

    /// Enters an element. Returns its namespace and its local name.
    std::pair<Vocabulary, std::string_view>
    enter(std::string_view name, const char* const* attributes, const Place& place);
    void leave();

  private:
    struct Declaration {
        std::size_t depth = 0;
        std::string prefix; ///< empty for the default namespace
        std::string uri;
    };

    Vocabulary vocabularyOf(std::string_view prefix) const;
    void addOnce(findings::Code code, const Place& place, std::string_view prefix,
                 std::string_view uri);

    Vocabulary usual_;
    findings::Findings& findings_;
    std::size_t depth_ = 0;
    std::vector<Declaration> declarations_;
    std::set<std::pair<findings::Code, std::string>> reported_;
};

/// Returns whether an attribute is of another namespace, or declares one.
bool isForeignAttribute(std::string_view name);

} // namespace tvtool::ssp
