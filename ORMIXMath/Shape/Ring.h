#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

namespace ormix {

/// \file
/// Sums over the vertices of one ring or path, given as `nbPoints` interleaved pairs x0, y0, x1, y1, ...
///
/// Exist for T in omInt32, omUInt32, omReal32, omReal64. Every coordinate is converted to omReal64 before any
/// arithmetic, so integers neither wrap nor overflow. Nothing is allocated, `xy` may be null when `nbPoints` is 0.
/// O(nbPoints).

/// Signed area of the closed ring, positive when it turns counter-clockwise (x to the right, y up).
///
/// 0.5 * S, S the sum over k from nbPoints - 1 down to 1 of (x[k] + x[k-1]) * (y[k] - y[k-1]), added in exactly this
/// order: the result has the same bits on every processor. The ring is taken as closed (its last vertex repeats the
/// first): no edge is added, and three or fewer vertices enclose nothing, the answer is 0. Infinite and NaN
/// coordinates give what the arithmetic gives.
template <class T>
ORMIX_MATH_API omReal64 ringSignedArea(const T* xy, std::size_t nbPoints);

/// Signed area of the closed ring, positive when it turns clockwise: the convention of a hole's boundary.
///
/// 0.5 * S, S the sum over i from 0 up to nbPoints - 2 of (x[i] + x[i+1]) * (y[i] - y[i+1]), added in this order. As
/// ringSignedArea otherwise; it is that area's negation up to rounding only, since the terms are added the other way.
template <class T>
ORMIX_MATH_API omReal64 ringSignedAreaReversed(const T* xy, std::size_t nbPoints);

/// Length of the path through the vertices in their order: the sum of sqrt(dx * dx + dy * dy) over consecutive
/// vertices.
///
/// No closing edge is added; fewer than two vertices have length 0. The lengths are summed with compensation (about 106
/// bits) and rounded once, so the result is the exact sum of the rounded lengths to within one unit in the last place
/// and does not degrade with their number. Infinity and NaN come out as a plain sum gives them; squares of
/// differences beyond about 1e154 overflow to infinity. The same bits on every processor, whatever vectors it has.
template <class T>
ORMIX_MATH_API omReal64 pathLength(const T* xy, std::size_t nbPoints);

namespace detail {

/// pathLength without the vector instructions chosen at run time: what processors that lack them execute, exported so
/// that the agreement of both can be checked where both run.
template <class T>
ORMIX_MATH_API omReal64 pathLengthPortable(const T* xy, std::size_t nbPoints);

}  // namespace detail

// clang-format off
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
namespace detail {
extern template omReal64 pathLengthPortable(const omInt32*, std::size_t);
extern template omReal64 pathLengthPortable(const omUInt32*, std::size_t);
extern template omReal64 pathLengthPortable(const omReal32*, std::size_t);
extern template omReal64 pathLengthPortable(const omReal64*, std::size_t);
}  // namespace detail
// clang-format on

}  // namespace ormix
