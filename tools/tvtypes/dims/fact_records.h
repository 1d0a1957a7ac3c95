/// \file
/// Results of checking facts about sizes, from which reports are printed.
///
/// Texts are as given or as the library prints them; they are not safe to print.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tvtool::dims {

/// The longest text of a dimension, in bytes, that reports show in full.
inline constexpr std::size_t longestText = 200;

/// A fact in a reason, shortened.
struct DimsStep {
    std::string text;
    std::uint64_t line = 0;
    std::string block;       ///< empty if there is none
    bool isDoubtful = false; ///< whether the fact contradicts others
};

/// The reason for a result: facts, or else a sentence.
struct DimsReason {
    std::vector<DimsStep> steps; ///< a chain, or facts that together give the result
    std::size_t omitted = 0;     ///< number of steps left out in the middle
    std::string conclusion;      ///< what follows from the facts together; may be empty
    std::string sentence;

    /// Returns whether a fact is doubtful, of those that are not left out.
    bool isDoubtful() const;

    /// Returns the reason in one line, safe to print.
    std::string text() const;
};

/// The answer to a question.
struct DimsAnswer {
    enum class Known { Nothing, Yes, No };
    std::uint64_t line = 0;
    std::string text;
    Known library = Known::Nothing; ///< by the library
    Known all = Known::Nothing;     ///< by all facts together that do not contradict others
    DimsReason reason;
    /// Why the library answers, if it does by facts of which one cannot hold.
    std::optional<DimsReason> doubt;
};

/// A fact that contradicts others.
struct DimsObjection {
    std::uint64_t line = 0;
    std::string text;
    std::string block;
    bool isRefused = false; ///< whether the library rejected the fact
    /// Whether only the library contradicts, by a fact that cannot hold itself.
    bool isDoubtful = false;
    DimsReason reason;
};

/// A fact in the library.
struct DimsFact {
    int id = 0;
    std::string text;
    std::vector<std::string> blocks; ///< the blocks that stated it
};

struct DimsNote {
    std::uint64_t line = 0;
    std::string sentence;

    friend bool operator==(const DimsNote&, const DimsNote&) = default;
};

/// A line that cannot be parsed.
struct DimsFault {
    std::uint64_t line = 0;
    std::size_t column = 0; ///< from 1
    std::string sentence;
    std::string excerpt;
};

/// The results of a file of facts.
struct FactReport {
    std::string file;
    std::size_t stated = 0; ///< number of lines that state a fact
    std::vector<DimsAnswer> answers;
    std::vector<DimsObjection> objections;
    std::vector<DimsNote> notes;
    std::vector<DimsFact> facts;
    std::vector<DimsFault> faults;
    std::vector<std::uint64_t> undecided;  ///< lines that take too much work
    bool areWhole = true;                  ///< whether sizes are whole numbers, not negative
    std::optional<std::uint64_t> lastLine; ///< the line after which reading was given up
};

} // namespace tvtool::dims
