#pragma once

#include <ORMIXGeometry/Estimation/FramedModel.h>

/// \file
/// Lines of the plane and planes of space as models of distances; not installed.

namespace ormix::geom::detail {

/// Signed distances from a line (D = 2) or a plane (D = 3), positive on the side of the normal. State: unit normal, and
/// the distance of the frame's origin along it; unknowns: the change of the normal along the D - 1 directions across
/// it, and of the distance. Reported: rho and theta of a Line2d, or the normal of a Plan3d and its rho.
template <std::size_t D>
class ORMIX_GEOMETRY_API PlaneModel : public FramedModel<D> {
 public:
  using State = DistanceModel::State;         ///< Normal, distance.
  using Direction = std::array<omReal64, D>;  ///< A vector.

  explicit PlaneModel(const SampleView& fitted);

  /// The state of the line or plane through the given point, across a normal of length 1.
  State stateOf(const Direction& normal, const Direction& point) const;

  void evaluate(const State& state, std::size_t first, std::size_t nb, const DistanceBlock& block) const override;
  bool move(const State& state, const DistanceModel::Step& step, State& moved) const override;
  omReal64 report(const State& state, omReal64* params, omReal64* jacobian) const override;
};

extern template class PlaneModel<2>;
extern template class PlaneModel<3>;

}  // namespace ormix::geom::detail
