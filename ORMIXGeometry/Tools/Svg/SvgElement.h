#pragma once

#include <ORMIXGeometry/Tools/Svg/SvgClip.h>

#include <string>
#include <string_view>

namespace ormix::geom {

/// Maps the view to pixels: the same scale on both axes, y turned round.
struct SvgFrame {
  SvgView view;
  omReal64 scale;

  omReal64 width() const { return (view.xMax - view.xMin) * scale; }
  omReal64 height() const { return (view.yMax - view.yMin) * scale; }
  SvgPoint toPixels(const SvgPoint& point) const {
    return {(point.getX() - view.xMin) * scale, (view.yMax - point.getY()) * scale};
  }
};

/// Collects the text of SVG elements; remembers a number that cannot be written.
class SvgElement {
 public:
  SvgElement& operator<<(std::string_view text) { return _text += text, *this; }
  /// Rounded to a thousandth; no exponent for what is near a picture, never a locale's decimal comma.
  SvgElement& operator<<(omReal64 number);
  /// Two numbers, a blank between.
  SvgElement& operator<<(const SvgPoint& point) { return *this << point.getX() << " " << point.getY(); }
  /// As an attribute's value or an element's content: markup and control characters replaced.
  SvgElement& escaped(std::string_view text);

  const std::string& text() const { return _text; }
  bool isFinite() const { return _finite; }

 private:
  std::string _text;
  bool _finite = true;
};

}  // namespace ormix::geom
