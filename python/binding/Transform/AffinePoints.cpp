#include "../Frame/Arrays.h"
#include "../Frame/Errors.h"
#include "Transforms.h"

#include <ORMIXGeometry/Transform/AffinePoints.h>

namespace ormix::python {

namespace {

/// Points of the dtype of the array, others as float64.
template <class Point, class Map>
py::array mapped(const Map& map, const py::object& values) {
  std::vector<Point> points = pointsOf<Point>(values);
  check(geom::applyInSitu(map, points), "apply_affine", "points");
  using T = typename Point::CoordinateType;
  py::array_t<T> images({static_cast<py::ssize_t>(points.size()), s_dimension<Point>});
  std::copy_n(coordinates(points), static_cast<std::size_t>(images.size()), images.mutable_data());
  return std::move(images);
}

template <template <class> class Point, class Map>
py::array mappedAsGiven(const Map& map, const py::object& values) {
  const py::array array = py::array::ensure(values);
  if (!array) throw py::type_error("points: expected numbers");
  if (py::isinstance<py::array_t<omReal32>>(array)) return mapped<Point<omReal32>>(map, values);
  if (py::isinstance<py::array_t<omInt32>>(array)) return mapped<Point<omInt32>>(map, values);
  if (py::isinstance<py::array_t<omUInt32>>(array)) return mapped<Point<omUInt32>>(map, values);
  return mapped<Point<omReal64>>(map, values);
}

py::array applyAffine(const py::object& matrix, const py::object& points) {
  const py::array shape = py::array::ensure(matrix);
  const py::ssize_t columns = shape && shape.ndim() == 2 ? shape.shape(1) : 0;
  const py::ssize_t rows = columns == 0 ? 0 : shape.shape(0);
  if ((columns != 3 && columns != 4) || (rows != columns && rows + 1 != columns))
    throw py::value_error("matrix: expected 2 x 3, 3 x 3, 3 x 4 or 4 x 4 numbers");
  const auto m = matrixOf<omReal64>(matrix, columns, "matrix");
  for (py::ssize_t k = 0; rows == columns && k < columns; ++k)
    if (m.at(rows - 1, k) != (k + 1 == columns ? 1 : 0))
      throw py::value_error("matrix: the last row of an affine map must be 0, ..., 0, 1");
  if (columns == 3)
    return mappedAsGiven<geom::Point2dData>(
        Affine2d(m.at(0, 0), m.at(0, 1), m.at(0, 2), m.at(1, 0), m.at(1, 1), m.at(1, 2)), points);
  const AffineCoefficients3d c{m.at(0, 0), m.at(0, 1), m.at(0, 2), m.at(0, 3), m.at(1, 0), m.at(1, 1),
                               m.at(1, 2), m.at(1, 3), m.at(2, 0), m.at(2, 1), m.at(2, 2), m.at(2, 3)};
  return mappedAsGiven<geom::Point3dData>(Affine3d(c), points);
}

}  // namespace

void bindAffinePoints(py::module_& module) {
  module.def("apply_affine", &applyAffine, "matrix"_a, "points"_a,
             "The points, one a row, under an affine map given by its matrix, 2 x 3 or 3 x 3 in the plane, 3 x 4 or\n"
             "4 x 4 in space. Arrays of float32, int32 and uint32 keep their dtype, rounded; others become float64.\n\n"
             "Error, with nothing changed, where an image is not finite. Entities have no such transform.\n\n"
             ">>> og.apply_affine([[1, 2, 3], [0, -1, 0]], [(1, 2), (0, 0)])\n"
             "array([[ 8., -2.],\n"
             "       [ 3.,  0.]])");
}

}  // namespace ormix::python
