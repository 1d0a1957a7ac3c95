#include "dims/details.h"

namespace tvtool::dims {

void DetailsList::add(const std::string& text) {
    const Reading reading = readDims(text, table_);
    DimsDetails details;
    details.text = text;
    details.id = reading.id;
    details.simplifiedId = reading.simplified;
    details.simplified = table_.getSymbolicDims(reading.simplified).toString();
    details.obstacle = reading.obstacle;
    if (table_.getSymbolicDims(reading.simplified).getNumDimensions() > 1) {
        details.sizeId = sizeOf(table_, reading.simplified);
        details.size = table_.getSymbolicDims(*details.sizeId).toString();
    }
    const auto [entry, isFirst] = firstOf_.try_emplace(reading.simplified, details_.size());
    if (!isFirst) {
        details.equal = entry->second;
    }
    details_.push_back(std::move(details));
}

} // namespace tvtool::dims
