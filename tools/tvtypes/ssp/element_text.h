/// \file
/// The element that is being read.
#pragma once

#include "ssp/grammar.h"

#include <fmt/format.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tvtool::ssp {

/// The attributes of one element, and findings about it. Texts are kept with the file.
class ElementText {
  public:
    explicit ElementText(File& file) : file_(file) {}

    /// Begins an element. Attributes that are not expected are findings.
    void start(const ElementRule& rule, const char* const* attributes, const Place& place);

    findings::Findings& findings() const { return file_.findings; }
    /// Of the element, whose name lives as long as the file.
    const Place& place() const { return place_; }

    /// Returns the text of an attribute; null if it is missing.
    const char* attribute(std::string_view name) const;
    bool has(std::string_view name) const { return attribute(name) != nullptr; }

    /// Return the value of an attribute, kept with the file; empty if it is missing. \{
    std::string_view text(std::string_view name) const; ///< without blanks around it
    std::string_view untrimmed(std::string_view name) const;
    /// \}

    /// Same for an attribute that must be there and not empty, else it is an error.
    std::string_view required(std::string_view name) const;

    /// Returns false for a missing or, with an error, for an invalid value.
    bool boolean(std::string_view name) const;

    /// Checks that the attribute version of a root element is known.
    void readVersion();

    /// Adds an error if the version of the file does not have a feature.
    void addNewFeature(const Place& place, const std::string& feature) const;

    /// Adds a finding about the element.
    template <class... Arguments>
    void add(findings::Code code, fmt::format_string<Arguments...> sentence,
             Arguments&&... arguments) const {
        file_.findings.add(code, place_, subject, sentence, std::forward<Arguments>(arguments)...);
    }
    /// Same about an attribute.
    template <class... Arguments>
    void addForAttribute(findings::Code code, std::string_view attribute,
                         fmt::format_string<Arguments...> sentence,
                         Arguments&&... arguments) const {
        file_.findings.addWithCause(code, place_, subject, attribute, sentence,
                                    std::forward<Arguments>(arguments)...);
    }
    /// Adds an error about a value.
    void addInvalid(std::string_view attribute, std::string_view value, const char* kind) const;

    findings::Subject subject = {}; ///< of the findings

  private:
    File& file_;
    Place place_;
    const char* const* attributes_ = nullptr;
    bool isOld_ = false; ///< whether the file is of version 1.0
};

} // namespace tvtool::ssp
