#include <ORMIXGeometry/Tools/Svg/SvgShapeElement.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom::detail {

namespace {

/// Writes the element of a shape and returns where its label is placed, in pixels; nothing if no part of it is visible.
class ShapeWriter {
 public:
  ShapeWriter(SvgElement& element, const SvgFrame& frame, const SvgStyle& style)
      : _element(element), _frame(frame), _style(style) {}

  std::optional<SvgPoint> operator()(const SvgPath& path) const {
    _element << "<path d=\"";
    for (const auto& run : path.runs) writeRun(run);
    _element << "\" fill-rule=\"evenodd\"";
    writeStyle();
    return middleOf(path);
  }

  std::optional<SvgPoint> operator()(const SvgCurves& shape) const {
    _element << "<path d=\"";
    for (const auto& [start, control, end] : shape.curves)
      _element << "M" << _frame.toPixels(start) << "Q" << _frame.toPixels(control) << " " << _frame.toPixels(end);
    _element << "\"";
    writeStyle();
    return middleOf(shape);
  }

  std::optional<SvgPoint> operator()(const SvgDots& dots) const {
    _element << "<g fill=\"";
    _element.escaped(_style.stroke) << "\">";
    for (const SvgPoint& point : dots.points) {
      const SvgPoint center = _frame.toPixels(point);
      _element << "<circle cx=\"" << center.getX() << "\" cy=\"" << center.getY() << "\" r=\"" << 2 * _style.width
               << "\"/>";
    }
    _element << "</g>\n";
    return middleOf(dots);
  }

  std::optional<SvgPoint> operator()(const SvgEllipse& ellipse) const {
    const SvgPoint center = _frame.toPixels(ellipse.center);
    _element << "<ellipse cx=\"" << center.getX() << "\" cy=\"" << center.getY() << "\" rx=\""
             << ellipse.a * _frame.scale << "\" ry=\"" << ellipse.b * _frame.scale << "\"";
    if (ellipse.theta != 0) {
      // Reduced modulo pi, by which an ellipse is symmetric, and negated where the y axis of pixels is not that of the
      // view.
      const omReal64 angle = std::remainder(ellipse.theta, s_pi) * (180 / s_pi);
      _element << " transform=\"rotate(" << (_frame.yDown ? angle : -angle) << " " << center << ")\"";
    }
    writeStyle();
    return center;
  }

  std::optional<SvgPoint> operator()(const SvgArc& arc) const {
    const auto at = [&arc, this](omReal64 angle) {
      return _frame.toPixels(
          {arc.center.getX() + arc.radius * std::cos(angle), arc.center.getY() + arc.radius * std::sin(angle)});
    };
    // By pieces of less than half a turn, which their ends determine.
    const int nbPieces = 1 + static_cast<int>(std::abs(arc.sweep) / 2.5);
    const bool isPositive = (arc.sweep > 0) == _frame.yDown;
    _element << "<path d=\"M" << at(arc.start);
    for (int piece = 1; piece <= nbPieces; ++piece)
      _element << "A" << arc.radius * _frame.scale << " " << arc.radius * _frame.scale << " 0 0 "
               << (isPositive ? "1 " : "0 ") << at(arc.start + arc.sweep * piece / nbPieces);
    _element << "\"";
    writeStyle();
    return at(arc.start + arc.sweep / 2);
  }

  std::optional<SvgPoint> operator()(const SvgImage& image) const {
    const SvgPoint first = _frame.toPixels(image.low), second = _frame.toPixels(image.high);
    _element << "<image x=\"" << first.getX() << "\" y=\"" << std::min(first.getY(), second.getY()) << "\" width=\""
             << second.getX() - first.getX() << "\" height=\"" << std::abs(second.getY() - first.getY())
             << "\" preserveAspectRatio=\"none\" style=\"image-rendering:pixelated\" href=\"data:" << image.mediaType
             << ";base64," << image.base64 << "\"/>\n";
    return std::nullopt;
  }

  std::optional<SvgPoint> operator()(const SvgLine& line) const {
    const auto ends = clipToView(line, _frame.view);
    if (!ends) return std::nullopt;
    const SvgPath path{{{ends->first, ends->second}}};
    return (*this)(path);
  }

  std::optional<SvgPoint> operator()(const SvgParabola& parabola) const {
    const std::vector<SvgBezier> arcs = clipToView(parabola, _frame.view);
    if (arcs.empty()) return std::nullopt;
    _element << "<path d=\"";
    for (const SvgBezier& arc : arcs)
      _element << "M" << _frame.toPixels(arc[0]) << "Q" << _frame.toPixels(arc[1]) << " " << _frame.toPixels(arc[2]);
    _element << "\"";
    writeStyle();
    // The point of the first arc at its middle parameter.
    const auto& [start, control, end] = arcs.front();
    return _frame.toPixels(
        {(start.getX() + 2 * control.getX() + end.getX()) / 4, (start.getY() + 2 * control.getY() + end.getY()) / 4});
  }

 private:
  void writeRun(const std::vector<SvgPoint>& run) const {
    const bool closed = run.size() > 2 && run.front() == run.back();
    const std::size_t count = run.size() - (closed ? 1 : 0);
    for (std::size_t index = 0; index < count; ++index)
      _element << (index == 0 ? "M" : index == 1 ? "L" : " ") << _frame.toPixels(run[index]);
    if (closed) _element << "Z";
  }

  void writeStyle() const {
    _element << " stroke=\"";
    _element.escaped(_style.stroke) << "\" fill=\"";
    _element.escaped(_style.fill) << "\" stroke-width=\"" << _style.width << "\"/>\n";
  }

  std::optional<SvgPoint> middleOf(const SvgShape& shape) const {
    SvgExtent extent;
    extent.add(shape);
    if (extent.isEmpty()) return std::nullopt;
    return _frame.toPixels(
        {extent.xMin + (extent.xMax - extent.xMin) / 2, extent.yMin + (extent.yMax - extent.yMin) / 2});
  }

  SvgElement& _element;
  const SvgFrame& _frame;
  const SvgStyle& _style;
};

}  // namespace

std::optional<SvgPoint> writeShape(SvgElement& element, const SvgShape& shape, const SvgFrame& frame,
                                   const SvgStyle& style) {
  return std::visit(ShapeWriter(element, frame, style), shape);
}

}  // namespace ormix::geom::detail
