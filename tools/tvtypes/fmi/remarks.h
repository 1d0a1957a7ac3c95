/// \file
/// What there is to say about a description that could be read.
#pragma once

#include "fmi/description.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tvtool::fmi {

struct Remark {
    std::string element;
    std::uint64_t line = 0;
    std::string sentence;
    std::size_t count = 1; ///< how many places it holds for, `line` being the first
};

/// Problems are faults of the model. Notes are oddities whose meaning is clear; the same note about
/// many elements is kept once, with the first line and a count.
class Remarks {
  public:
    void problem(const Place& place, std::string sentence);
    void note(const Place& place, std::string sentence);

    /// Puts both into the order of the description. Call it when all is said.
    void sort();

    const std::vector<Remark>& problems() const { return problems_; }
    const std::vector<Remark>& notes() const { return notes_; }

  private:
    std::vector<Remark> problems_;
    std::vector<Remark> notes_;
    std::unordered_map<std::string, std::size_t> noteIndex_;
};

} // namespace tvtool::fmi
