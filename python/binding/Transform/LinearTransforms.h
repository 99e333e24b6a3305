#pragma once

#include "../Frame/Arrays.h"
#include "ApplyTransform.h"
#include "LinearParts.h"

#include <ORMIXGeometry/Transform/MapRequirement.h>
#include <ORMIXMath/Transform/PointRun.h>

#include <boost/smart_ptr/make_shared_object.hpp>

#include <cmath>
#include <limits>
#include <string>
#include <utility>

/// \file
/// How a linear transform of the plane or of space becomes a Python class: what is written here is the same for all of
/// them. `Space` is PlanarTransforms or SpatialTransforms, `Transform` one of their linear transforms.

namespace ormix::python {

/// The transform of ORMIXMath that a transform of entities owns.
template <class Transform>
using MathOf = std::decay_t<decltype(std::declval<const Transform&>().getGeometricTransform())>;

/// The matrix of an affine transform or of a homography.
template <class Transform>
auto linearMatrixOf(const Transform& transform) {
  const auto& c = transform.getGeometricTransform().getCoefficients();
  using Coefficients = std::decay_t<decltype(c)>;
  if constexpr (std::is_same_v<Coefficients, AffineCoefficients2d>)
    return LinearMatrix<2>{c.xx, c.xy, c.tx, c.yx, c.yy, c.ty, 0, 0, 1};
  else if constexpr (std::is_same_v<Coefficients, AffineCoefficients3d>)
    return LinearMatrix<3>{c.xx, c.xy, c.xz, c.tx, c.yx, c.yy, c.yz, c.ty, c.zx, c.zy, c.zz, c.tz, 0, 0, 0, 1};
  else
    return c;
}

template <class Matrix>
py::array_t<omReal64> toArray(const Matrix& matrix) {
  constexpr py::ssize_t nbRows = std::tuple_size_v<Matrix> == 9 ? 3 : 4;
  return py::array_t<omReal64>({nbRows, nbRows}, matrix.data());
}

/// \throw py::value_error for another shape
template <class Matrix>
Matrix matrixFrom(const py::handle& values) {
  constexpr py::ssize_t nbRows = std::tuple_size_v<Matrix> == 9 ? 3 : 4;
  const auto numbers = numbersOf<omReal64>(values, "matrix");
  if (numbers.ndim() != 2 || numbers.shape(0) != nbRows || numbers.shape(1) != nbRows)
    throw py::value_error("matrix: an array of shape (" + std::to_string(nbRows) + ", " + std::to_string(nbRows) +
                          ") was wanted, not " + py::cast<std::string>(py::repr(numbers.attr("shape"))));
  Matrix matrix;
  std::copy_n(numbers.data(), matrix.size(), matrix.begin());
  return matrix;
}

/// The transform with the given numbers as parameters.
/// \throw py::value_error for one that is not finite: archives would refuse it, and nothing would have an image
template <class Transform, class Numbers>
boost::shared_ptr<Transform> withParams(const Numbers& numbers, const std::string& what) {
  MathOf<Transform> math;
  RealVector params(numbers.size());
  std::copy(numbers.begin(), numbers.end(), params.begin());
  for (const omReal64 number : params)
    if (!std::isfinite(number)) throw py::value_error(what + ": " + std::to_string(number) + " is not a finite number");
  const BoolResult taken = math.setParams(params);
  if (!taken) throw py::value_error(what + ": " + taken.getMessage());
  return boost::make_shared<Transform>(math);
}

/// The transform of this class with a matrix.
/// \throw py::value_error for the matrix of none
template <class Transform>
boost::shared_ptr<Transform> fromMatrix(const py::handle& values) {
  using Math = MathOf<Transform>;
  using Matrix = LinearMatrix<s_dimensionOfMath<Math>>;
  const auto matrix = matrixFrom<Matrix>(values);
  constexpr unsigned powers = powersOf<Math>();
  if constexpr (powers == eLP_Project) {
    return withParams<Transform>(matrix, "matrix");
  } else {
    const Transform transform(makeFrom<Math>(partsOfMatrix(matrix, (powers & eLP_Turn) != 0)));
    const Matrix made = linearMatrixOf(transform);
    // Matrices that were written with ten digits are taken: to 1e-9 of the largest element, the shift left out, and of
    // 1 in the last row.
    constexpr omReal64 tolerance = 1e-9;
    constexpr std::size_t d = s_dimensionOfMath<Math>;
    omReal64 largest = 0;
    for (std::size_t i = 0; i < d * (d + 1); ++i)
      if (i % (d + 1) != d) largest = std::max(largest, std::abs(made[i]));
    for (std::size_t i = 0; i < made.size(); ++i)
      if (!(std::abs(made[i] - matrix[i]) <= tolerance * (i < d * (d + 1) ? largest : 1)))
        throw py::value_error("matrix: it is not that of a " +
                              py::cast<std::string>(py::type::of<Transform>().attr("__name__")) + "; element (" +
                              std::to_string(i / (d + 1)) + ", " + std::to_string(i % (d + 1)) + ") would be " +
                              std::to_string(made[i]));
    return boost::make_shared<Transform>(transform);
  }
}

/// The transform that undoes this one.
/// \throw Error where there is none
template <class Transform>
boost::shared_ptr<Transform> inverseOf(const Transform& transform) {
  using Math = MathOf<Transform>;
  RealVector params;
  if constexpr (powersOf<Math>() == eLP_Project) {
    const py::module_ linalg = py::module_::import("numpy.linalg");
    try {
      const auto inverse = py::cast<py::array_t<omReal64>>(linalg.attr("inv")(toArray(linearMatrixOf(transform))));
      params.resize(static_cast<std::size_t>(inverse.size()));
      std::copy_n(inverse.data(), params.size(), params.begin());
    } catch (py::error_already_set& error) {
      if (!error.matches(linalg.attr("LinAlgError"))) throw;
      params = RealVector(1, std::numeric_limits<omReal64>::quiet_NaN());
    }
  } else {
    params = makeFrom<Math>(inverted(partsOf(transform.getGeometricTransform()))).getParams();
  }
  for (const omReal64 number : params)
    if (!std::isfinite(number)) raiseError("The transform has no inverse", transform.getClassName());
  return withParams<Transform>(params, "inverse");
}

/// The points as one array under the transform; of omReal32 for such points, else of omReal64.
/// \throw Error for the first point that has no finite image
template <class Transform, class T>
py::array_t<T> imagesOfPoints(const Transform& transform, const py::array_t<T, py::array::c_style>& points) {
  using Math = MathOf<Transform>;
  constexpr std::size_t d = s_dimensionOfMath<Math>;
  const auto nbPoints = static_cast<std::size_t>(points.size()) / d;
  py::array_t<T> images(std::vector<py::ssize_t>(points.shape(), points.shape() + points.ndim()));
  const T* const from = points.data();
  T* const to = images.mutable_data();
  const std::size_t nbMapped = [&] {
    const Reading reading;
    // A block and its images stay in the nearest cache.
    constexpr std::size_t nbInBlock = 128;
    for (std::size_t done = 0; done < nbPoints; done += nbInBlock) {
      const std::size_t count = std::min(nbInBlock, nbPoints - done);
      const std::size_t nbDefined = mapRun(transform.getGeometricTransform(), from + d * done, to + d * done, count);
      if (nbDefined != count) return done + nbDefined;
    }
    return nbPoints;
  }();
  if (nbMapped == nbPoints) return images;
  const auto failed = [&](std::size_t axis) { return static_cast<omReal64>(from[d * nbMapped + axis]); };
  using Message = geom::eTransformMessage;
  const std::string type = toString(Transform::type());
  const std::string place = points.ndim() == 1 ? std::string() : "point " + std::to_string(nbMapped) + ": ";
  if constexpr (d == 2)
    raiseError(place + formatMessage<Message>(Message::eTM_Point2dFailed, type, failed(0), failed(1)),
               transform.getClassName());
  else
    raiseError(place + formatMessage<Message>(Message::eTM_Point3dFailed, type, failed(0), failed(1), failed(2)),
               transform.getClassName());
}

/// The images of an n × D array of points as such an array, of one point as an array or a tuple, as it is given.
template <class Transform>
py::object mapPoints(const Transform& transform, const py::handle& values) {
  constexpr py::ssize_t d = s_dimensionOfMath<MathOf<Transform>>;
  const bool isArray = py::isinstance<py::array>(values);
  const auto mapAs = [&](auto coordinate) -> py::object {
    using T = decltype(coordinate);
    const auto numbers = numbersOf<T>(values, "points");
    if (numbers.ndim() == 1 && numbers.shape(0) == d) {
      const py::object image = imagesOfPoints(transform, numbers);
      return isArray ? image : py::tuple(image.attr("tolist")());
    }
    return imagesOfPoints(transform, matrixOf<T>(values, d, "points"));
  };
  const bool isReal32 = isArray && py::reinterpret_borrow<py::array>(values).dtype().is(py::dtype::of<omReal32>());
  return isReal32 ? mapAs(omReal32()) : mapAs(omReal64());
}

/// Whether an operand is meant as points: an array of numbers, or a sequence whose first element is no entity.
bool isPoints(const py::handle& operand);

/// The transform by `inner`, then by `outer`, of the smallest class that holds it; None where one of them is not
/// linear.
/// \throw py::value_error where a number overflows
/// @{
py::object composition(const geom::BaseGeometryTransform2d& outer, const geom::BaseGeometryTransform2d& inner);
py::object composition(const geom::BaseGeometryTransform3d& outer, const geom::BaseGeometryTransform3d& inner);
/// @}

template <class Transform, class Space>
py::object operate(const Transform& self, const py::object& operand) {
  using Base = typename Space::Transform;
  if (py::isinstance<geom::BaseGeometryTransform>(operand)) {
    if (py::isinstance<Base>(operand)) {
      const py::object composed = composition(self, py::cast<const Base&>(operand));
      if (!composed.is_none()) return composed;
    }
    return py::reinterpret_borrow<py::object>(Py_NotImplemented);
  }
  return isPoints(operand) ? mapPoints(self, operand) : apply<Space>(self, operand);
}

/// Adds the class of a linear transform. The parameters are keyword arguments of the constructor, by default those of
/// the identity, and properties.
template <class Transform, class Space>
class LinearClass {
  using Math = MathOf<Transform>;
  using Base = typename Space::Transform;

 public:
  LinearClass(py::module_& module, const char* name, const char* doc) : _class(module, name, doc) {
    _class
        .def_property_readonly(
            "matrix", [](const Transform& self) { return toArray(linearMatrixOf(self)); },
            "The matrix for points (x, y, 1), or (x, y, z, 1), a copy.")
        .def_property_readonly(
            "params",
            [](const Transform& self) {
              const RealVector params = self.getGeometricTransform().getParams();
              return py::array_t<omReal64>(static_cast<py::ssize_t>(params.size()), &params[0]);
            },
            "All parameters in their order, a copy: what estimators compute.")
        .def("inverse", &inverseOf<Transform>, "The transform that undoes this one. Error where there is none.")
        .def_static("from_matrix", &fromMatrix<Transform>, "matrix"_a,
                    "The transform with this matrix. ValueError for the matrix of no such transform, up to 1e-9 of its "
                    "largest element.")
        .def_static(
            "from_params",
            [](const py::object& params) {
              const auto numbers = numbersOf<omReal64>(params, "params");
              return withParams<Transform>(std::vector<omReal64>(numbers.data(), numbers.data() + numbers.size()),
                                           "params");
            },
            "params"_a, "The transform with these parameters.")
        .def("__matmul__", &operate<Transform, Space>, "operand"_a, py::is_operator());
  }

  /// \param names those of the parameters, in their order
  template <class... Name>
  LinearClass& parameters(const Name&... names) {
    static_assert(sizeof...(Name) == Math::s_nbParams);
    define(std::array<const char*, sizeof...(Name)>{names...}, std::make_index_sequence<sizeof...(Name)>());
    return *this;
  }

  /// A homography, which has its matrix.
  void matrixParameter() {
    using Matrix = LinearMatrix<s_dimensionOfMath<Math>>;
    _class.attr("__match_args__") = py::make_tuple("matrix");
    _class.def(py::init<>())
        .def(py::init(
                 [](const py::object& matrix) { return withParams<Transform>(matrixFrom<Matrix>(matrix), "matrix"); }),
             "matrix"_a);
  }

 private:
  template <std::size_t... I>
  void define(const std::array<const char*, sizeof...(I)>& names, std::index_sequence<I...>) {
    const RealVector identity = Math().getParams();
    _class.attr("__match_args__") = py::make_tuple(names[I]...);
    _class.def(py::init([names](decltype(static_cast<omReal64>(I))... numbers) {
                 (requireFinite(names[I], numbers), ...);
                 return boost::make_shared<Transform>(numbers...);
               }),
               (py::arg(names[I]) = identity(I))...);
    (_class.def_property_readonly(names[I],
                                  [](const Transform& self) { return self.getGeometricTransform().getParams()(I); }),
     ...);
  }

  static void requireFinite(const char* name, omReal64 number) {
    if (!std::isfinite(number))
      throw py::value_error(std::string(name) + ": " + std::to_string(number) + " is not a finite number");
  }

  ClassOf<Transform, Base> _class;
};

}  // namespace ormix::python
