/// \file
/// Details of dimensions.
#pragma once

#include <tvtypes/symbolicdims.h>

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace tvtool::dims {

/// Texts are as given or as the library prints them; they are not safe to print.
struct DimsDetails {
    std::string text; ///< as given
    int id = 0;
    std::string simplified;
    int simplifiedId = 0;
    std::string size; ///< the product of the entries of a list; empty for a single dimension
    std::optional<int> sizeId;
    std::string obstacle;             ///< why the simplification is not complete; else empty
    std::optional<std::size_t> equal; ///< index of the first one with the same simplified form
};

/// Collects the details of dimensions and finds equal ones.
class DetailsList {
  public:
    /// Throws a text::ParseError.
    void add(const std::string& text);

    const std::vector<DimsDetails>& all() const { return details_; }

  private:
    TVTypeSys::SymbolicDimsTable table_;
    std::vector<DimsDetails> details_;
    std::unordered_map<int, std::size_t> firstWithForm_; ///< by the id of the simplified form
};

} // namespace tvtool::dims
