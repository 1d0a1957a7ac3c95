#include "dims/details.h"

#include "dims/reading.h"

#include <utility>

namespace tvtool::dims {

void DetailsList::add(const std::string& text) {
    RegisteredDims dims = registerDims(text, table_);
    const TVTypeSys::SymbolicDims simplified = table_.getSymbolicDims(dims.simplified);
    DimsDetails details{text, dims.id, simplified.toString(), dims.simplified,
                        {},   {},      dims.obstacle,         {}};
    if (simplified.getNumDimensions() > 1) {
        details.sizeId = sizeOf(table_, dims.simplified);
        details.size = table_.getSymbolicDims(*details.sizeId).toString();
    }
    const auto [entry, isFirst] = firstWithForm_.try_emplace(dims.simplified, details_.size());
    if (!isFirst) {
        details.equal = entry->second;
    }
    details_.push_back(std::move(details));
}

} // namespace tvtool::dims
