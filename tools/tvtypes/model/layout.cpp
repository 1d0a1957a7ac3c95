#include "model/layout.h"

#include "model/inspection_text.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <string>

namespace tvtool::model {

const char* nameOf(RowKind kind) {
    switch (kind) {
    case RowKind::Struct:
        return "struct";
    case RowKind::StructArray:
        return "structArray";
    case RowKind::Leaf:
        return "leaf";
    case RowKind::Padding:
        return "padding";
    }
    return "";
}

std::string summaryOf(const StructMap& map) {
    const auto count = [](int number, const char* one, const char* many) {
        return text::counted(static_cast<std::size_t>(number), one, many);
    };
    long long padding = 0;
    for (const LayoutRow& row : map.rows) {
        padding += row.kind == RowKind::Padding ? row.size : 0;
    }
    return fmt::format(
        "{}, {} of padding, aligned to {}; {}, {}, {}", count(map.size, "byte", "bytes"),
        padding == 0 ? "none" : std::to_string(padding), map.alignment,
        count(map.elements, "element", "elements"), count(map.leaves, "leaf", "leaves"),
        count(map.scalars, "scalar", "scalars"));
}

} // namespace tvtool::model
