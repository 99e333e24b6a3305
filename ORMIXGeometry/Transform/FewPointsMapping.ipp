#pragma once

#include <ORMIXGeometry/Transform/PointMapping.ipp>

// The rules of entities of few points that are the same in the plane and in space. New fields are computed first and
// stored last.

namespace ormix::geom::detail {

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

}  // namespace ormix::geom::detail
