/// \file
/// Pictures in SVG.
#pragma once

#include <string>
#include <string_view>

namespace tvtool::output {

struct Box {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

/// A document of shapes, which are drawn in the order of the calls. Lengths are in pixels. Texts
/// may contain any bytes.
class Svg {
  public:
    /// Adds a rectangle. `style` is a class of the style sheet; `title` is shown at the pointer.
    void rectangle(const Box& box, std::string_view style, std::string_view title);
    void line(double x1, double y1, double x2, double y2);
    void text(double x, double y, std::string_view style, std::string_view content);
    /// Adds a name and, in a lighter colour, a detail after it or, if the box is high enough, below
    /// it. Both are cut off at the edges of the box; nothing is added if the box is too low.
    void label(const Box& box, std::string_view name, std::string_view detail);

    /// Returns the document, with a style sheet.
    std::string document(double width, double height) const;

  private:
    std::string shapes_;
};

} // namespace tvtool::output
