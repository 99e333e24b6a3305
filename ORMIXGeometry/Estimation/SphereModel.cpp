#include <ORMIXGeometry/Estimation/SphereModel.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom::detail {

namespace {

/// Distances and derivatives of a block of samples.
template <std::size_t D>
[[gnu::always_inline]] inline void evaluateSphere(const ormix::detail::CloudFrame<D>& frame,
                                                  const DistanceModel::State& state, const omReal64* rows,
                                                  std::size_t nb, const DistanceBlock& block) {
  constexpr std::size_t nbMost = DistanceBlock::s_nbRows;
  FramedRows<D> from;
  fillFramed<D>(rows, nb, frame, state.data(), from);
  std::array<omReal64, nbMost> length;
  const omReal64 radius = state[D];
  for (std::size_t i = 0; i < nb; ++i) {
    omReal64 square = 0;
    for (std::size_t d = 0; d < D; ++d) square += from[d][i] * from[d][i];
    length[i] = std::sqrt(square);
    block.distances[i] = length[i] - radius;
  }
  if (block.derivatives || block.normals) {
    // At the centre every direction is as good: none.
    for (std::size_t i = 0; i < nb; ++i) length[i] = 1 / (length[i] > 0 ? length[i] : 1);
    for (std::size_t d = 0; d < D; ++d)
      for (std::size_t i = 0; i < nb; ++i) from[d][i] *= length[i];
  }
  if (block.derivatives) {
    for (std::size_t d = 0; d < D; ++d)
      for (std::size_t i = 0; i < nb; ++i) block.derivatives[d * nbMost + i] = -from[d][i];
    std::fill_n(block.derivatives + D * nbMost, nb, -1.0);
  }
  if (block.normals)
    for (std::size_t d = 0; d < D; ++d) std::copy_n(from[d].data(), nb, block.normals + d * nbMost);
}

}  // namespace

template <std::size_t D>
SphereModel<D>::SphereModel(const SampleView& fitted) : FramedModel<D>(fitted) {
  this->nbUnknowns = this->nbReported = D + 1;
}

template <std::size_t D>
auto SphereModel<D>::stateOf(const std::array<omReal64, D>& center, omReal64 radius) const -> State {
  State state{};
  for (std::size_t d = 0; d < D; ++d) state[d] = (center[d] - this->frame.origin[d]) / this->unit;
  state[D] = radius / this->unit;
  return state;
}

template <std::size_t D>
void SphereModel<D>::evaluate(const State& state, std::size_t first, std::size_t nb, const DistanceBlock& block) const {
  ormix::detail::callForProcessor([&]() __attribute__((always_inline)) {
    evaluateSphere<D>(this->frame, state, this->samples[first], nb, block);
  });
}

template <std::size_t D>
bool SphereModel<D>::move(const State& state, const DistanceModel::Step& step, State& moved) const {
  for (std::size_t k = 0; k <= D; ++k) moved[k] = state[k] + step[k];
  return moved[D] > 0;
}

template <std::size_t D>
omReal64 SphereModel<D>::report(const State& state, omReal64* params, omReal64* jacobian) const {
  for (std::size_t k = 0; k <= D; ++k) {
    params[k] = this->unit * state[k] + (k < D ? this->frame.origin[k] : 0);
    jacobian[k * (D + 1) + k] = this->unit;
  }
  return 1;
}

template class SphereModel<2>;
template class SphereModel<3>;

}  // namespace ormix::geom::detail
