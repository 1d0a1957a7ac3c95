/// \file
/// Remarks about a description that could be read: problems and notes.
#pragma once

#include "fmi/description.h"

#include <fmt/core.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tvtool::fmi {

struct Remark {
    std::string element;
    std::uint64_t line = 0; ///< of the first element; 0 if it has no line
    std::string sentence;
    std::size_t count = 1; ///< number of elements
};

/// Problems are faults of the model. Notes are oddities whose meaning is clear; equal notes about
/// elements of the same name are kept once, with the first line and a count.
class Remarks {
  public:
    template <class... Arguments>
    void problem(const Place& place, fmt::format_string<Arguments...> sentence,
                 Arguments&&... arguments) {
        const std::string text = fmt::format(sentence, std::forward<Arguments>(arguments)...);
        problems_.push_back({std::string(place.element), place.line, text, 1});
    }
    template <class... Arguments>
    void note(const Place& place, fmt::format_string<Arguments...> sentence,
              Arguments&&... arguments) {
        addNote(place, fmt::format(sentence, std::forward<Arguments>(arguments)...));
    }

    /// Sorts both by line. To be called after the last remark.
    void sort();

    const std::vector<Remark>& problems() const { return problems_; }
    const std::vector<Remark>& notes() const { return notes_; }

  private:
    void addNote(const Place& place, std::string sentence);

    std::vector<Remark> problems_;
    std::vector<Remark> notes_;
    std::unordered_map<std::string, std::size_t> noteIndex_; ///< by element and sentence
};

} // namespace tvtool::fmi
