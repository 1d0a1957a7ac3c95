/// \file
/// The few shapes of which pictures are made.
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

/// A text of any characters as the content of an XML element.
std::string xmlText(std::string_view text);

/// Collects shapes from top to bottom, sized in pixels. Texts are any texts.
class Svg {
  public:
    /// A rectangle of a class of the style sheet; `title` shows where the pointer rests on it.
    void rectangle(const Box& box, std::string_view style, std::string_view title);
    void line(double x1, double y1, double x2, double y2);
    void text(double x, double y, std::string_view style, std::string_view content);
    /// A name with something lighter behind it or, where there is room, below it, cut off at the
    /// edges of a box. Nothing where the box is too low for any.
    void label(const Box& box, std::string_view name, std::string_view detail);

    /// The whole document, in a style sheet of its own.
    std::string document(double width, double height) const;

  private:
    std::string shapes_;
};

} // namespace tvtool::output
