#pragma once

#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXGeometry/Entity/HoleTree.h>
#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/ORMIXGeometryLogger.h>
#include <ORMIXGeometry/Transform/MapRequirement.h>
#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXMath/Transform/PointRun.h>

#include <algorithm>
#include <cmath>
#include <string>
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
/// Flattened, as the growth of a vector by a function of its own goes point by point.
template <class Map, class Point>
[[gnu::flatten]] bool mapPoints(const Map& map, const std::vector<Point>& points, std::vector<Point>& images) {
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

/// Appends the nodes of a tree while their points have images; false at the first that has one without.
template <class Map, class Node, class PointsOf>
bool appendMapped(const Map& map, Node& tree, const PointsOf& pointsOf, std::vector<Node*>& nodes) {
  return visitNodes(tree, [&](Node& node) {
    nodes.push_back(&node);
    return hasImage(map, pointsOf(std::as_const(node)));
  });
}
/// Each point must have an image. Needs no memory, so that either all nodes are mapped or none.
template <class Map, class Node, class PointsOf>
void applyToNodes(const Map& map, const std::vector<Node*>& nodes, const PointsOf& pointsOf) {
  for (Node* const node : nodes) {
    auto& points = pointsOf(*node);
    applyToRun(map.math, coordinates(points), points.size());
  }
}
template <class Map, class Node, class PointsOf>
bool mapTree(const Map& map, Node& tree, const PointsOf& pointsOf) {
  std::vector<Node*> nodes;
  if (!appendMapped(map, tree, pointsOf, nodes)) return false;
  applyToNodes(map, nodes, pointsOf);
  return true;
}
/// The trees of a collection, all or none; null ones are passed over.
template <class Map, class TreeColl, class PointsOf>
bool mapTrees(const Map& map, const TreeColl& trees, const PointsOf& pointsOf) {
  std::vector<typename TreeColl::value_type::element_type*> nodes;
  for (const auto& tree : trees)
    if (tree && !appendMapped(map, *tree, pointsOf, nodes)) return false;
  applyToNodes(map, nodes, pointsOf);
  return true;
}
/// @}

}  // namespace ormix::geom::detail
