#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>

namespace ormix {

/// A ball of the plane (D = 2, a disk) or of space (D = 3) and the points that determine it.
template <std::size_t D>
struct EnclosingBall {
  std::array<omReal64, D> center{};          ///< in the unit of the points
  omReal64 radius = 0;                       ///< the same unit; not negative
  std::array<std::size_t, D + 1> support{};  ///< indices of the points that determine it, the first nbSupport of them
  std::size_t nbSupport = 0;                 ///< from 1 to D + 1
};

using EnclosingCircle = EnclosingBall<2>;  ///< of the plane
using EnclosingSphere = EnclosingBall<3>;  ///< of space

/// The smallest circle around points in the plane, given as `nbPoints` interleaved pairs x0, y0, x1, ..., or the
/// smallest sphere around points in space, given as triples. It is unique.
///
/// Exists for T in omInt32, omUInt32, omReal32, omReal64. It contains every point: √(dx·dx + dy·dy) to the centre,
/// computed in omReal64 in this order, is at most the radius. The radius is within 1e-12 of the smallest, relative, and
/// half a unit in the last place of the centre's coordinates, which are rounded: far from the origin the smallest
/// circle may have no centre in omReal64. The points of the support have the same smallest ball; where more than these
/// are on the boundary, which of them are chosen is not specified.
///
/// Farthest points are taken into the support one after the other, until none is outside (Gaertner1999); each new
/// support is the best of all subsets of the one before and the new point, relative to that point and in long double.
/// So coincident, collinear and cospherical points and points far from the origin are nothing special. A pass over all
/// points for each step, about 5 to 10 of them.
///
/// Fails with a message, `ball` untouched, when there are no points or a coordinate is NaN or infinite (the message
/// names the first such point), or where the radius exceeds the range of omReal64.
/// @{
template <class T>
ORMIX_MATH_API BoolResult smallestEnclosingCircle(const T* xy, std::size_t nbPoints, EnclosingCircle& ball);
template <class T>
ORMIX_MATH_API BoolResult smallestEnclosingSphere(const T* xyz, std::size_t nbPoints, EnclosingSphere& ball);
/// @}

/// \name Instances in the library
/// @{
/// One of the functions above for one type of coordinate.
extern template BoolResult smallestEnclosingCircle(const omInt32*, std::size_t, EnclosingCircle&);
extern template BoolResult smallestEnclosingCircle(const omUInt32*, std::size_t, EnclosingCircle&);
extern template BoolResult smallestEnclosingCircle(const omReal32*, std::size_t, EnclosingCircle&);
extern template BoolResult smallestEnclosingCircle(const omReal64*, std::size_t, EnclosingCircle&);
extern template BoolResult smallestEnclosingSphere(const omInt32*, std::size_t, EnclosingSphere&);
extern template BoolResult smallestEnclosingSphere(const omUInt32*, std::size_t, EnclosingSphere&);
extern template BoolResult smallestEnclosingSphere(const omReal32*, std::size_t, EnclosingSphere&);
extern template BoolResult smallestEnclosingSphere(const omReal64*, std::size_t, EnclosingSphere&);
/// @}

}  // namespace ormix
