#include "LinearTransforms.h"

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Transform/2d/AnisotropicScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RotationTransform2d.h>
#include <ORMIXGeometry/Transform/2d/ScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <ORMIXGeometry/Transform/3d/AnisotropicScaleTransform3d.h>
#include <ORMIXGeometry/Transform/3d/HomographyTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RotationTransform3d.h>
#include <ORMIXGeometry/Transform/3d/ScaleTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SimilarityTransform3d.h>
#include <ORMIXGeometry/Transform/3d/TranslationTransform3d.h>

namespace ormix::python {
namespace {

// What a transform is made of, whatever its class.
template <std::size_t D>
struct AnyLinear {
  unsigned powers = 0;  // none of a transform that is not linear
  LinearParts<D> parts;
  LinearMatrix<D> matrix{};
};

template <std::size_t D, class List, class Base>
AnyLinear<D> anyLinear(const Base& transform) {
  AnyLinear<D> any;
  geom::forEachClass(List(), [&](auto tag) {
    using Class = typename decltype(tag)::Type;
    const auto* const typed = dynamic_cast<const Class*>(&transform);
    if (typed == nullptr) return;
    any.powers = powersOf<MathOf<Class>>();
    any.matrix = linearMatrixOf(*typed);
    if constexpr (powersOf<MathOf<Class>>() != eLP_Project) any.parts = partsOf(typed->getGeometricTransform());
  });
  return any;
}

template <std::size_t Rows>
std::array<omReal64, Rows * Rows> product(const std::array<omReal64, Rows * Rows>& a,
                                          const std::array<omReal64, Rows * Rows>& b) {
  std::array<omReal64, Rows * Rows> result{};
  for (std::size_t i = 0; i < Rows; ++i)
    for (std::size_t k = 0; k < Rows; ++k)
      for (std::size_t j = 0; j < Rows; ++j) result[Rows * i + j] += a[Rows * i + k] * b[Rows * k + j];
  return result;
}

template <std::size_t D, class List, class Base>
py::object compose(const Base& outer, const Base& inner) {
  const auto a = anyLinear<D, List>(outer);
  const auto b = anyLinear<D, List>(inner);
  py::object result = py::none();
  if (a.powers == 0 || b.powers == 0) return result;
  const unsigned powers = closedPowers(a.powers | b.powers);
  geom::forEachClass(List(), [&](auto tag) {
    using Class = typename decltype(tag)::Type;
    using Math = MathOf<Class>;
    if (powersOf<Math>() != powers) return;
    if constexpr (powersOf<Math>() == eLP_Project)
      result = py::cast(withParams<Class>(product<D + 1>(a.matrix, b.matrix), "composition"));
    else
      result = py::cast(withParams<Class>(makeFrom<Math>(composed(a.parts, b.parts)).getParams(), "composition"));
  });
  return result;
}

}  // namespace

bool isPoints(const py::handle& operand) {
  if (isEntity(operand)) return false;  // of which points are sequences of their coordinates
  if (py::isinstance<py::array>(operand)) return py::reinterpret_borrow<py::array>(operand).dtype().kind() != 'O';
  if (!py::isinstance<py::sequence>(operand) || py::len(operand) == 0) return false;
  return !isEntity(py::reinterpret_borrow<py::sequence>(operand)[0]);
}

py::object composition(const geom::BaseGeometryTransform2d& outer, const geom::BaseGeometryTransform2d& inner) {
  return compose<2, geom::PlanarLinearTransformList>(outer, inner);
}
py::object composition(const geom::BaseGeometryTransform3d& outer, const geom::BaseGeometryTransform3d& inner) {
  return compose<3, geom::SpatialLinearTransformList>(outer, inner);
}

}  // namespace ormix::python
