#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>

/// \file
/// Distance of points to an ellipse or ellipsoid in the coordinates along its axes, for residuals; not installed.

namespace ormix::geom::detail {

/// Distance to an ellipse (N = 2, the curve and not the disk) or ellipsoid (N = 3, the surface and not the solid) with
/// its centre at the origin and its axes along those of the coordinates. With zero radii the set is a solid disk, a
/// segment or a point. The error is about epsilon times the largest of distance and radii for every point: on the axes,
/// at the centre, on the surface and far away. NaN and infinite points have NaN and infinite distances.
template <std::size_t N>
class AxesDistance {
 public:
  using Values = std::array<omReal64, N>;  ///< one number for each axis

  /// \param radii not negative, in descending order
  explicit AxesDistance(const Values& radii);

  /// The distance of a point.
  /// \param point its coordinates along the axes, in order of the radii; signs do not matter
  omReal64 operator()(const Values& point) const;
  /// The distance of a point, and the nearest point. All radii must be positive. Of several that are equally near it is
  /// any; for points that are not finite, or infinitely farther than the radii, it is not set.
  omReal64 nearest(const Values& point, Values& foot) const;

 private:
  /// Distance within the axes with radii that are not zero, for coordinates that are not negative; `off` is the
  /// difference to the nearest point.
  omReal64 toSurface(const Values& x, Values& off) const;

  Values _radii;
  std::size_t _nbAxes = 0;  ///< number of radii that are not zero
  Values _ratio{};          ///< squared ratios of these radii to the smallest of them, at least 1
  Values _excess{};         ///< the squared ratios minus 1, computed without cancellation
};

extern template class AxesDistance<2>;
extern template class AxesDistance<3>;

}  // namespace ormix::geom::detail
