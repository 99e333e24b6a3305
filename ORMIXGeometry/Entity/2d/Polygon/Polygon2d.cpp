#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2dPrivateUtils.h>
#include <ORMIXGeometry/Entity/PointCollection.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <ostream>

namespace ormix::geom {

namespace {

/// Makes the end vertices equal where closePolygon() says so; for at least three points.
template <class T>
void mergeEndsOfEqualX(std::vector<Point2dData<T>>& points) {
  const T endX = points.front().getX();
  if (points.back().getX() != endX) return;
  // Only x is compared, and the second comparison follows the first assignment: both intended.
  if (points[points.size() - 2].getX() == endX) points.back() = points.front();
  if (points[1].getX() == endX) points.front() = points.back();
}

}  // namespace

template <class T>
std::ostream& operator<<(std::ostream& stream, const Polygon2d<T>& polygon) {
  return detail::printPoints(stream, polygon.getPointColl());
}

template <class T>
bool isClosed(const Polygon2d<T>& polygon) {
  const auto& points = polygon.getPointColl();
  return points.size() >= 2 && points.front() == points.back();
}

template <class T>
void closePolygon(Polygon2d<T>& polygon) {
  auto& points = polygon.getPointColl();
  if (points.empty()) return;
  if (points.size() >= 3) mergeEndsOfEqualX(points);
  if (points.size() == 1 || points.back() != points.front()) points.push_back(points.front());
}

template <class T>
void fromString(Polygon2d<T>& polygon, const std::string& text) {
  polygon.clear();
  try {
    detail::readRing(text, polygon.getPointColl());
  } catch (...) {
    polygon.clear();
    throw;
  }
  closePolygon(polygon);
}

template <class TOut, class TIn>
Polygon2d<TOut> cast(const Polygon2d<TIn>& polygon) {
  Polygon2d<TOut> result;
  cast(polygon, result);
  return result;
}

template <class TOut, class TIn>
void cast(const Polygon2d<TIn>& polygon, Polygon2d<TOut>& result) {
  detail::castPoints(polygon.getPointColl(), result.getPointColl());
  result.setPolygon2dType(polygon.getPolygon2dType());
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(Polygon2d)
ORMIX_GEOMETRY_INSTANTIATE_CASTS(Polygon2d)
#define ORMIX_GEOMETRY_INSTANTIATE_POLYGON(T)                     \
  template ORMIX_GEOMETRY_API bool isClosed(const Polygon2d<T>&); \
  template ORMIX_GEOMETRY_API void closePolygon(Polygon2d<T>&);   \
  template ORMIX_GEOMETRY_API void fromString(Polygon2d<T>&, const std::string&);
ORMIX_GEOMETRY_INSTANTIATE_POLYGON(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_POLYGON(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_POLYGON(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_POLYGON(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_POLYGON

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(, Polygon2d)
