#pragma once

#include "Binding.h"
#include "Views.h"

#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>

#include <string>
#include <vector>

/// \file
/// Numbers from Python to coordinates and back. Integers are taken where they are exact: what has a fraction or is out
/// of range is an error, nothing wraps around. Reals are rounded to the precision of the type.

namespace ormix::python {

/// The number of coordinates of a point type.
template <class Point>
constexpr py::ssize_t s_dimension = sizeof(Point) / sizeof(typename Point::CoordinateType);

/// Numbers as a C-contiguous array of `T`, without a copy where they are one already: what numpy reads as an array, of
/// any strides, byte order and type of integers or reals.
/// \param name names the argument in errors
/// \throw py::type_error for what is not numbers, py::value_error for integers that `T` cannot hold
template <class T>
py::array_t<T, py::array::c_style> numbersOf(const py::handle& values, const char* name);

/// The same for a matrix with `columns` columns; an array without elements is one without rows.
/// \throw py::value_error for another shape
template <class T>
py::array_t<T, py::array::c_style> matrixOf(const py::handle& values, py::ssize_t columns, const char* name);

/// A copy of an n × 2 or n × 3 array as points.
template <class Point>
std::vector<Point> pointsOf(const py::handle& values, const char* name = "points") {
  using T = typename Point::CoordinateType;
  const auto matrix = matrixOf<T>(values, s_dimension<Point>, name);
  const auto* const begin = reinterpret_cast<const Point*>(matrix.data());
  return std::vector<Point>(begin, begin + matrix.shape(0));
}

/// The points as an n × 2 or n × 3 array, without a copy.
template <class Point>
py::array viewOfPoints(boost::shared_ptr<const void> owner, std::vector<Point>& points, Access access = Access::Write) {
  using T = typename Point::CoordinateType;
  return viewOf(std::move(owner), reinterpret_cast<T*>(points.data()),
                {static_cast<py::ssize_t>(points.size()), s_dimension<Point>}, access);
}

/// An array of its own with these numbers.
template <class T>
py::array_t<T> copyOf(const std::vector<T>& values) {
  return py::array_t<T>(static_cast<py::ssize_t>(values.size()), values.data());
}

namespace detail {

/// Reads `count` numbers of a sequence into `values`. False when it is none of that length, or a number is none of `T`.
template <class T>
bool loadNumbers(py::handle source, py::ssize_t count, T* values);

/// Conversion of a point from any sequence of its coordinates, also an array, and to a tuple.
template <class Point>
struct PointCaster {
  using T = typename Point::CoordinateType;
  PYBIND11_TYPE_CASTER(Point, py::detail::const_name<s_dimension<Point> == 2>("Point2dLike", "Point3dLike"));

  bool load(py::handle source, bool) { return loadNumbers(source, s_dimension<Point>, reinterpret_cast<T*>(&value)); }
  static py::handle cast(const Point& point, py::return_value_policy, py::handle) {
    if constexpr (s_dimension<Point> == 2)
      return py::make_tuple(point.getX(), point.getY()).release();
    else
      return py::make_tuple(point.getX(), point.getY(), point.getZ()).release();
  }
};

}  // namespace detail
}  // namespace ormix::python

namespace pybind11::detail {

template <class T>
struct type_caster<ormix::geom::Point2dData<T>> : ormix::python::detail::PointCaster<ormix::geom::Point2dData<T>> {};
template <class T>
struct type_caster<ormix::geom::Point3dData<T>> : ormix::python::detail::PointCaster<ormix::geom::Point3dData<T>> {};

}  // namespace pybind11::detail
