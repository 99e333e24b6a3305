#include <ORMIXGeometry/Estimation/ShapeModel.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/RoundSolid.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom::detail {

namespace {

using ormix::detail::cross;
using ormix::detail::dot;
using ormix::detail::operator+;
using ormix::detail::operator-;
using ormix::detail::operator*;
using State = DistanceModel::State;

/// The axis and two directions across it, always the same ones.
struct Axes {
  SpatialPoint point;
  SpatialPoint axis;
  SpatialPoint u;
  SpatialPoint v;
};
Axes axesOf(const State& state) {
  const SpatialPoint axis{state[3], state[4], state[5]};
  const SpatialPoint u = directionAcross(axis);
  return {{state[0], state[1], state[2]}, axis, u, cross(axis, u)};
}

/// A sample as the axes see it: its distance from the axis, its height, and the direction from the axis to it.
struct Place {
  omReal64 x, y, z;
  omReal64 rho;
  omReal64 alongX, alongY;
};
Place placeOf(const Axes& axes, const SpatialPoint& sample) {
  const SpatialPoint from = sample - axes.point;
  Place place{dot(from, axes.u), dot(from, axes.v), dot(from, axes.axis), 0, 0, 0};
  place.rho = std::sqrt(place.x * place.x + place.y * place.y);
  // On the axis every direction is as good: none.
  const omReal64 inverse = place.rho > 0 ? 1 / place.rho : 0;
  place.alongX = place.x * inverse;
  place.alongY = place.y * inverse;
  return place;
}

/// An equation and its derivatives by x, y and z of the place, and by the sizes.
struct Equation {
  omReal64 value;
  omReal64 byX, byY, byZ;
  std::array<omReal64, 2> bySize;
};
/// One of the distance from the axis and the height.
Equation ofProfile(const Place& p, omReal64 value, omReal64 byRho, omReal64 byZ, std::array<omReal64, 2> bySize) {
  return {value, byRho * p.alongX, byRho * p.alongY, byZ, bySize};
}

Equation equationOf(eShapeKind kind, std::size_t k, const Place& p, const State& state) {
  switch (kind) {
    case eSK_Line:
      return k == 0 ? Equation{p.x, 1, 0, 0, {}} : Equation{p.y, 0, 1, 0, {}};
    case eSK_Circle:
      return k == 0 ? ofProfile(p, p.rho - state[6], 1, 0, {-1, 0}) : Equation{p.z, 0, 0, 1, {}};
    case eSK_Cylinder:
      return ofProfile(p, p.rho - state[6], 1, 0, {-1, 0});
    case eSK_Cone: {
      const omReal64 c = std::cos(state[6]), s = std::sin(state[6]);
      return ofProfile(p, c * p.rho - s * p.z, c, -s, {-s * p.rho - c * p.z, 0});
    }
    case eSK_Torus:
      break;
  }
  const omReal64 beyond = p.rho - state[6];
  const omReal64 tube = std::sqrt(beyond * beyond + p.z * p.z);
  const omReal64 outward = tube > 0 ? beyond / tube : 1, upward = tube > 0 ? p.z / tube : 0;
  return ofProfile(p, tube - state[7], outward, upward, {-outward, -1});
}

}  // namespace

ShapeModel::ShapeModel(eShapeKind kind, const SampleView& fitted) : FramedModel<3>(fitted), _kind(kind) {
  nbUnknowns = nbShifts() + 2 + nbSizes();
  nbReported = 6 + nbSizes();
  nbEquations = kind == eSK_Line || kind == eSK_Circle ? 2 : 1;
}

auto ShapeModel::stateOf(const SpatialPoint& point, const SpatialPoint& axis,
                         const std::array<omReal64, 2>& sizes) const -> State {
  State state{};
  const std::array<omReal64, 3> p{point.x, point.y, point.z};
  for (std::size_t d = 0; d < 3; ++d) state[d] = (p[d] - frame.origin[d]) / unit;
  const SpatialPoint a = unitVector(axis);
  state[3] = a.x;
  state[4] = a.y;
  state[5] = a.z;
  const omReal64 unitOfSize = _kind == eSK_Cone ? 1 : unit;
  for (std::size_t k = 0; k < nbSizes(); ++k) state[6 + k] = sizes[k] / unitOfSize;
  return state;
}

void ShapeModel::evaluate(const State& state, std::size_t first, std::size_t nb, const DistanceBlock& block) const {
  constexpr std::size_t column = DistanceBlock::s_nbRows;
  const Axes axes = axesOf(state);
  for (std::size_t i = 0; i < nb; ++i) {
    const omReal64* row = samples[first + i];
    const Place p = placeOf(axes, {(row[0] - frame.origin[0]) / unit, (row[1] - frame.origin[1]) / unit,
                                   (row[2] - frame.origin[2]) / unit});
    for (std::size_t k = 0; k < nbEquations; ++k) {
      const Equation e = equationOf(_kind, k, p, state);
      const std::size_t at = k * nb + i;
      block.distances[at] = e.value;
      if (block.derivatives) {
        omReal64* to = block.derivatives + at;
        const auto put = [&to](omReal64 value) {
          *to = value;
          to += column;
        };
        put(-e.byX);
        put(-e.byY);
        if (nbShifts() == 3) put(-e.byZ);
        // Turns of the axis towards u, and towards v.
        put(e.byZ * p.x - e.byX * p.z);
        put(e.byZ * p.y - e.byY * p.z);
        for (std::size_t size = 0; size < nbSizes(); ++size) put(e.bySize[size]);
      }
      if (block.normals) {
        const SpatialPoint n = axes.u * e.byX + axes.v * e.byY + axes.axis * e.byZ;
        block.normals[at] = n.x;
        block.normals[column + at] = n.y;
        block.normals[2 * column + at] = n.z;
      }
      // The estimator minimises distances.
      if (block.gains) block.gains[at] = 1;
    }
  }
}

bool ShapeModel::move(const State& state, const Step& step, State& moved) const {
  const Axes axes = axesOf(state);
  SpatialPoint point = axes.point + axes.u * step[0] + axes.v * step[1];
  if (nbShifts() == 3) point = point + axes.axis * step[2];
  const omReal64* turn = step.data() + nbShifts();
  const SpatialPoint axis = unitVector(axes.axis + axes.u * turn[0] + axes.v * turn[1]);
  moved = state;
  moved[0] = point.x;
  moved[1] = point.y;
  moved[2] = point.z;
  moved[3] = axis.x;
  moved[4] = axis.y;
  moved[5] = axis.z;
  bool isShape = true;
  for (std::size_t k = 0; k < nbSizes(); ++k) {
    moved[6 + k] = state[6 + k] + turn[2 + k];
    isShape = isShape && moved[6 + k] > 0;
  }
  if (_kind == eSK_Cone) isShape = isShape && moved[6] < s_pi / 2;
  if (_kind == eSK_Torus) isShape = isShape && moved[7] < moved[6];
  return isShape;
}

omReal64 ShapeModel::report(const State& state, omReal64* params, omReal64* jacobian) const {
  const Axes axes = axesOf(state);
  for (std::size_t d = 0; d < 3; ++d) params[d] = frame.origin[d] + unit * state[d];
  std::copy_n(state.data() + 3, 3, params + 3);
  std::fill_n(jacobian, nbReported * nbUnknowns, 0.0);
  const auto put = [&](std::size_t row, std::size_t unknown, const SpatialPoint& direction, omReal64 factor) {
    const std::array<omReal64, 3> v{direction.x, direction.y, direction.z};
    for (std::size_t d = 0; d < 3; ++d) jacobian[(row + d) * nbUnknowns + unknown] = factor * v[d];
  };
  put(0, 0, axes.u, unit);
  put(0, 1, axes.v, unit);
  if (nbShifts() == 3) put(0, 2, axes.axis, unit);
  put(3, nbShifts(), axes.u, 1);
  put(3, nbShifts() + 1, axes.v, 1);
  const omReal64 unitOfSize = _kind == eSK_Cone ? 1 : unit;
  for (std::size_t k = 0; k < nbSizes(); ++k) {
    params[6 + k] = unitOfSize * state[6 + k];
    jacobian[(6 + k) * nbUnknowns + nbShifts() + 2 + k] = unitOfSize;
  }
  return 1;
}

}  // namespace ormix::geom::detail
