#pragma once

#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXGeometry/Entity/HoleTree.h>
#include <ORMIXGeometry/Entity/ReserveMore.h>
#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/ORMIXGeometryLogger.h>
#include <ORMIXGeometry/Transform/MapRequirement.h>
#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXMath/Transform/PointRun.h>
#include <ORMIXUtil/Memory/LargePages.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// What a linear map does, in the plane and in space alike: to points, lengths and runs of points, to entities of few
// points and to trees of runs. New fields are computed first and stored last, so that a failure changes nothing.

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

template <class Point>
auto spanOf(std::vector<Point>& points) {
  return PointSpan<typename Point::CoordinateType>{coordinates(points), points.size()};
}

/// Replaces the points of several runs by their images, all or none; logs the first that has none.
template <class Point, class Map, class T>
bool mapRuns(const Map& map, const PointSpan<T>* runs, std::size_t nbRuns) {
  const PlaceInRuns undefined = applyToRuns(map.math, runs, nbRuns);
  if (undefined.run == nbRuns) return true;
  return reportUndefinedImage(map, reinterpret_cast<const Point*>(runs[undefined.run].points)[undefined.point]);
}

/// The same for one run.
template <class Map, class Point>
bool mapPoints(const Map& map, std::vector<Point>& points) {
  const auto run = spanOf(points);
  return mapRuns<Point>(map, &run, 1);
}

/// The images of the points, none of which is there yet: block by block, each read from memory once and written once.
/// Flattened, as the growth of a vector by a function of its own goes point by point.
template <class Map, class Point>
[[gnu::flatten]] bool mapPoints(const Map& map, const std::vector<Point>& points, std::vector<Point>& images) {
  constexpr std::size_t nbCoordinates = sizeof(Point) / sizeof(typename Point::CoordinateType);
  // 2 KiB, so that a block and its images stay in the nearest cache between being cleared, mapped and checked.
  constexpr std::size_t nbInBlock = 2048 / sizeof(Point);
  reserveLarge(images, points.size());
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
  if constexpr (preserves<Math>(eMR_Lengths))
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

/// \name Entities of few points.
/// @{
template <class Map, class Point>
bool mapCoords(const Map& map, Point& point) {
  auto image = point.getCoords();
  if (!mapPoint(map, image)) return false;
  point.setCoords(image);
  return true;
}

/// A vector is treated as the position it leads to from the origin: offsets shift it (intended).
template <class Map, class Vector, class Point>
bool mapAsPosition(const Map& map, Vector& vector, Point position) {
  if (!mapPoint(map, position)) return false;
  vector.setCoords(position);
  return true;
}

template <class Map, class Segment>
bool mapEnds(const Map& map, Segment& segment) {
  auto pt0 = segment.getPoint0();
  auto pt1 = segment.getPoint1();
  if (!mapPoint(map, pt0, pt1)) return false;
  segment.setCoords(pt0, pt1);
  return true;
}

template <class Map, class Box>
bool mapCorners(const Map& map, Box& box) {
  auto minCorner = std::as_const(box).getMinCornerPt();
  auto maxCorner = std::as_const(box).getMaxCornerPt();
  if (!mapPoint(map, minCorner, maxCorner)) return false;
  box.setCoords(minCorner, maxCorner);
  return true;
}

/// A circle or a sphere.
template <class Map, class Ball>
bool mapBall(const Map& map, Ball& ball) {
  auto center = ball.center();
  auto radius = ball.getRadius();
  if (!mapPoint(map, center) || !mapLength(map, radius)) return false;
  ball.setCoords(center, radius);
  return true;
}
/// @}

/// \name Trees whose nodes each hold a run, `pointsOf(node)`.
/// @{

/// The type of the points of the nodes of trees.
template <class Node, class PointsOf>
using PointOfNode = typename std::decay_t<std::invoke_result_t<PointsOf, Node&>>::value_type;

/// Appends the runs of a tree, a node before its holes.
template <class T, class Node, class PointsOf>
void appendRuns(Node& tree, const PointsOf& pointsOf, std::vector<PointSpan<T>>& runs) {
  reserveMore(runs, 1 + tree.getNbHoles());
  visitNodes(tree, [&](Node& node) {
    runs.push_back(spanOf(pointsOf(node)));
    return true;
  });
}
template <class Map, class Node, class PointsOf>
bool mapTree(const Map& map, Node& tree, const PointsOf& pointsOf) {
  using Point = PointOfNode<Node, PointsOf>;
  std::vector<PointSpan<typename Point::CoordinateType>> runs;
  appendRuns(tree, pointsOf, runs);
  return mapRuns<Point>(map, runs.data(), runs.size());
}
/// The trees of a collection, all or none; null ones are passed over.
template <class Map, class TreeColl, class PointsOf>
bool mapTrees(const Map& map, const TreeColl& trees, const PointsOf& pointsOf) {
  using Point = PointOfNode<typename TreeColl::value_type::element_type, PointsOf>;
  std::vector<PointSpan<typename Point::CoordinateType>> runs;
  for (const auto& tree : trees)
    if (tree) appendRuns(*tree, pointsOf, runs);
  return mapRuns<Point>(map, runs.data(), runs.size());
}
/// @}

}  // namespace ormix::geom::detail
