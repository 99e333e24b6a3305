#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>

/// \file
/// Distance of points to an ellipse or ellipsoid seen along its axes, as residuals need it; not installed.

namespace ormix::geom::detail {

/// Distance to the curve or surface (not to what it encloses) of the points at the centre plus radius · unit vector.
/// Zero radii leave a disk, a segment or a point. Right to about an epsilon of the largest of distance and radii
/// wherever the point is: on the axes, at the centre, on the surface and far away. NaN and infinite points have NaN and
/// infinite distances.
template <std::size_t N>
class AxesDistance {
 public:
  using Values = std::array<omReal64, N>;

  /// \param radii not negative, the largest first
  explicit AxesDistance(const Values& radii);

  /// \param point its coordinates along the axes, in their order; signs do not matter
  omReal64 operator()(const Values& point) const;

 private:
  omReal64 toSurface(const Values& x) const;

  Values _radii;
  std::size_t _nbAxes = 0;  ///< Of them those that are not flat.
  Values _ratio{};          ///< Squared ratios of the radii to the smallest, at least 1.
  Values _excess{};         ///< The ratios less 1, without cancellation.
};

extern template class AxesDistance<2>;
extern template class AxesDistance<3>;

}  // namespace ormix::geom::detail
