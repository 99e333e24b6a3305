#pragma once

#include <ORMIXGeometry/Estimation/FramedModel.h>

/// \file
/// Circles and spheres as models of distances; not installed.

namespace ormix::geom::detail {

/// Signed distances from a circle (D = 2) or a sphere (D = 3), positive outside. State: centre and radius in the frame;
/// unknowns: their changes; reported: centre and radius.
template <std::size_t D>
class ORMIX_GEOMETRY_API SphereModel : public FramedModel<D> {
 public:
  using State = DistanceModel::State;  ///< Centre, radius.

  explicit SphereModel(const SampleView& fitted);

  /// The state of a centre and a radius as they are reported.
  State stateOf(const std::array<omReal64, D>& center, omReal64 radius) const;

  void evaluate(const State& state, std::size_t first, std::size_t nb, const DistanceBlock& block) const override;
  bool move(const State& state, const DistanceModel::Step& step, State& moved) const override;
  omReal64 report(const State& state, omReal64* params, omReal64* jacobian) const override;
};

extern template class SphereModel<2>;
extern template class SphereModel<3>;

}  // namespace ormix::geom::detail
