/// \file
/// Findings about a model description, collected while it is read and checked.
#pragma once

#include "findings/rules.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tvtool::findings {

/// The name and the position of an element. The name is a constant or a text of the description.
/// Lines and columns count from 1; 0 means that there is none.
struct Place {
    std::string_view element;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

enum class SubjectKind : std::uint8_t {
    File,
    Variable,
    Type,
    Unit,
    DisplayUnit,
    Dimension,
    Struct,
    Element,    ///< of a system
    Connector,  ///< of an element
    Connection, ///< between connectors
    Parameter,  ///< of a parameter set
    Fact,       ///< a line of a file of facts
    Value,      ///< values of a conversion
};

/// What a finding is about.
struct Subject {
    SubjectKind kind = SubjectKind::File;
    std::string_view name = {}; ///< empty for the file
};

struct Finding {
    Code code = Code::ArchiveDescriptions;
    SubjectKind subject = SubjectKind::File;
    std::uint32_t line = 0; ///< of the first element; 0 if there is none
    std::uint32_t column = 0;
    std::uint32_t count = 1;    ///< number of elements
    std::uint32_t lastLine = 0; ///< of the last element
    std::string element;        ///< name of the element
    std::string subjectName;
    std::string cause; ///< what a list of several findings names; empty if it is the subject
    std::string sentence;
};

/// Collects findings. Findings that differ only in their places are one, with the first place, the
/// last line and a count. Beyond maxDistinct different findings of a code, all others are one.
class Findings {
  public:
    static constexpr std::uint32_t maxDistinct = 100'000;

    template <class... Arguments>
    void add(Code code, const Place& place, Subject subject,
             fmt::format_string<Arguments...> sentence, Arguments&&... arguments) {
        addWithCause(code, place, subject, {}, sentence, std::forward<Arguments>(arguments)...);
    }

    /// Same with a cause, which is what findings of the same code are distinguished by: the unit,
    /// the type or the attribute.
    template <class... Arguments>
    void addWithCause(Code code, const Place& place, Subject subject, std::string_view cause,
                      fmt::format_string<Arguments...> sentence, Arguments&&... arguments) {
        if (distinct_[static_cast<std::size_t>(code)] < maxDistinct) {
            insert(code, place, subject, cause,
                   fmt::format(sentence, std::forward<Arguments>(arguments)...));
        } else {
            addFurther(code, place);
        }
    }

    /// Sorts by severity, line and column. To be called after the last finding.
    void sort();

    /// Removes the findings whose code does not satisfy the predicate.
    template <class Predicate>
    void retain(Predicate predicate) {
        std::erase_if(all_, [&](const Finding& finding) { return !predicate(finding.code); });
    }

    const std::vector<Finding>& all() const { return all_; }

    /// Returns the number of elements with findings of a severity.
    std::size_t count(Severity severity) const;
    /// Same for the findings of an area.
    std::size_t count(Severity severity, Area area) const;

  private:
    /// Counts a finding beyond maxDistinct.
    void addFurther(Code code, const Place& place);
    void insert(Code code, const Place& place, Subject subject, std::string_view cause,
                std::string sentence);

    std::vector<Finding> all_;
    std::array<std::uint32_t, ruleCount> distinct_{}; ///< number of findings in all_ by code
    std::array<std::uint32_t, ruleCount> further_{};  ///< behind the index of that of addFurther()
    std::unordered_multimap<std::size_t, std::uint32_t> known_; ///< indices by hash
};

} // namespace tvtool::findings
