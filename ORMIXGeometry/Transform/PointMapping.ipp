#pragma once

#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/ORMIXGeometryLogger.h>
#include <ORMIXGeometry/Transform/Preserved.h>
#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXMath/Transform/PointRun.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

// Points and lengths under a linear map, in the plane and in space.

namespace ormix::geom::detail {

template <class Math, class Type>
struct NamedMap {
  const Math& math;
  Type type;
};

template <class Math, class T>
bool applyTo(const Math& math, Point2dData<T>& point) {
  T x{};
  T y{};
  if (!math.apply(point.getX(), point.getY(), x, y)) return false;
  point.setCoords(x, y);
  return true;
}
template <class Math, class T>
bool applyTo(const Math& math, Point3dData<T>& point) {
  T x{};
  T y{};
  T z{};
  if (!math.apply(point.getX(), point.getY(), point.getZ(), x, y, z)) return false;
  point.setCoords(x, y, z);
  return true;
}

template <class T>
std::string undefinedImageText(const std::string& type, const Point2dData<T>& point) {
  return formatMessage<eTransformMessage>(eTransformMessage::eTM_Point2dFailed, type,
                                          static_cast<omReal64>(point.getX()), static_cast<omReal64>(point.getY()));
}
template <class T>
std::string undefinedImageText(const std::string& type, const Point3dData<T>& point) {
  return formatMessage<eTransformMessage>(eTransformMessage::eTM_Point3dFailed, type,
                                          static_cast<omReal64>(point.getX()), static_cast<omReal64>(point.getY()),
                                          static_cast<omReal64>(point.getZ()));
}

template <class Map, class Point>
bool reportUndefinedImage(const Map& map, const Point& point) {
  logMessage(getORMIXGeometryLogger(), s_errorLogLevel, undefinedImageText(toString(map.type), point));
  return false;
}

/// Replaces the points by their images, up to the first that has none: false then, logged.
template <class Map, class... Point>
bool mapPoint(const Map& map, Point&... points) {
  return ((applyTo(map.math, points) || reportUndefinedImage(map, points)) && ...);
}

/// Whether every point has an image; logs the first that has none.
template <class Map, class Point>
bool hasImage(const Map& map, const std::vector<Point>& points) {
  const std::size_t undefined = firstUndefinedImage(map.math, coordinates(points), points.size());
  return undefined == points.size() || reportUndefinedImage(map, points[undefined]);
}

/// The same for a run of points, all or none.
template <class Map, class Point>
bool mapPoints(const Map& map, std::vector<Point>& points) {
  if (!hasImage(map, points)) return false;
  applyToRun(map.math, coordinates(points), points.size());
  return true;
}

/// The images of the points, none of which is there yet: block by block, each read from memory once and written once.
template <class Map, class Point>
bool mapPoints(const Map& map, const std::vector<Point>& points, std::vector<Point>& images) {
  constexpr std::size_t nbCoordinates = sizeof(Point) / sizeof(typename Point::CoordinateType);
  // 2 KiB, so that a block and its images stay in the nearest cache between being cleared, mapped and checked.
  constexpr std::size_t nbInBlock = 2048 / sizeof(Point);
  images.reserve(points.size());
  while (images.size() < points.size()) {
    const std::size_t nbDone = images.size();
    const std::size_t count = std::min(nbInBlock, points.size() - nbDone);
    // What resize() would do point by point.
    static constexpr Point zeros[nbInBlock]{};
    images.insert(images.end(), zeros, zeros + count);
    const std::size_t nbDefined = mapRun(map.math, coordinates(points) + nbCoordinates * nbDone,
                                         coordinates(images) + nbCoordinates * nbDone, count);
    if (nbDefined != count) return reportUndefinedImage(map, points[nbDone + nbDefined]);
  }
  return true;
}

/// The factor by which lengths grow, 1 for an isometry. No absolute value is taken (intended).
template <class Math>
omReal64 lengthFactor(const Math& math) {
  if constexpr (s_preserved<Math>.lengths)
    return 1;
  else
    return math.getScale();
}

/// The length times the factor, brought to its type; false when it is not finite.
template <class T>
bool scaleLength(omReal64 factor, T& length) {
  const omReal64 scaled = factor * static_cast<omReal64>(length);
  const T rounded = ormix::round<T, omReal64>(scaled);
  if (!std::isfinite(scaled) || !std::isfinite(static_cast<omReal64>(rounded))) return false;
  length = rounded;
  return true;
}
/// The lengths under the map, up to the first that has no finite image: false then.
template <class Map, class... T>
bool mapLength(const Map& map, T&... lengths) {
  const omReal64 factor = lengthFactor(map.math);
  return (scaleLength(factor, lengths) && ...);
}

}  // namespace ormix::geom::detail
