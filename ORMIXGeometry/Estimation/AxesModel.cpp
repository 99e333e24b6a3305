#include <ORMIXGeometry/Estimation/AxesDistance.h>
#include <ORMIXGeometry/Estimation/AxesModel.h>
#include <ORMIXMath/Algebra/EigenDecomposition.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom::detail {

namespace {

constexpr std::size_t s_nbRows = DistanceBlock::s_nbRows;

// Where the state has the radii and the axes.
template <std::size_t D>
constexpr std::size_t radiiAt = D;
template <std::size_t D>
constexpr std::size_t axesAt = 2 * D;

/// The nearest points of a block, in the coordinates along the axes.
template <std::size_t D>
struct Feet {
  FramedRows<D> u;                          ///< the nearest point over the radii, on the unit sphere
  FramedRows<D> gradient;                   ///< u over the radii
  std::array<omReal64, s_nbRows> length;    ///< of the gradient
  std::array<omReal64, s_nbRows> distance;  ///< signed
};

/// The nearest point by the scalar search, for points far from the surface or near its planes of symmetry.
template <std::size_t D>
[[gnu::noinline]] void searchFoot(const std::array<omReal64, D>& point, const std::array<omReal64, D>& radii,
                                  Feet<D>& feet, std::size_t i) {
  std::array<omReal64, D> foot{};
  omReal64 level = 0;
  omReal64 square = 0;
  const omReal64 distance = AxesDistance<D>(radii).nearest(point, foot);
  for (std::size_t k = 0; k < D; ++k) {
    feet.u[k][i] = foot[k] / radii[k];
    feet.gradient[k][i] = feet.u[k][i] / radii[k];
    square += feet.gradient[k][i] * feet.gradient[k][i];
    level += (point[k] / radii[k]) * (point[k] / radii[k]);
  }
  feet.length[i] = std::sqrt(square);
  feet.distance[i] = level < 1 ? -distance : distance;
}

/// 1 / (r² + t) for each radius, by one division.
template <std::size_t D>
[[gnu::always_inline]] inline std::array<omReal64, D> inverses(const omReal64* r, omReal64 t) {
  if constexpr (D == 2) {
    const omReal64 a = r[0] * r[0] + t;
    const omReal64 b = r[1] * r[1] + t;
    const omReal64 both = 1 / (a * b);
    return {b * both, a * both};
  } else {
    const omReal64 a = r[0] * r[0] + t;
    const omReal64 b = r[1] * r[1] + t;
    const omReal64 c = r[2] * r[2] + t;
    const omReal64 ab = a * b;
    const omReal64 all = 1 / (ab * c);
    const omReal64 ofC = c * all;
    return {b * ofC, a * ofC, ab * all};
  }
}

/// The nearest point is r² x / (r² + t) in each coordinate, t being the root of a function that is nearly linear, and
/// Newton's steps from t = 0 on find it for all points of a block side by side (Eberly2013). Points for which they do
/// not settle are searched one by one.
///
/// The error after a step is about the square of it, in units of the least squared radius: a step of `lastStep` is
/// the last one.
template <std::size_t D>
[[gnu::always_inline]] inline void findFeet(const FramedRows<D>& along, const omReal64* r, std::size_t nb,
                                            omReal64 lastStep, Feet<D>& feet) {
  constexpr int nbMostSteps = 6;
  const omReal64 least = r[D - 1] * r[D - 1];
  const omReal64 settled = lastStep * least;
  const omReal64 lowest = -0.875 * least;
  std::array<omReal64, s_nbRows> t;
  std::array<omReal64, s_nbRows> change;
  const auto changeFrom = [&](std::size_t i, const std::array<omReal64, D>& q) __attribute__((always_inline)) {
    omReal64 square = 0;
    omReal64 slope = 0;
    for (std::size_t k = 0; k < D; ++k) {
      const omReal64 u = r[k] * along[k][i] * q[k];
      square += u * u;
      slope += u * u * q[k];
    }
    // sqrt(square) - 1 to third order, without a root: the settled step is small.
    return 2 * (square - 1) * square / ((square + 3) * slope);
  };
  const auto ofStart = inverses<D>(r, 0);
  for (std::size_t i = 0; i < nb; ++i) t[i] = change[i] = changeFrom(i, ofStart);
  for (int step = 1; step < nbMostSteps; ++step) {
    std::size_t nbOpen = 0;
    for (std::size_t i = 0; i < nb; ++i) nbOpen += !(std::abs(change[i]) <= settled);
    if (nbOpen == 0) break;
    for (std::size_t i = 0; i < nb; ++i) {
      change[i] = changeFrom(i, inverses<D>(r, t[i]));
      t[i] += change[i];
    }
  }
  for (std::size_t i = 0; i < nb; ++i) {
    omReal64 square = 0;
    const auto q = inverses<D>(r, t[i]);
    for (std::size_t k = 0; k < D; ++k) {
      const omReal64 gradient = along[k][i] * q[k];
      feet.gradient[k][i] = gradient;
      feet.u[k][i] = r[k] * gradient;
      square += gradient * gradient;
    }
    feet.length[i] = std::sqrt(square);
    feet.distance[i] = t[i] * feet.length[i];
  }
  const auto isFound = [&](std::size_t i) __attribute__((always_inline)) {
    return (std::abs(change[i]) <= settled) & (t[i] > lowest);
  };
  std::size_t nbFound = 0;
  for (std::size_t i = 0; i < nb; ++i) nbFound += isFound(i);
  for (std::size_t i = 0; nbFound < nb && i < nb; ++i) {
    if (isFound(i)) continue;
    std::array<omReal64, D> point;
    std::array<omReal64, D> radii;
    for (std::size_t k = 0; k < D; ++k) {
      point[k] = along[k][i];
      radii[k] = r[k];
    }
    searchFoot<D>(point, radii, feet, i);
  }
}

/// Radii and axes of the symmetric matrix with this upper triangle (diagonal first), in coordinates along `axes`, in
/// descending order. False when one is not positive.
bool decompose(const std::array<omReal64, 3>& s, const AxesModel<2>::Axes& axes, AxesModel<2>::Vector& radii,
               AxesModel<2>::Axes& turned) {
  const omReal64 middle = (s[0] + s[1]) / 2;
  const omReal64 half = std::hypot((s[0] - s[1]) / 2, s[2]);
  const omReal64 angle = std::atan2(s[2], (s[0] - s[1]) / 2) / 2;
  radii = {middle + half, middle - half};
  const omReal64 co = std::cos(angle);
  const omReal64 si = std::sin(angle);
  for (std::size_t d = 0; d < 2; ++d) {
    turned[0][d] = co * axes[0][d] + si * axes[1][d];
    turned[1][d] = co * axes[1][d] - si * axes[0][d];
  }
  return radii[1] > 0;
}
bool decompose(const std::array<omReal64, 6>& s, const AxesModel<3>::Axes& axes, AxesModel<3>::Vector& radii,
               AxesModel<3>::Axes& turned) {
  omReal64 values[3];
  omReal64 vectors[9];
  if (!eigenDecomposition<omReal64>(s[0], s[3], s[4], s[1], s[5], s[2], values, vectors)) return false;
  for (std::size_t k = 0; k < 3; ++k) {
    radii[k] = values[2 - k];
    for (std::size_t d = 0; d < 3; ++d) {
      turned[k][d] = 0;
      for (std::size_t e = 0; e < 3; ++e) turned[k][d] += vectors[3 * (2 - k) + e] * axes[e][d];
    }
  }
  // Near the axes that they were, and right-handed.
  for (std::size_t k = 0; k < 2; ++k) {
    omReal64 along = 0;
    for (std::size_t d = 0; d < 3; ++d) along += turned[k][d] * axes[k][d];
    if (along < 0)
      for (omReal64& value : turned[k]) value = -value;
  }
  const auto& x = turned[0];
  const auto& y = turned[1];
  turned[2] = {x[1] * y[2] - x[2] * y[1], x[2] * y[0] - x[0] * y[2], x[0] * y[1] - x[1] * y[0]};
  return radii[2] > 0;
}

/// Off-diagonal elements of S by their two axes, in the order of the unknowns.
template <std::size_t D>
constexpr std::array<std::array<std::size_t, 2>, D == 2 ? 1 : 3> offDiagonals() {
  if constexpr (D == 2)
    return {{{0, 1}}};
  else
    return {{{0, 1}, {0, 2}, {1, 2}}};
}

/// How much an axis turns for a change of an off-diagonal element: one over the difference of the radii, which may be
/// 0.
omReal64 turnOf(omReal64 larger, omReal64 smaller) { return 1 / std::max(larger - smaller, 1e-140 * larger); }

/// The rotation vector of the matrix with these columns, and its derivative by a small rotation about the columns.
void rotationVector(const AxesModel<3>::Axes& axes, omReal64* vector, omReal64 (&derivative)[3][3]) {
  const omReal64 twoSine[3] = {axes[1][2] - axes[2][1], axes[2][0] - axes[0][2], axes[0][1] - axes[1][0]};
  const omReal64 cosine = std::clamp((axes[0][0] + axes[1][1] + axes[2][2] - 1) / 2, -1.0, 1.0);
  const omReal64 sine = std::sqrt(twoSine[0] * twoSine[0] + twoSine[1] * twoSine[1] + twoSine[2] * twoSine[2]) / 2;
  const omReal64 angle = std::atan2(sine, cosine);
  constexpr omReal64 nearHalfTurn = 1e-4;
  omReal64 unit[3] = {0, 0, 0};
  if (s_pi - angle < nearHalfTurn) {
    // The symmetric part is 2 u uᵀ - 1, nearly: its longest column is along the axis u.
    std::size_t longest = 0;
    for (std::size_t k = 1; k < 3; ++k)
      if (axes[k][k] > axes[longest][longest]) longest = k;
    for (std::size_t d = 0; d < 3; ++d)
      unit[d] = (axes[longest][d] + axes[d][longest]) / 2 - (d == longest ? cosine : 0);
    omReal64 length = std::hypot(unit[0], unit[1], unit[2]);
    if (unit[0] * twoSine[0] + unit[1] * twoSine[1] + unit[2] * twoSine[2] < 0) length = -length;
    for (omReal64& value : unit) value /= length;
  } else if (sine > 0) {
    for (std::size_t d = 0; d < 3; ++d) unit[d] = twoSine[d] / (2 * sine);
  }
  for (std::size_t d = 0; d < 3; ++d) vector[d] = angle * unit[d];
  // 1 + [v]/2 + c [u]², the inverse of the right Jacobian of rotations, with c = 1 - (angle/2) cot(angle/2).
  const omReal64 half = angle / 2;
  const omReal64 c = angle > 0 ? 1 - half * std::cos(half) / std::sin(half) : 0;
  const omReal64 cross[3][3] = {{0, -unit[2], unit[1]}, {unit[2], 0, -unit[0]}, {-unit[1], unit[0], 0}};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j) {
      omReal64 square = 0;
      for (std::size_t k = 0; k < 3; ++k) square += cross[i][k] * cross[k][j];
      derivative[i][j] = (i == j ? 1 : 0) + half * cross[i][j] + c * square;
    }
}

/// Distances and derivatives of a block of samples.
template <std::size_t D>
[[gnu::always_inline]] inline void evaluateAxes(const ormix::detail::CloudFrame<D>& frame,
                                                const DistanceModel::State& state, const omReal64* rows, std::size_t nb,
                                                const DistanceBlock& block) {
  FramedRows<D> from;
  fillFramed<D>(rows, nb, frame, state.data(), from);
  const omReal64* axes = state.data() + axesAt<D>;
  FramedRows<D> along;
  for (std::size_t k = 0; k < D; ++k)
    for (std::size_t i = 0; i < nb; ++i) {
      omReal64 sum = 0;
      for (std::size_t d = 0; d < D; ++d) sum += axes[D * k + d] * from[d][i];
      along[k][i] = sum;
    }
  // Steps of a fit need fewer digits of a distance than what is reported: the error is below 1e-9 of the radii.
  const omReal64 lastStep = block.derivatives ? 1e-5 : 1e-8;
  Feet<D> feet;
  findFeet<D>(along, state.data() + radiiAt<D>, nb, lastStep, feet);
  std::copy_n(feet.distance.data(), nb, block.distances);
  if (block.gains) std::copy_n(feet.length.data(), nb, block.gains);
  if (!block.derivatives && !block.normals) return;
  // From here on the gradient is the unit normal along the axes.
  auto& normal = feet.gradient;
  for (std::size_t i = 0; i < nb; ++i) {
    const omReal64 inverse = 1 / feet.length[i];
    for (std::size_t k = 0; k < D; ++k) normal[k][i] *= inverse;
  }
  for (std::size_t d = 0; d < D; ++d) {
    omReal64* target = block.normals ? block.normals + d * s_nbRows : block.derivatives + d * s_nbRows;
    const omReal64 sign = block.normals ? 1 : -1;
    for (std::size_t i = 0; i < nb; ++i) {
      omReal64 sum = 0;
      for (std::size_t k = 0; k < D; ++k) sum += sign * axes[D * k + d] * normal[k][i];
      target[i] = sum;
    }
    if (block.normals && block.derivatives)
      for (std::size_t i = 0; i < nb; ++i) block.derivatives[d * s_nbRows + i] = -target[i];
  }
  if (!block.derivatives) return;
  omReal64* column = block.derivatives + D * s_nbRows;
  for (std::size_t k = 0; k < D; ++k, column += s_nbRows)
    for (std::size_t i = 0; i < nb; ++i) column[i] = -normal[k][i] * feet.u[k][i];
  for (const auto& [k, l] : offDiagonals<D>()) {
    for (std::size_t i = 0; i < nb; ++i) column[i] = -(normal[k][i] * feet.u[l][i] + normal[l][i] * feet.u[k][i]);
    column += s_nbRows;
  }
}

}  // namespace

template <std::size_t D>
AxesModel<D>::AxesModel(const SampleView& fitted) : FramedModel<D>(fitted) {
  this->nbUnknowns = this->nbReported = D + D * (D + 1) / 2;
  this->isGainConstant = false;
}

template <std::size_t D>
auto AxesModel<D>::stateOf(const Vector& center, const Vector& radii, const Axes& axes) const -> State {
  State state{};
  for (std::size_t d = 0; d < D; ++d) {
    state[d] = (center[d] - this->frame.origin[d]) / this->unit;
    state[radiiAt<D> + d] = radii[d] / this->unit;
    for (std::size_t e = 0; e < D; ++e) state[axesAt<D> + D * d + e] = axes[d][e];
  }
  return state;
}

template <std::size_t D>
auto AxesModel<D>::axesOf(const State& state) -> Axes {
  Axes axes;
  for (std::size_t d = 0; d < D; ++d)
    for (std::size_t e = 0; e < D; ++e) axes[d][e] = state[axesAt<D> + D * d + e];
  return axes;
}

template <std::size_t D>
void AxesModel<D>::evaluate(const State& state, std::size_t first, std::size_t nb, const DistanceBlock& block) const {
  ormix::detail::callForProcessor([&]() __attribute__((always_inline)) {
    evaluateAxes<D>(this->frame, state, this->samples[first], nb, block);
  });
}

template <std::size_t D>
bool AxesModel<D>::move(const State& state, const DistanceModel::Step& step, State& moved) const {
  std::array<omReal64, D*(D + 1) / 2> s;
  for (std::size_t k = 0; k < s.size(); ++k) s[k] = step[D + k] + (k < D ? state[radiiAt<D> + k] : 0);
  Vector radii;
  Axes turned;
  if (!decompose(s, axesOf(state), radii, turned)) return false;
  for (std::size_t d = 0; d < D; ++d) {
    moved[d] = state[d] + step[d];
    moved[radiiAt<D> + d] = radii[d];
    for (std::size_t e = 0; e < D; ++e) moved[axesAt<D> + D * d + e] = turned[d][e];
  }
  return true;
}

template <std::size_t D>
omReal64 AxesModel<D>::report(const State& state, omReal64* params, omReal64* jacobian) const {
  const std::size_t nb = this->nbUnknowns;
  for (std::size_t k = 0; k < 2 * D; ++k) {
    params[k] = this->unit * state[k] + (k < D ? this->frame.origin[k] : 0);
    jacobian[k * nb + k] = this->unit;
  }
  const omReal64* r = state.data() + radiiAt<D>;
  if constexpr (D == 2) {
    omReal64 theta = std::atan2(state[axesAt<D> + 1], state[axesAt<D>]);
    if (theta < 0) theta += s_pi;
    params[4] = theta >= s_pi ? 0 : theta;
    jacobian[4 * nb + 4] = turnOf(r[0], r[1]);
  } else {
    omReal64 derivative[3][3];
    rotationVector(axesOf(state), params + 6, derivative);
    // Changes of xy, xz and yz turn about the third, the second and the first axis.
    const omReal64 turns[3] = {turnOf(r[0], r[1]), -turnOf(r[0], r[2]), turnOf(r[1], r[2])};
    for (std::size_t i = 0; i < 3; ++i)
      for (std::size_t k = 0; k < 3; ++k) jacobian[(6 + i) * nb + 6 + k] = derivative[i][2 - k] * turns[k];
  }
  return 1;
}

template class AxesModel<2>;
template class AxesModel<3>;

}  // namespace ormix::geom::detail
