#pragma once

#include "AsType.h"

/// \file
/// What single points, and runs of points, of the plane and of space have in common in Python.

namespace ormix::python {

/// Lets an entity be used as the sequence of its coordinates: wherever a point is wanted, and by numpy.
/// \param coordinates answers them as a tuple
template <class Class, class Coordinates>
void bindSequence(Class& entity, Coordinates coordinates) {
  using Entity = typename Class::type;
  entity.def("__len__", [coordinates](const Entity& self) { return py::len(coordinates(self)); })
      .def("__iter__", [coordinates](const Entity& self) { return py::iter(coordinates(self)); })
      .def(
          "__getitem__",
          [coordinates](const Entity& self, const py::object& index) { return py::object(coordinates(self)[index]); },
          "index"_a);
}

/// The arithmetic of points, component by component.
/// \tparam Vector the class of vectors of the same space
template <class Vector, class T, class Class>
void bindPointArithmetic(Class& entity) {
  using Point = typename Class::type;
  entity
      .def(
          "__add__", [](const Point& a, const Point& b) { return a + b; }, py::is_operator())
      .def(
          "__add__", [](const Point& a, const Vector& b) { return a + b; }, py::is_operator())
      .def(
          "__sub__", [](const Point& a, const Point& b) { return a - b; }, py::is_operator())
      .def(
          "__sub__", [](const Point& a, const Vector& b) { return a - b; }, py::is_operator())
      .def(
          "__mul__", [](const Point& a, T scalar) { return a * scalar; }, py::is_operator())
      .def(
          "__rmul__", [](const Point& a, T scalar) { return a * scalar; }, py::is_operator())
      .def(
          "__truediv__", [](const Point& a, T scalar) { return a / scalar; }, py::is_operator())
      .def(
          "distance",
          [](const Point& self, const Point& other) { return geom::distance(self.getCoords(), other.getCoords()); },
          "other"_a, "The distance of two points. That of integers wraps around.")
      .def(
          "compare",
          [](const Point& self, const Point& other, T tolerance) {
            return geom::compare(self.getCoords(), other.getCoords(), tolerance);
          },
          "other"_a, "tolerance"_a, "Whether the distance is at most the tolerance.");
}

/// A cloud of points.
template <class Point, class Class>
void bindCloud(Class& entity) {
  using Cloud = typename Class::type;
  const auto setPoints = [](Cloud& cloud, const py::object& values) {
    auto points = pointsOf<Point>(values);
    const Changing changing;
    requireNoView(cloud.getCollection().data(), "points");
    cloud.getCollection() = std::move(points);
  };
  entity
      .def(py::init([setPoints](const py::object& points) {
             auto cloud = boost::make_shared<Cloud>();
             setPoints(*cloud, points);
             return cloud;
           }),
           "points"_a)
      .def_property(
          "points", [](const boost::shared_ptr<Cloud>& self) { return viewOfPoints(self, self->getCollection()); },
          setPoints,
          "The points as an array, a view. Assigning an array replaces them; while a view is alive that is a\n"
          "BufferError.")
      .def("__len__", &Cloud::size)
      .def(
          "append",
          [](Cloud& cloud, const Point& point) {
            const Changing changing;
            requireNoView(cloud.getCollection().data(), "points");
            cloud.push_back(point);
          },
          "point"_a, "Add a point at the end.")
      .def(
          "clear",
          [](Cloud& cloud) {
            const Changing changing;
            requireNoView(cloud.getCollection().data(), "points");
            cloud.clear();
          },
          "Remove all points.");
  bindAsType(entity);
}

}  // namespace ormix::python
