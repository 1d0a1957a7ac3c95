#include "structs/nesting.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace TVTypeSys {

Nesting& Nestings::innermost(int index) const {
    return *std::prev(fromIndex_.upper_bound(index))->second;
}

Nesting& Nestings::add(const Nesting& found) {
    Nesting& nesting = nestings_.emplace_back(found);
    // Counts that do not fit together must not let it stick out.
    nesting.end = std::min(nesting.end, nesting.parent->end);
    fromIndex_.try_emplace(nesting.end, nesting.parent);
    fromIndex_[nesting.start] = &nesting;
    return nesting;
}

void Nestings::forget() {
    nestings_.clear();
    Nesting& outermost = nestings_.emplace_back();
    outermost.end = std::numeric_limits<int>::max();
    outermost.offset = 0;
    outermost.varDimsOffset = 0;
    fromIndex_ = {{0, &outermost}};
}

} // namespace TVTypeSys
