#pragma once

#include <ORMIXGeometry/Tools/Svg/SvgClip.h>

#include <string>
#include <string_view>

namespace ormix::geom::detail {

/// The map from the view to pixels: the same scale on both axes. In pixels y is downward.
struct SvgFrame {
  SvgView view;        ///< what is shown
  omReal64 scale;      ///< pixels for a unit of the coordinates
  bool yDown = false;  ///< whether y is downward in the view too

  /// Size of the picture, or the place of a point in it, in pixels from the upper left corner.
  /// @{
  omReal64 width() const { return (view.xMax - view.xMin) * scale; }
  omReal64 height() const { return (view.yMax - view.yMin) * scale; }
  SvgPoint toPixels(const SvgPoint& point) const {
    return {(point.getX() - view.xMin) * scale, (yDown ? point.getY() - view.yMin : view.yMax - point.getY()) * scale};
  }
  /// @}
};

/// A finite number with six digits, for people, whatever the locale.
std::string shortNumber(omReal64 number);

/// The text of SVG elements, to which texts and numbers are appended.
class SvgElement {
 public:
  /// Appends a text as it is.
  SvgElement& operator<<(std::string_view text) { return _text += text, *this; }
  /// Appends a number rounded to a thousandth, in fixed notation unless it is very large, and with a decimal point
  /// whatever the locale.
  SvgElement& operator<<(omReal64 number);
  /// Appends x and y, separated by a blank.
  SvgElement& operator<<(const SvgPoint& point) { return *this << point.getX() << " " << point.getY(); }
  /// Appends the value of an attribute or the content of an element: characters of markup and characters that XML does
  /// not allow are replaced.
  SvgElement& escaped(std::string_view text);

  /// Everything appended so far.
  const std::string& text() const { return _text; }
  /// False when a number was NaN or infinite, which SVG cannot express.
  bool isFinite() const { return _finite; }

 private:
  std::string _text;
  bool _finite = true;
};

}  // namespace ormix::geom::detail
