#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

namespace ormix {

/// \file
/// Sums over the vertices of one ring or path, given as `nbPoints` interleaved pairs x0, y0, x1, y1, ...
///
/// The functions exist for T in omInt32, omUInt32, omReal32, omReal64. Every coordinate is converted to omReal64 before
/// any arithmetic, so integers do not overflow. `xy` may be null when `nbPoints` is 0. O(nbPoints), no allocation.

/// Signed area of the closed ring, positive when its vertices are counter-clockwise (x to the right, y up).
///
/// 0.5 * S with S the sum over k from nbPoints - 1 down to 1 of (x[k] + x[k-1]) * (y[k] - y[k-1]), added in exactly
/// this order, so the result has the same bits on every processor. The ring must be closed, its last vertex repeating
/// the first: no closing edge is added. The area of three or fewer vertices is 0. Infinite and NaN coordinates are not
/// treated specially; the result is that of the arithmetic.
template <class T>
ORMIX_MATH_API omReal64 ringSignedArea(const T* xy, std::size_t nbPoints);

/// Signed area of the closed ring, positive when its vertices are clockwise, as those of a hole's boundary are.
///
/// 0.5 * S with S the sum over i from 0 up to nbPoints - 2 of (x[i] + x[i+1]) * (y[i] - y[i+1]), added in exactly this
/// order. Otherwise as ringSignedArea(), whose negation it is to rounding only, since the order of additions is
/// reversed.
template <class T>
ORMIX_MATH_API omReal64 ringSignedAreaReversed(const T* xy, std::size_t nbPoints);

/// Length of the path through the vertices in their order: the sum of sqrt(dx * dx + dy * dy) over consecutive
/// vertices.
///
/// No closing edge is added; the length of fewer than two vertices is 0. The lengths of the edges are added by
/// compensated summation (about 106 bits) and the sum is rounded once: it is the exact sum of the rounded lengths to
/// within one unit in the last place, for any number of edges. Infinity and NaN are as a plain sum gives them;
/// differences beyond about 1e154 overflow to infinity. The same bits on every processor, whatever its vector
/// instructions.
template <class T>
ORMIX_MATH_API omReal64 pathLength(const T* xy, std::size_t nbPoints);

namespace detail {

/// pathLength() without vector instructions chosen at run time, as processors without these execute it. Exported so
/// that tests can compare both on one processor.
template <class T>
ORMIX_MATH_API omReal64 pathLengthPortable(const T* xy, std::size_t nbPoints);

}  // namespace detail

/// \name Instances in the library
/// @{
// clang-format off
/// One of the functions above for one type of coordinate.
extern template omReal64 ringSignedArea(const omInt32*, std::size_t);
extern template omReal64 ringSignedArea(const omUInt32*, std::size_t);
extern template omReal64 ringSignedArea(const omReal32*, std::size_t);
extern template omReal64 ringSignedArea(const omReal64*, std::size_t);
extern template omReal64 ringSignedAreaReversed(const omInt32*, std::size_t);
extern template omReal64 ringSignedAreaReversed(const omUInt32*, std::size_t);
extern template omReal64 ringSignedAreaReversed(const omReal32*, std::size_t);
extern template omReal64 ringSignedAreaReversed(const omReal64*, std::size_t);
extern template omReal64 pathLength(const omInt32*, std::size_t);
extern template omReal64 pathLength(const omUInt32*, std::size_t);
extern template omReal64 pathLength(const omReal32*, std::size_t);
extern template omReal64 pathLength(const omReal64*, std::size_t);
/// @}
namespace detail {
extern template omReal64 pathLengthPortable(const omInt32*, std::size_t);
extern template omReal64 pathLengthPortable(const omUInt32*, std::size_t);
extern template omReal64 pathLengthPortable(const omReal32*, std::size_t);
extern template omReal64 pathLengthPortable(const omReal64*, std::size_t);
}  // namespace detail
// clang-format on

}  // namespace ormix
