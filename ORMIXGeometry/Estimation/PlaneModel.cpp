#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>
#include <ORMIXGeometry/Entity/3d/Plan/Plan3d.h>
#include <ORMIXGeometry/Estimation/PlaneModel.h>
#include <ORMIXMath/Fitting/ShapesFromPoints.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom::detail {

namespace {

/// Unit vectors across a normal, and each other.
template <std::size_t D>
std::array<std::array<omReal64, D>, D - 1> across(const omReal64* n) {
  if constexpr (D == 2) {
    return {{{-n[1], n[0]}}};
  } else {
    // The coordinate axis that is farthest from the normal.
    const std::size_t least = static_cast<std::size_t>(
        std::min_element(n, n + 3, [](omReal64 a, omReal64 b) { return std::abs(a) < std::abs(b); }) - n);
    std::array<omReal64, 3> u{-n[least] * n[0], -n[least] * n[1], -n[least] * n[2]};
    u[least] += 1;
    const omReal64 length = std::sqrt(u[0] * u[0] + u[1] * u[1] + u[2] * u[2]);
    for (omReal64& value : u) value /= length;
    return {{u, {n[1] * u[2] - n[2] * u[1], n[2] * u[0] - n[0] * u[2], n[0] * u[1] - n[1] * u[0]}}};
  }
}

template <std::size_t D>
omReal64 product(const omReal64* a, const omReal64* b) {
  omReal64 sum = 0;
  for (std::size_t d = 0; d < D; ++d) sum += a[d] * b[d];
  return sum;
}

/// Distances and derivatives of a block of samples.
template <std::size_t D>
[[gnu::always_inline]] inline void evaluatePlane(const ormix::detail::CloudFrame<D>& frame,
                                                 const DistanceModel::State& state, const omReal64* rows,
                                                 std::size_t nb, const DistanceBlock& block) {
  constexpr std::size_t nbMost = DistanceBlock::s_nbRows;
  constexpr std::array<omReal64, D> origin{};
  FramedRows<D> framed;
  fillFramed<D>(rows, nb, frame, origin.data(), framed);
  const omReal64* n = state.data();
  const omReal64 rho = state[D];
  for (std::size_t i = 0; i < nb; ++i) {
    omReal64 along = 0;
    for (std::size_t d = 0; d < D; ++d) along += n[d] * framed[d][i];
    block.distances[i] = along - rho;
  }
  if (block.derivatives) {
    const auto directions = across<D>(n);
    for (std::size_t k = 0; k + 1 < D; ++k) {
      const auto& u = directions[k];
      for (std::size_t i = 0; i < nb; ++i) {
        omReal64 along = 0;
        for (std::size_t d = 0; d < D; ++d) along += u[d] * framed[d][i];
        block.derivatives[k * nbMost + i] = along;
      }
    }
    std::fill_n(block.derivatives + (D - 1) * nbMost, nb, -1.0);
  }
  if (block.normals)
    for (std::size_t d = 0; d < D; ++d) std::fill_n(block.normals + d * nbMost, nb, n[d]);
}

}  // namespace

template <std::size_t D>
PlaneModel<D>::PlaneModel(const SampleView& fitted) : FramedModel<D>(fitted) {
  this->nbUnknowns = D;
  this->nbReported = D == 2 ? 2 : 4;
}

template <std::size_t D>
auto PlaneModel<D>::stateOf(const Direction& normal, const Direction& point) const -> State {
  State state{};
  for (std::size_t d = 0; d < D; ++d) {
    state[d] = normal[d];
    state[D] += normal[d] * ((point[d] - this->frame.origin[d]) / this->unit);
  }
  return state;
}

template <std::size_t D>
void PlaneModel<D>::evaluate(const State& state, std::size_t first, std::size_t nb, const DistanceBlock& block) const {
  ormix::detail::callForProcessor([&]() __attribute__((always_inline)) {
    evaluatePlane<D>(this->frame, state, this->samples[first], nb, block);
  });
}

template <std::size_t D>
bool PlaneModel<D>::move(const State& state, const DistanceModel::Step& step, State& moved) const {
  const auto directions = across<D>(state.data());
  for (std::size_t d = 0; d < D; ++d) {
    moved[d] = state[d];
    for (std::size_t k = 0; k + 1 < D; ++k) moved[d] += step[k] * directions[k][d];
  }
  const omReal64 length = std::sqrt(product<D>(moved.data(), moved.data()));
  for (std::size_t d = 0; d < D; ++d) moved[d] /= length;
  moved[D] = state[D] + step[D - 1];
  return length > 0;
}

template <std::size_t D>
omReal64 PlaneModel<D>::report(const State& state, omReal64* params, omReal64* jacobian) const {
  const omReal64* n = state.data();
  const omReal64* origin = this->frame.origin.data();
  const auto directions = across<D>(n);
  const omReal64 rho = this->unit * state[D] + product<D>(n, origin);
  omReal64 sign = 1;
  omReal64* ofRho = jacobian;
  if constexpr (D == 2) {
    Line2d line;
    line.setCoords(rho, std::atan2(n[1], n[0]));
    sign = line.getCosTheta() * n[0] + line.getSinTheta() * n[1] < 0 ? -1 : 1;
    params[0] = line.getRho();
    params[1] = line.getTheta();
    jacobian[2] = 1;
  } else {
    omReal64 theta = 0;
    omReal64 phi = 0;
    std::array<omReal64, 3> point;
    for (std::size_t d = 0; d < D; ++d) point[d] = origin[d] + this->unit * state[D] * n[d];
    planFromNormal(point[0], point[1], point[2], n[0], n[1], n[2], params[3], theta, phi);
    const std::array<omReal64, 3> normal{std::sin(theta) * std::cos(phi), std::sin(theta) * std::sin(phi),
                                         std::cos(theta)};
    sign = product<D>(normal.data(), n) < 0 ? -1 : 1;
    for (std::size_t d = 0; d < D; ++d) {
      params[d] = normal[d];
      for (std::size_t k = 0; k + 1 < D; ++k) jacobian[d * D + k] = sign * directions[k][d];
    }
    ofRho = jacobian + 3 * D;
  }
  for (std::size_t k = 0; k + 1 < D; ++k) ofRho[k] = sign * product<D>(directions[k].data(), origin);
  ofRho[D - 1] = sign * this->unit;
  return sign;
}

template class PlaneModel<2>;
template class PlaneModel<3>;

}  // namespace ormix::geom::detail
