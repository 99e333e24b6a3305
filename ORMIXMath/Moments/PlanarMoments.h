#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>

/// \file
/// Moments of distributions of mass in the plane, up to the third order.
///
/// Third moments of a set of extent d are of the order of d⁵: they are right where that neither overflows nor
/// underflows, for extents between about 1e-60 and 1e60. Constant time, nothing is allocated.

namespace ormix {

/// The moments m_pq = ∫ (x − originX)^p (y − originY)^q dm of a distribution of mass m, for p + q <= 3. For a region of
/// the plane, m is its area; for points, their number. Mass may be negative, and may cancel.
///
/// Each coordinate of the origin is the sum of two reals, so that an origin inside a small set that is far away is as
/// exact as one near zero. The functions below keep the origin at the centroid where there is one; the first moments
/// are then 0 and the others the central moments. A default-constructed value is that of the empty set.
struct PlanarMoments {
  static constexpr std::size_t s_nbMoments = 10;  ///< number of pairs p, q
  static constexpr omUInt32 s_maxOrder = 3;       ///< largest p + q

  omReal64 originX = 0;      ///< x of the origin, rounded
  omReal64 originY = 0;      ///< y of the origin, rounded
  omReal64 originXRest = 0;  ///< x of the origin minus originX
  omReal64 originYRest = 0;  ///< y of the origin minus originY
  /// m00, m10, m01, m20, m11, m02, m30, m21, m12, m03.
  std::array<omReal64, s_nbMoments> about{};

  /// The position of m_pq in `about`, for p + q <= 3.
  static constexpr std::size_t index(omUInt32 p, omUInt32 q) { return (p + q) * (p + q + 1) / 2 + q; }
};

/// The same distribution with its origin moved to the centroid. Unchanged where there is none: where the mass is 0, or
/// so near to 0 by cancellation that the centroid is far outside the distribution.
ORMIX_MATH_API PlanarMoments centredMoments(const PlanarMoments& moments);

/// The moments of two distributions together, or of the first less the second, centred.
/// @{
ORMIX_MATH_API PlanarMoments operator+(const PlanarMoments& a, const PlanarMoments& b);
ORMIX_MATH_API PlanarMoments operator-(const PlanarMoments& a, const PlanarMoments& b);
inline PlanarMoments& operator+=(PlanarMoments& a, const PlanarMoments& b) { return a = a + b; }
inline PlanarMoments& operator-=(PlanarMoments& a, const PlanarMoments& b) { return a = a - b; }
/// @}

/// The distribution with the opposite mass.
ORMIX_MATH_API PlanarMoments operator-(PlanarMoments moments);

/// The moment about the point (0, 0), rounded once from twice the precision; p + q <= 3.
ORMIX_MATH_API omReal64 rawMoment(const PlanarMoments& moments, omUInt32 p, omUInt32 q);

/// The moments about the centroid, in the order of `PlanarMoments::about`. The mass must not be 0.
ORMIX_MATH_API std::array<omReal64, PlanarMoments::s_nbMoments> centralMoments(const PlanarMoments& moments);

/// Whether all numbers are finite.
ORMIX_MATH_API bool isFinite(const PlanarMoments& moments);

/// Moments of a filled ellipse about its centre, from its radii a, along the direction (cosTheta, sinTheta), and b. The
/// mass is π·a·b and so negative where one radius is. The origin is (x, y).
ORMIX_MATH_API PlanarMoments ellipseMoments(omReal64 x, omReal64 y, omReal64 a, omReal64 b, omReal64 cosTheta,
                                            omReal64 sinTheta);

/// The same of a filled rectangle with the half sides a, along (cosTheta, sinTheta), and b. The mass is 4·a·b.
ORMIX_MATH_API PlanarMoments rectangleMoments(omReal64 x, omReal64 y, omReal64 a, omReal64 b, omReal64 cosTheta,
                                              omReal64 sinTheta);

/// The same of the rectangle [xMin, xMax] × [yMin, yMax]. The mass is the product of the differences.
ORMIX_MATH_API PlanarMoments boxMoments(omReal64 xMin, omReal64 yMin, omReal64 xMax, omReal64 yMax);

/// The moment invariants of Hu (Hu1962), in his order, from the normalised central moments m_pq / m00^(1 + (p + q)/2)
/// in the order of `PlanarMoments::about`. They do not change when the distribution is translated, rotated or scaled;
/// a reflection changes the sign of the last one.
ORMIX_MATH_API std::array<omReal64, 7> huInvariants(const std::array<omReal64, PlanarMoments::s_nbMoments>& normalized);

}  // namespace ormix
