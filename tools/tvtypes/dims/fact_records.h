/// \file
/// The results of checking facts about sizes, from which every form of the report is printed.
///
/// Texts are as given or as the library prints them; they are not safe to print.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tvtool::dims {

/// The longest text of a dimension, in bytes, that reports show in full.
inline constexpr std::size_t longestText = 200;

/// A fact that leads to another, shortened.
struct DimsStep {
    std::string text;
    std::uint64_t line = 0; ///< 0 for what holds by itself, as 5 > 3
    std::string block;      ///< empty if there is none
};

/// Why something holds: by a chain of facts, or as the sentence says.
struct DimsReason {
    std::vector<DimsStep> steps;
    std::size_t omitted = 0; ///< number of steps left out in the middle
    std::string sentence;

    /// Returns the reason in one line, safe to print.
    std::string text() const;
};

struct DimsAnswer {
    enum class Known { Nothing, Yes, No };
    std::uint64_t line = 0;
    std::string text;
    Known library = Known::Nothing; ///< what the library knows
    Known all = Known::Nothing;     ///< what follows from all that is stated
    DimsReason reason;
};
const char* answerName(DimsAnswer::Known known);

struct DimsObjection {
    std::uint64_t line = 0;
    std::string text;
    std::string block;
    bool isRefused = false; ///< by the library
    DimsReason reason;
};

/// A fact in the library.
struct DimsFact {
    int id = 0;
    std::string text;
    std::vector<std::string> blocks; ///< those that have stated it
};

struct DimsNote {
    std::uint64_t line = 0;
    std::string sentence;
};

/// A line that is no fact.
struct DimsFault {
    std::uint64_t line = 0;
    std::size_t column = 0; ///< from 1
    std::string sentence;
    std::string excerpt;
};

/// What came of a file of facts.
struct FactReport {
    std::string file;
    std::size_t stated = 0; ///< how many lines state a fact
    std::vector<DimsAnswer> answers;
    std::vector<DimsObjection> objections;
    std::vector<DimsNote> notes;
    std::vector<DimsFact> facts;
    std::vector<DimsFault> faults;
    std::uint64_t lastLine = 0; ///< nothing was read after it; 0 if all was
};

} // namespace tvtool::dims
