#include <ORMIXGeometry/Entity/2d/Arc/CircularArcOf.h>
#include <ORMIXGeometry/Transform/2d/EnvelopeTransform2d.h>
#include <ORMIXGeometry/Transform/2d/PlanarParts.h>
#include <ORMIXGeometry/Transform/EnvelopeOf.h>
#include <ORMIXGeometry/Transform/DerivedTransform.ipp>

#include <cmath>

ORMIX_GEOMETRY_DERIVED_TRANSFORM2D_LEVELS(, EnvelopeTransform2d)

namespace ormix::geom {

namespace {

template <class T>
using Box = detail::GrowingBox<T, 2>;

template <class T>
std::array<T, 2> toArray(const Point2dData<T>& point) {
  return {point.getX(), point.getY()};
}

template <class T, class Entity>
bool grow(Box<T>& box, const Entity& entity) {
  return detail::visitRuns(entity, [&box](const T* xy, std::size_t nbPoints) { box.includeRun(xy, nbPoints); });
}

template <class T>
bool grow(Box<T>& box, const Circle2d<T>& circle) {
  const detail::HalfExtent radius{std::abs(omReal64(circle.getRadius())), true};
  box.setAround(toArray(circle.center()), {radius, radius});
  return true;
}

template <class T>
bool grow(Box<T>& box, const Ellipse2d<T>& ellipse) {
  const omReal64 c = ellipse.getCosTheta();
  const omReal64 s = ellipse.getSinTheta();
  const std::array<omReal64, 2> radii{omReal64(ellipse.getMajorRadius()), omReal64(ellipse.getMinorRadius())};
  box.setAround(toArray(ellipse.center()),
                {detail::ellipsoidHalfExtent<2>({c, s}, radii), detail::ellipsoidHalfExtent<2>({s, c}, radii)});
  return true;
}

template <class T, class Entity>
bool growTurned(Box<T>& box, const Entity& entity, const std::array<omReal64, 2>& halfSizes) {
  const omReal64 c = std::cos(entity.getOrientation());
  const omReal64 s = std::sin(entity.getOrientation());
  box.setAround(toArray(entity.center()),
                {detail::boxHalfExtent<2>({c, s}, halfSizes), detail::boxHalfExtent<2>({s, c}, halfSizes)});
  return true;
}

template <class T>
bool grow(Box<T>& box, const Square2d<T>& square) {
  const omReal64 half = omReal64(square.getHalfLength());
  return growTurned(box, square, {half, half});
}

template <class T>
bool grow(Box<T>& box, const Rectangle2d<T>& rectangle) {
  return growTurned(box, rectangle, {omReal64(rectangle.getHalfLength()), omReal64(rectangle.getHalfWidth())});
}

bool grow(Box<omReal32>& box, const Shape2d& shape) {
  if (!shape.getPolygonWithHolesColl().empty()) return grow<omReal32, Shape2d>(box, shape);
  Box<omReal64> pixels;
  detail::visitPixelRuns(shape, [&pixels](omReal64 x0, omReal64 x1, omReal64 y) {
    const omReal64 xy[] = {x0, y, x1, y + 1};
    pixels.includeRun(xy, 2);
  });
  box.setRounded(pixels);
  return true;
}

// The ends, and the outermost points of the circle in the directions that the arc passes.
template <class T>
bool grow(Box<T>& box, const Arc2d<T>& entity) {
  const CircularArc arc = detail::circularArcOf(entity);
  Box<omReal64> points;
  bool isTurned = false;
  for (const omReal64 angle : {arc.start, arc.start + arc.sweep}) {
    const PlanarPoint end = pointAt(arc, angle);
    const omReal64 xy[] = {end.x, end.y};
    points.includeRun(xy, 1);
    isTurned = isTurned || angle != 0;
  }
  for (const PlanarPoint& direction : {PlanarPoint{1, 0}, {0, 1}, {-1, 0}, {0, -1}}) {
    const omReal64 xy[] = {arc.center.x + arc.radius * direction.x, arc.center.y + arc.radius * direction.y};
    if (hasDirection(arc, direction)) points.includeRun(xy, 1);
  }
  const omReal64 size = std::abs(arc.center.x) + std::abs(arc.center.y) + arc.radius;
  box.setRounded(points, isTurned ? size * detail::s_turnError : 0);
  return true;
}

}  // namespace

template <class Entity>
bool EnvelopeTransform2d::derive(const Entity& entity, Result<Entity>& result) const {
  Box<CoordinateOf<Entity>> box;
  if (!grow(box, entity) || !box.hasAnswer()) return false;
  result.setCoords(box.low[0], box.low[1], box.high[0], box.high[1]);
  return true;
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::derivationsOfAll<EnvelopeTransform2d>(PlanarEntityList());
}  // namespace

}  // namespace ormix::geom
