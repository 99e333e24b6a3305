#include <ORMIXGeometry/Entity/2d/Arc/CircularArcOf.h>
#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Tools/Svg/SvgShape.h>

#include <algorithm>
#include <array>
#include <boost/archive/iterators/base64_from_binary.hpp>
#include <boost/archive/iterators/transform_width.hpp>
#include <cmath>

namespace ormix::geom::detail {

namespace {

template <class T>
std::vector<SvgPoint> toReal(const std::vector<Point2dData<T>>& points) {
  std::vector<SvgPoint> result;
  result.reserve(points.size());
  for (const Point2dData<T>& point : points) result.push_back(cast<omReal64>(point));
  return result;
}

SvgPath closedPath(const SvgPoint& a, const SvgPoint& b, const SvgPoint& c, const SvgPoint& d) {
  return {{{a, b, c, d, a}}};
}

template <class Quadrangle>
SvgPath corners(const Quadrangle& entity) {
  return closedPath(entity.topLeftCorner(), entity.topRightCorner(), entity.bottomRightCorner(),
                    entity.bottomLeftCorner());
}

/// The shape of an entity, an overload for each class of PlanarEntityList.
/// @{
template <class Entity>
SvgShape shapeOf(const Entity&) {
  static_assert(sizeof(Entity*) == 0,
                "an entity of the plane cannot be drawn: add an overload of shapeOf in Tools/Svg/SvgShape.cpp");
  return {};
}
template <class T>
SvgShape shapeOf(const Point2d<T>& point) {
  return SvgDots{{cast<omReal64>(point.getCoords())}};
}
template <class T>
SvgShape shapeOf(const PointCloud2d<T>& cloud) {
  return SvgDots{toReal(cloud.getCollection())};
}
template <class T>
SvgShape shapeOf(const BoundingBox2d<T>& box) {
  const SvgPoint low = cast<omReal64>(box.getMinCornerPt());
  const SvgPoint high = cast<omReal64>(box.getMaxCornerPt());
  return closedPath(low, {high.getX(), low.getY()}, high, {low.getX(), high.getY()});
}
template <class T>
SvgShape shapeOf(const Segment2d<T>& segment) {
  return SvgPath{{{cast<omReal64>(segment.getPoint0()), cast<omReal64>(segment.getPoint1())}}};
}
template <class T>
SvgShape shapeOf(const Circle2d<T>& circle) {
  const omReal64 radius = std::abs(static_cast<omReal64>(circle.getRadius()));
  return SvgEllipse{cast<omReal64>(circle.center()), radius, radius, 0};
}
template <class T>
SvgShape shapeOf(const Ellipse2d<T>& ellipse) {
  return SvgEllipse{cast<omReal64>(ellipse.center()), std::abs(static_cast<omReal64>(ellipse.getMajorRadius())),
                    std::abs(static_cast<omReal64>(ellipse.getMinorRadius())), ellipse.getTheta()};
}
template <class T>
SvgShape shapeOf(const Arc2d<T>& entity) {
  const CircularArc arc = circularArcOf(entity);
  return SvgArc{{arc.center.x, arc.center.y}, arc.radius, arc.start, arc.sweep};
}
template <class T>
SvgShape shapeOf(const Square2d<T>& square) {
  return corners(square);
}
template <class T>
SvgShape shapeOf(const Rectangle2d<T>& rectangle) {
  return corners(rectangle);
}
template <class T>
SvgShape shapeOf(const Polygon2d<T>& polygon) {
  return SvgPath{{toReal(polygon.getPointColl())}};
}
template <class T>
void appendRings(const PolygonWithHoles2d<T>& root, SvgPath& path) {
  // Not recursive: deep trees would exhaust the call stack.
  std::vector<const PolygonWithHoles2d<T>*> open{&root};
  while (!open.empty()) {
    const PolygonWithHoles2d<T>& node = *open.back();
    open.pop_back();
    path.runs.push_back(toReal(node.getExteriorPolygon().getPointColl()));
    for (const auto& hole : node.getPolygonHoles())
      if (hole) open.push_back(hole.get());
  }
}
template <class T>
SvgShape shapeOf(const PolygonWithHoles2d<T>& root) {
  SvgPath path;
  appendRings(root, path);
  return path;
}
SvgShape shapeOf(const Shape2d& shape) {
  SvgPath path;
  for (const auto& polygon : shape.getPolygonWithHolesColl())
    if (polygon) appendRings(*polygon, path);
  return path;
}
SvgShape shapeOf(const SkeletonVertex2d& vertex) { return SvgDots{{vertex.getPoint()}}; }
SvgShape shapeOf(const Skeleton2d& skeleton) {
  SvgCurves shape;
  shape.curves.reserve(skeleton.getNbEdges());
  for (std::size_t e = 0; e < skeleton.getNbEdges(); ++e) {
    const AxisCurve curve = skeleton.getCurve(e);
    const PlanarPoint start = curve.point(0), control = curve.control(), end = curve.point(1);
    shape.curves.push_back({{{start.x, start.y}, {control.x, control.y}, {end.x, end.y}}});
  }
  return shape;
}
SvgShape shapeOf(const Vector2d& vector) { return svgArrow(vector, {}); }
SvgShape shapeOf(const Line2d& line) {
  return SvgLine{line.getNearestPointFromOrigin(), {-line.getSinTheta(), line.getCosTheta()}};
}
SvgShape shapeOf(const Parabola2d& parabola) {
  const Line2d& directrix = parabola.getDirectrix();
  const SvgPoint normal(directrix.getCosTheta(), directrix.getSinTheta());
  // With the focus on the directrix, the points at equal distances from both are the perpendicular through the focus.
  if (parabola.isDegenerated()) return SvgLine{parabola.getFocus(), normal};
  const omReal64 side = directrix.signedDistance(parabola.getFocus()) < 0 ? -1 : 1;
  return SvgParabola{parabola.getVertex(), {side * normal.getX(), side * normal.getY()}, parabola.getFocalLength()};
}
/// @}

/// Adds points whose bounding box is that of the shape; of an unbounded shape some of its points, see SvgExtent.
struct AddToExtent {
  SvgExtent& extent;

  void operator()(const SvgPath& path) const {
    for (const auto& run : path.runs)
      for (const SvgPoint& point : run) extent.add(point);
  }
  void operator()(const SvgCurves& shape) const {
    // The control points may lie outside of the box of the curves, by little.
    for (const auto& curve : shape.curves)
      for (const SvgPoint& point : curve) extent.add(point);
  }
  void operator()(const SvgDots& dots) const {
    for (const SvgPoint& point : dots.points) extent.add(point);
  }
  void operator()(const SvgEllipse& ellipse) const {
    // The half sizes of the ellipse's own bounding box.
    const omReal64 cosTheta = std::cos(ellipse.theta), sinTheta = std::sin(ellipse.theta);
    const omReal64 width = std::hypot(ellipse.a * cosTheta, ellipse.b * sinTheta);
    const omReal64 height = std::hypot(ellipse.a * sinTheta, ellipse.b * cosTheta);
    extent.add({ellipse.center.getX() - width, ellipse.center.getY() - height});
    extent.add({ellipse.center.getX() + width, ellipse.center.getY() + height});
  }
  void operator()(const SvgArc& shape) const {
    const CircularArc arc{{shape.center.getX(), shape.center.getY()}, shape.radius, shape.start, shape.sweep};
    const auto add = [this](const PlanarPoint& point) { extent.add({point.x, point.y}); };
    add(pointAt(arc, arc.start));
    add(pointAt(arc, arc.start + arc.sweep));
    for (const PlanarPoint& side : {PlanarPoint{1, 0}, {0, 1}, {-1, 0}, {0, -1}})
      if (hasDirection(arc, side)) add({arc.center.x + arc.radius * side.x, arc.center.y + arc.radius * side.y});
  }
  void operator()(const SvgImage& image) const {
    extent.add(image.low);
    extent.add(image.high);
  }
  void operator()(const SvgLine& line) const {
    // The direction is added so that NaN in it is detected; it moves the point by a unit at most, which does not matter
    // where only unbounded shapes are drawn.
    extent.add({line.point.getX() + line.direction.getX(), line.point.getY() + line.direction.getY()});
  }
  void operator()(const SvgParabola& parabola) const {
    extent.add(parabola.vertex);
    extent.add({parabola.vertex.getX() + parabola.focalLength * parabola.axis.getX(),
                parabola.vertex.getY() + parabola.focalLength * parabola.axis.getY()});
  }
};

}  // namespace

std::optional<SvgShape> svgShape(const BaseGeometryEntity2d& entity) {
  std::optional<SvgShape> shape;
  callTyped(PlanarEntityList(), entity, [&shape](const auto& typed) {
    shape = shapeOf(typed);
    return true;
  });
  return shape;
}

SvgShape svgArrow(const Vector2d& vector, const SvgPoint& anchor) {
  // The head consists of two segments of 15 % of the length, at 25 degrees to the shaft.
  constexpr omReal64 along = 0.15 * 0.9063077870366499;
  constexpr omReal64 across = 0.15 * 0.42261826174069944;
  const omReal64 x = vector.getX(), y = vector.getY();
  const SvgPoint tip(anchor.getX() + x, anchor.getY() + y);
  const SvgPoint left(tip.getX() - along * x - across * y, tip.getY() - along * y + across * x);
  const SvgPoint right(tip.getX() - along * x + across * y, tip.getY() - along * y - across * x);
  return SvgPath{{{anchor, tip}, {left, tip, right}}};
}

SvgShape svgPixels(const RowIntersections& pixels) {
  SvgPath path;
  path.runs.reserve(pixels.getRunColl().size());
  for (omUInt64 row = pixels.getStartRow(); row < pixels.getEndRow(); ++row) {
    const auto top = static_cast<omReal64>(row);
    for (const PixelRun& run : pixels.getRow(row)) {
      const omReal64 left = run.begin, right = run.end;
      path.runs.push_back({{left, top}, {right, top}, {right, top + 1}, {left, top + 1}, {left, top}});
    }
  }
  return path;
}

std::optional<SvgShape> svgImage(std::string_view file, const SvgPoint& low, const SvgPoint& high) {
  using boost::archive::iterators::base64_from_binary;
  using boost::archive::iterators::transform_width;
  using Base64 = base64_from_binary<transform_width<const char*, 6, 8>>;
  constexpr std::string_view png = "\x89PNG\r\n\x1a\n", jpeg = "\xff\xd8\xff";
  const bool isPng = file.substr(0, png.size()) == png;
  if (!isPng && file.substr(0, jpeg.size()) != jpeg) return std::nullopt;
  SvgImage image{low, high, isPng ? "image/png" : "image/jpeg", {}};
  // Whole triples of bytes at once; the rest is filled up with zeros, which its padding stands for.
  const std::size_t nbRest = file.size() % 3;
  const char* const end = file.data() + file.size() - nbRest;
  image.base64.assign(Base64(file.data()), Base64(end));
  if (nbRest != 0) {
    std::array<char, 3> rest{};
    std::copy(end, end + nbRest, rest.begin());
    const std::string last(Base64(rest.data()), Base64(rest.data() + rest.size()));
    image.base64 += last.substr(0, nbRest + 1) + std::string(3 - nbRest, '=');
  }
  return image;
}

void SvgExtent::add(const SvgPoint& point) {
  const omReal64 x = point.getX(), y = point.getY();
  _finite = _finite && std::isfinite(x) && std::isfinite(y);
  xMin = _seen ? std::min(xMin, x) : x;
  xMax = _seen ? std::max(xMax, x) : x;
  yMin = _seen ? std::min(yMin, y) : y;
  yMax = _seen ? std::max(yMax, y) : y;
  _seen = true;
}

void SvgExtent::add(const SvgShape& shape) { std::visit(AddToExtent{*this}, shape); }

bool SvgExtent::isFinite() const { return _finite && std::isfinite(xMax - xMin) && std::isfinite(yMax - yMin); }

bool isEndless(const SvgShape& shape) {
  return std::holds_alternative<SvgLine>(shape) || std::holds_alternative<SvgParabola>(shape);
}

}  // namespace ormix::geom::detail
