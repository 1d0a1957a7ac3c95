#include "model/layout_svg.h"

#include "output/svg.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace tvtool::model {

namespace {

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

/// One struct as a picture.
class MapPicture {
  public:
    MapPicture(const StructMap& map, double top, output::Svg& svg)
        : map_(map),
          svg_(svg),
          top_(top + headHeight),
          byteHeight_(std::min(highestByte, highestMap / std::max(map.size, 1))) {
        for (const LayoutRow& row : map.rows) {
            levels_ = std::max(levels_, std::min(row.depth, deepestLevel));
        }
    }

    void draw() {
        svg_.text(margin, top_ - 30, "title", map_.name);
        const std::string path = map_.originalName.empty() ? "" : map_.originalName + ": ";
        svg_.text(margin, top_ - 12, "note", path + map_.summary() + "; padding is hatched");
        drawScale();
        for (const LayoutRow& row : map_.rows) {
            drawRow(row);
        }
        endRun();
        drawNotes();
    }

    double bottom() const { return bottom_; }
    double right() const { return leftOf(levels_) + leafWidth + margin; }

  private:
    static double leftOf(int level) { return margin + scaleWidth + columnWidth * level; }
    double heightOf(int bytes) const { return bytes * byteHeight_; }

    /// What holds nothing that is drawn reaches to the right edge.
    output::Box boxOf(int level, int offset, int size, bool isInnermost) const {
        const double left = leftOf(level);
        return {left, top_ + heightOf(offset),
                isInnermost ? leftOf(levels_) + leafWidth - left : columnWidth, heightOf(size)};
    }

    void drawScale() {
        long long step = 1;
        while (static_cast<double>(step) * byteHeight_ < tickDistance) {
            step *= 2;
        }
        const double right = leftOf(0) - 4;
        const auto tick = [&](int offset) {
            const double y = top_ + heightOf(offset);
            svg_.line(right - tickLength, y, right, y);
            svg_.text(right - tickLength - 3, y + 4, "tick", std::to_string(offset));
        };
        for (long long offset = 0; offset + step / 2 < map_.size; offset += step) {
            tick(static_cast<int>(offset));
        }
        tick(map_.size);
        svg_.line(right, top_, right, top_ + heightOf(map_.size));
        bottom_ = top_ + heightOf(map_.size) + 8;
    }

    void drawRow(const LayoutRow& row) {
        if (row.depth > skippedFrom_) {
            hidden_ += row.kind == RowKind::Padding ? 0 : 1;
            return;
        }
        skippedFrom_ = std::numeric_limits<int>::max();
        const bool isStruct = row.kind == RowKind::Struct || row.kind == RowKind::StructArray;
        const bool isDeepest = isStruct && row.depth == deepestLevel;
        if (heightOf(row.size) < lowestBox) {
            addToRun(row);
            return;
        }
        endRun();
        if (isDeepest) {
            skippedFrom_ = row.depth;
        }
        const output::Box box = boxOf(row.depth, row.offset, row.size, !isStruct || isDeepest);
        const std::string bytes = fmt::format("offset {}, {} bytes", row.offset, row.size);
        if (row.kind == RowKind::Padding) {
            svg_.rectangle(box, kindName(row.kind), "padding, " + bytes);
            return;
        }
        const bool isRoot = row.depth == 0;
        svg_.rectangle(box, kindName(row.kind),
                       fmt::format("{} {}, {}", isRoot ? "struct" : row.path, row.type, bytes));
        svg_.label(box, isRoot ? map_.name : row.name, isRoot ? std::string() : row.type);
    }

    /// Neighbours that are too thin to be told apart become one band.
    void addToRun(const LayoutRow& row) {
        if (runCount_ > 0 && row.depth != runLevel_) {
            endRun();
        }
        runOffset_ = runCount_ == 0 ? row.offset : runOffset_;
        runLevel_ = row.depth;
        runEnd_ = row.offset + row.size;
        ++runCount_;
        skippedFrom_ = row.depth;
        hidden_ += row.kind == RowKind::Padding ? 0 : 1;
    }

    void endRun() {
        if (runCount_ > 0) {
            svg_.rectangle(boxOf(runLevel_, runOffset_, runEnd_ - runOffset_, true), "thin",
                           fmt::format("offset {}, {} bytes, too thin to be drawn one by one",
                                       runOffset_, runEnd_ - runOffset_));
            runCount_ = 0;
        }
    }

    void drawNotes() {
        if (hidden_ > 0) {
            bottom_ += 14;
            svg_.text(leftOf(0), bottom_, "note",
                      fmt::format("{} of {} nodes are too small or too deep to be drawn", hidden_,
                                  nodes()));
            bottom_ += 4;
        }
    }

    std::size_t nodes() const {
        return static_cast<std::size_t>(std::ranges::count_if(
            map_.rows, [](const LayoutRow& row) { return row.kind != RowKind::Padding; }));
    }

    const StructMap& map_;
    output::Svg& svg_;
    double top_;
    double byteHeight_; ///< pixels
    double bottom_ = 0;
    int levels_ = 0;
    std::size_t hidden_ = 0;
    int skippedFrom_ = std::numeric_limits<int>::max(); ///< what lies deeper is left out
    std::size_t runCount_ = 0;
    int runLevel_ = 0;
    int runOffset_ = 0;
    int runEnd_ = 0;
};

} // namespace

void drawLayout(const MemoryMaps& maps, std::ostream& os) {
    output::Svg svg;
    double top = margin / 2;
    double width = 0;
    std::size_t drawn = 0;
    for (const StructMap& map : maps.structs) {
        if (top > highestPicture) {
            break;
        }
        MapPicture picture(map, top, svg);
        picture.draw();
        width = std::max(width, picture.right());
        top = picture.bottom() + gap;
        ++drawn;
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
