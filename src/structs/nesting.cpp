#include "structs/nesting.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace TVTypeSys {

Nestings::Nestings() {
    outermost_.end = std::numeric_limits<int>::max();
    outermost_.offset = 0;
    outermost_.varDimsOffset = 0;
}

Nesting& Nestings::innermost(int index) {
    const auto behind = fromIndex_.upper_bound(index);
    return behind == fromIndex_.begin() ? outermost_ : *std::prev(behind)->second;
}

Nesting& Nestings::add(const Nesting& found) {
    Nesting& nesting = found_.emplace_front(found);
    // Counts that do not fit together must not let it stick out.
    nesting.end = std::min(nesting.end, nesting.parent->end);
    fromIndex_.try_emplace(nesting.end, nesting.parent);
    fromIndex_[nesting.start] = &nesting;
    return nesting;
}

void Nestings::forget() {
    fromIndex_.clear();
    found_.clear();
}

} // namespace TVTypeSys
