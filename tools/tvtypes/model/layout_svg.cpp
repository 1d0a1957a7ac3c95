// Memory maps as a picture.
#include "model/memory_map.h"
#include "output/svg.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace tvtool::model {

namespace {

// Lengths are in pixels.
constexpr double margin = 24;
constexpr double scaleWidth = 64;
constexpr double columnWidth = 130;
constexpr double leafWidth = 300;
constexpr double headHeight = 52;
constexpr double gap = 40;
constexpr double tickLength = 5;
constexpr double tickDistance = 24;

constexpr double highestByte = 16;
constexpr double highestMap = 1500;
constexpr double lowestBox = 2;
constexpr double highestPicture = 10000;
constexpr int deepestLevel = 8;

constexpr int noLevel = std::numeric_limits<int>::max();

/// Draws one struct.
class MapPicture {
  public:
    MapPicture(const StructMap& map, double top, output::Svg& svg)
        : map_(map),
          svg_(svg),
          top_(top + headHeight),
          byteHeight_(std::min(highestByte, highestMap / std::max(map.size, 1))) {
        for (const LayoutRow& row : map.rows) {
            levels_ = std::max(levels_, std::min(row.depth, deepestLevel));
            nodes_ += row.kind == RowKind::Padding ? 0 : 1;
        }
    }

    void draw() {
        svg_.text(margin, top_ - 30, "title", map_.heading());
        svg_.text(margin, top_ - 12, "note", map_.summary() + "; padding is hatched");
        drawScale();
        for (const LayoutRow& row : map_.rows) {
            drawRow(row);
        }
        drawBand();
        bottom_ = y(map_.size) + 8;
        if (hidden_ > 0) {
            svg_.text(left(0), bottom_ + 14, "note",
                      fmt::format("{} of {} nodes are too small or too deep to be drawn", hidden_,
                                  nodes_));
            bottom_ += 18;
        }
    }

    double bottom() const { return bottom_; }
    double right() const { return left(levels_) + leafWidth + margin; }

  private:
    static double left(int level) { return margin + scaleWidth + columnWidth * level; }
    double height(int bytes) const { return bytes * byteHeight_; }
    double y(int offset) const { return top_ + height(offset); }

    /// A box that contains no other extends to the right edge.
    output::Box box(int level, int offset, int size, bool isInnermost) const {
        return {left(level), y(offset),
                isInnermost ? left(levels_) + leafWidth - left(level) : columnWidth, height(size)};
    }

    void drawScale() {
        long long step = 1;
        while (static_cast<double>(step) * byteHeight_ < tickDistance) {
            step *= 2;
        }
        const double right = left(0) - 4;
        const auto drawTick = [&](int offset) {
            svg_.line(right - tickLength, y(offset), right, y(offset));
            svg_.text(right - tickLength - 3, y(offset) + 4, "tick", std::to_string(offset));
        };
        for (long long offset = 0; offset + step / 2 < map_.size; offset += step) {
            drawTick(static_cast<int>(offset));
        }
        drawTick(map_.size);
        svg_.line(right, top_, right, y(map_.size));
    }

    void drawRow(const LayoutRow& row) {
        const bool isPadding = row.kind == RowKind::Padding;
        const bool isSkipped = row.depth > skippedBelow_;
        if (isSkipped || height(row.size) < lowestBox) {
            hidden_ += isPadding ? 0 : 1;
            if (!isSkipped) {
                addToBand(row);
            }
            return;
        }
        drawBand();
        const bool isDeepest = row.kind != RowKind::Leaf && !isPadding && row.depth == deepestLevel;
        skippedBelow_ = isDeepest ? row.depth : noLevel;
        const output::Box bounds = box(row.depth, row.offset, row.size,
                                       row.kind == RowKind::Leaf || isPadding || isDeepest);
        const std::string bytes = fmt::format("offset {}, {} bytes", row.offset, row.size);
        if (isPadding) {
            svg_.rectangle(bounds, kindName(row.kind), "padding, " + bytes);
            return;
        }
        const bool isRoot = row.depth == 0;
        svg_.rectangle(bounds, kindName(row.kind),
                       fmt::format("{} {}, {}", isRoot ? map_.path : row.path, row.type, bytes));
        svg_.label(bounds, isRoot ? map_.path : row.name, isRoot ? std::string() : row.type);
    }

    /// Adds a row to the band of adjacent rows of one level that are too low to be drawn one by
    /// one.
    void addToBand(const LayoutRow& row) {
        if (row.depth != bandLevel_) {
            drawBand();
            bandLevel_ = row.depth;
            bandOffset_ = row.offset;
        }
        bandEnd_ = row.offset + row.size;
        skippedBelow_ = row.depth;
    }

    void drawBand() {
        if (bandLevel_ != noLevel) {
            const int size = bandEnd_ - bandOffset_;
            svg_.rectangle(box(bandLevel_, bandOffset_, size, true), "thin",
                           fmt::format("offset {}, {} bytes, too thin to be drawn one by one",
                                       bandOffset_, size));
            bandLevel_ = noLevel;
        }
    }

    const StructMap& map_;
    output::Svg& svg_;
    double top_;
    double byteHeight_;
    double bottom_ = 0;
    int levels_ = 0;
    std::size_t nodes_ = 0;
    std::size_t hidden_ = 0;     ///< number of nodes that are not drawn
    int skippedBelow_ = noLevel; ///< rows of deeper levels are not drawn
    int bandLevel_ = noLevel;    ///< noLevel if there is no band
    int bandOffset_ = 0;
    int bandEnd_ = 0;
};

} // namespace

void drawLayout(const MemoryMaps& maps, std::ostream& os) {
    output::Svg svg;
    double top = margin / 2;
    double width = 0;
    std::size_t drawn = 0;
    for (; drawn < maps.structs.size() && top <= highestPicture; ++drawn) {
        MapPicture picture(maps.structs[drawn], top, svg);
        picture.draw();
        width = std::max(width, picture.right());
        top = picture.bottom() + gap;
    }
    if (const std::size_t left = maps.structs.size() - drawn; left > 0) {
        svg.text(margin, top, "note",
                 fmt::format("{} more struct types have no room in this picture; name one to see "
                             "it alone",
                             left));
        top += gap;
    }
    os << svg.document(width, top - gap + margin);
}

} // namespace tvtool::model
