#include "structs/nestings.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace TVTypeSys {

Nestings::Nestings() {
    root_.end = std::numeric_limits<int>::max();
    root_.offset = 0;
    root_.varDimsOffset = 0;
}

Nesting& Nestings::innermost(int index) {
    const auto next = fromIndex_.upper_bound(index);
    return next == fromIndex_.begin() ? root_ : *std::prev(next)->second;
}

Nesting& Nestings::add(const Nesting& found) {
    Nesting& nesting = found_.emplace_front(found);
    // Clients may set inconsistent counts: the range must stay within the parent.
    nesting.end = std::min(nesting.end, nesting.parent->end);
    fromIndex_.try_emplace(nesting.end, nesting.parent);
    fromIndex_[nesting.start] = &nesting;
    return nesting;
}

void Nestings::clear() {
    fromIndex_.clear();
    found_.clear();
}

} // namespace TVTypeSys
