#pragma once

#include <ORMIXGeometry/Estimation/FramedModel.h>

/// \file
/// Ellipses and ellipsoids as models of distances; not installed.

namespace ormix::geom::detail {

/// Signed distances from an ellipse (D = 2) or an ellipsoid (D = 3), positive outside.
///
/// The surface is the image S u of the unit sphere, with the symmetric matrix S = A diag(radii) Aᵀ, about its centre.
/// State: centre, radii in descending order, axes A (its columns one after the other, right-handed), in the frame.
/// Unknowns: the change of the centre, and that of S in the coordinates along the axes: its diagonal, then xy (xz, yz).
/// So nothing is special about equal radii, where angles are not determined. Reported: centre, radii, and theta in
/// [0, pi) or the rotation vector of the axes.
template <std::size_t D>
class ORMIX_GEOMETRY_API AxesModel : public FramedModel<D> {
 public:
  using State = DistanceModel::State;      ///< Centre, radii, axes.
  using Vector = std::array<omReal64, D>;  ///< A point, a direction or the radii.
  using Axes = std::array<Vector, D>;      ///< Directions of the radii.

  explicit AxesModel(const SampleView& fitted);

  /// The state of an ellipse or ellipsoid with its radii in descending order.
  State stateOf(const Vector& center, const Vector& radii, const Axes& axes) const;
  /// The directions of the radii of a state.
  static Axes axesOf(const State& state);

  void evaluate(const State& state, std::size_t first, std::size_t nb, const DistanceBlock& block) const override;
  bool move(const State& state, const DistanceModel::Step& step, State& moved) const override;
  omReal64 report(const State& state, omReal64* params, omReal64* jacobian) const override;
};

extern template class AxesModel<2>;
extern template class AxesModel<3>;

}  // namespace ormix::geom::detail
