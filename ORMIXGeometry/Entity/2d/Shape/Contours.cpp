#include <ORMIXGeometry/Entity/2d/Shape/ContourRings.h>
#include <ORMIXGeometry/Entity/2d/Shape/Contours.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <algorithm>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <limits>
#include <string>
#include <type_traits>

namespace ormix::geom {

namespace {

template <class T>
using PolygonPtr = boost::shared_ptr<PolygonWithHoles2d<T>>;

using detail::ContourRings;

/// Up to here T holds every whole number.
template <class T>
constexpr omUInt64 largestOfAllWholeNumbers() {
  return std::is_integral_v<T> ? static_cast<omUInt64>(std::numeric_limits<T>::max())
                               : omUInt64{1} << std::numeric_limits<T>::digits;
}

template <class T>
bool isHeld(omUInt64 coordinate) {
  constexpr omUInt64 limit = largestOfAllWholeNumbers<T>();
  if (coordinate <= limit || std::is_integral_v<T>) return coordinate <= limit;
  // A real with n digits holds a larger number if at most the first n of its bits are not zero.
  const omUInt64 lowestBit = coordinate & (~coordinate + 1);
  return coordinate / lowestBit < limit;
}

template <class T>
void checkHeld(const char* axis, omUInt64 coordinate) {
  if (!isHeld<T>(coordinate))
    logAndThrow("Contours cannot be traced: the coordinate " + std::string(axis) + " = " + std::to_string(coordinate) +
                    " is not held exactly by " + PolygonWithHoles2d<T>().getClassName(),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

/// Looks at each corner only where coordinates are beyond the whole numbers of T.
template <class T>
void checkCorners(const RowIntersections& rows, const ContourRings& contours) {
  omUInt64 largest = rows.getEndRow();
  for (const PixelRun& run : rows.getRunColl()) largest = std::max<omUInt64>(largest, run.end);
  if (largest <= largestOfAllWholeNumbers<T>()) return;
  const std::size_t nbCorners = contours.rings.empty() ? 0 : contours.rings.back().end;
  for (std::size_t i = 0; i < nbCorners; ++i) {
    checkHeld<T>("x", contours.corners[i].x);
    checkHeld<T>("y", contours.startRow + contours.corners[i].y);
  }
}

/// The corners of one ring, closed.
template <class T>
PolygonPtr<T> makePolygon(const ContourRings& contours, const ContourRings::Ring& ring) {
  PolygonPtr<T> polygon = boost::make_shared<PolygonWithHoles2d<T>>();
  Polygon2d<T>& exterior = polygon->getExteriorPolygon();
  exterior.setPolygon2dType(ring.isHole ? eP2DT_Interior : eP2DT_Exterior);
  auto& points = exterior.getPointColl();
  points.reserve(ring.end - ring.begin + 1);
  for (std::size_t i = ring.begin; i < ring.end; ++i) {
    const detail::PixelCorner& corner = contours.corners[i];
    points.emplace_back(static_cast<T>(corner.x), static_cast<T>(contours.startRow + corner.y));
  }
  points.push_back(points.front());
  return polygon;
}

}  // namespace

template <class T>
std::vector<PolygonPtr<T>> traceContours(const RowIntersections& rows, ePixelConnectivity connectivity) {
  const ContourRings contours = detail::traceRings(rows, connectivity);
  checkCorners<T>(rows, contours);
  std::vector<PolygonPtr<T>> roots;
  std::vector<PolygonPtr<T>> polygons;
  polygons.reserve(contours.rings.size());
  // Parents stand before their holes.
  for (const ContourRings::Ring& ring : contours.rings) {
    polygons.push_back(makePolygon<T>(contours, ring));
    if (ring.parent == ContourRings::s_noParent) {
      roots.push_back(polygons.back());
      continue;
    }
    polygons[ring.parent]->getPolygonHoles().push_back(polygons.back());
    polygons.back()->setParent(polygons[ring.parent]);
  }
  return roots;
}

template ORMIX_GEOMETRY_API std::vector<PolygonPtr<omInt32>> traceContours<omInt32>(const RowIntersections&,
                                                                                    ePixelConnectivity);
template ORMIX_GEOMETRY_API std::vector<PolygonPtr<omUInt32>> traceContours<omUInt32>(const RowIntersections&,
                                                                                      ePixelConnectivity);
template ORMIX_GEOMETRY_API std::vector<PolygonPtr<omReal32>> traceContours<omReal32>(const RowIntersections&,
                                                                                      ePixelConnectivity);
template ORMIX_GEOMETRY_API std::vector<PolygonPtr<omReal64>> traceContours<omReal64>(const RowIntersections&,
                                                                                      ePixelConnectivity);

}  // namespace ormix::geom
