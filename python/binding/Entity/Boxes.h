#pragma once

#include "AsType.h"

#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/3d/BoundingBox/BoundingBox3d.h>

#include <array>

/// \file
/// What boxes along the axes have in common in Python, in the plane and in space.

namespace ormix::python {

/// The bounds of a box on each axis.
/// @{
template <class T>
std::array<std::array<T, 2>, 2> boundsOf(const geom::BoundingBox2d<T>& box) {
  return {{{box.getXMin(), box.getXMax()}, {box.getYMin(), box.getYMax()}}};
}
template <class T>
std::array<std::array<T, 2>, 3> boundsOf(const geom::BoundingBox3d<T>& box) {
  return {{{box.getXMin(), box.getXMax()}, {box.getYMin(), box.getYMax()}, {box.getZMin(), box.getZMax()}}};
}
/// @}

/// Whether the second box lies in the first one, and whether they have a point in common; with their boundaries, or
/// without.
/// @{
template <class Box>
bool containsBox(const Box& outer, const Box& inner, bool strictly) {
  const auto a = boundsOf(outer);
  const auto b = boundsOf(inner);
  for (std::size_t i = 0; i < a.size(); ++i)
    if (strictly ? !(a[i][0] < b[i][0] && b[i][1] < a[i][1]) : !(a[i][0] <= b[i][0] && b[i][1] <= a[i][1]))
      return false;
  return true;
}
template <class Box>
bool intersectsBox(const Box& first, const Box& second, bool strictly) {
  const auto a = boundsOf(first);
  const auto b = boundsOf(second);
  for (std::size_t i = 0; i < a.size(); ++i)
    if (strictly ? !(a[i][0] < b[i][1] && b[i][0] < a[i][1]) : !(a[i][0] <= b[i][1] && b[i][0] <= a[i][1]))
      return false;
  return true;
}
/// @}

/// Constructor, corners and predicates.
template <class Point, class Class>
void bindBox(Class& entity) {
  using Box = typename Class::type;
  using T = typename Point::CoordinateType;
  entity.def(py::init<const Point&, const Point&>(), "min_corner"_a, "max_corner"_a)
      .def("contains", &containsBox<Box>, "other"_a, "strictly"_a = false,
           "Whether a box or a point lies inside; with `strictly`, without touching the boundary.")
      .def(
          "contains",
          [](const Box& self, const Point& point, bool strictly) {
            return containsBox(self, Box(point, point), strictly);
          },
          "other"_a, "strictly"_a = false)
      .def("intersects", &intersectsBox<Box>, "other"_a, "strictly"_a = false,
           "Whether two boxes have a point in common; with `strictly`, of their interiors.")
      .def(
          "intersection",
          [](const Box& self, const Box& other) -> py::object {
            if (!intersectsBox(self, other, false)) return py::none();
            Box result;
            geom::intersection(self, other, result);
            return py::cast(std::move(result));
          },
          "other"_a, "The box that two boxes have in common; None if there is none.")
      .def(
          "united",
          [](const Box& self, const Box& other) {
            Box result;
            geom::merge(self, other, result);
            return result;
          },
          "other"_a, "The smallest box that contains both.")
      .def(
          "compare",
          [](const Box& self, const Box& other, T tolerance) { return geom::compare(self, other, tolerance); },
          "other"_a, "tolerance"_a, "Whether each corner is at most the tolerance from that of the other box.");
  const auto minCorner = [](const Box& self) { return self.getMinCornerPt(); };
  const auto maxCorner = [](const Box& self) { return self.getMaxCornerPt(); };
  bindField(entity, "min_corner", minCorner, &Box::setMinCornerPt, "The smallest coordinates.");
  bindField(entity, "max_corner", maxCorner, &Box::setMaxCornerPt, "The largest coordinates.");
  bindField(entity, "x_min", &Box::getXMin, &Box::setXMin, "The smallest x.");
  bindField(entity, "x_max", &Box::getXMax, &Box::setXMax, "The largest x.");
  bindField(entity, "y_min", &Box::getYMin, &Box::setYMin, "The smallest y.");
  bindField(entity, "y_max", &Box::getYMax, &Box::setYMax, "The largest y.");
  bindAsType(entity, [](const auto& box, auto to) {
    using TOut = decltype(to);
    const auto min = geom::cast<TOut>(box.getMinCornerPt());
    const auto max = geom::cast<TOut>(box.getMaxCornerPt());
    if constexpr (s_dimension<Point> == 2)
      return geom::BoundingBox2d<TOut>(min, max);
    else
      return geom::BoundingBox3d<TOut>(min, max);
  });
}

}  // namespace ormix::python
