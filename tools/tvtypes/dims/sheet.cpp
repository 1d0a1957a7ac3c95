#include "dims/sheet.h"

namespace tvtool::dims {

void Sheets::add(const std::string& text) {
    const Reading reading = readDims(text, table_);
    dims::DimsSheet sheet;
    sheet.text = text;
    sheet.id = reading.id;
    sheet.simplifiedId = reading.simplified;
    sheet.simplified = table_.getSymbolicDims(reading.simplified).toString();
    sheet.obstacle = reading.obstacle;
    if (table_.getSymbolicDims(reading.simplified).getNumDimensions() > 1) {
        sheet.sizeId = sizeOf(table_, reading.simplified);
        sheet.size = table_.getSymbolicDims(sheet.sizeId).toString();
    }
    const auto [entry, isFirst] = firstOf_.try_emplace(reading.simplified, sheets_.size());
    if (!isFirst) {
        sheet.equal = entry->second;
    }
    sheets_.push_back(std::move(sheet));
}

} // namespace tvtool::dims
