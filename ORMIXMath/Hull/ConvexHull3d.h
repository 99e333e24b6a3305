#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>
#include <vector>

namespace ormix {

/// A triangle as three indices of points.
using IndexTriangle = std::array<omUInt32, 3>;

/// The boundary of the convex hull of points in space, given as `nbPoints` interleaved triples x0, y0, z0, x1, ...
///
/// Exists for T in omInt32, omUInt32, omReal32, omReal64. The triangles name points by their index in the input and
/// turn counter-clockwise seen from outside; each edge belongs to exactly two of them, once in either direction. The
/// hull is that of the given numbers, not of rounded ones: every decision has the sign of the exact determinant
/// (orientation3d()), so no point lies outside a triangle's plane, no triangle is degenerate, and the vertices are
/// exactly the extreme points, at any scale and offset: none inside a face or an edge, one index (which one is not
/// fixed) where several points are equal. (Only where the largest magnitude exceeds 2^200, others below 2^-1200 of it
/// count as rounded to multiples of that.) A flat face with more than three corners is cut into a fan. Neither the
/// order of the triangles nor the cut of flat faces is fixed.
///
/// Quickhull (Barber1996), after points well inside have been dropped: O(nbPoints + m log m) for the m others, in time
/// as observed, not in the worst case. Memory in proportion to the hull and those others.
///
/// Fails, `triangles` then untouched, when a coordinate is NaN or infinite (the message names the first such point),
/// when the points do not span the space (it says how many there are and what they span), or when there are more than
/// 2^31.
template <class T>
ORMIX_MATH_API BoolResult convexHull3d(const T* xyz, std::size_t nbPoints, std::vector<IndexTriangle>& triangles);

// clang-format off
extern template BoolResult convexHull3d(const omInt32*, std::size_t, std::vector<IndexTriangle>&);
extern template BoolResult convexHull3d(const omUInt32*, std::size_t, std::vector<IndexTriangle>&);
extern template BoolResult convexHull3d(const omReal32*, std::size_t, std::vector<IndexTriangle>&);
extern template BoolResult convexHull3d(const omReal64*, std::size_t, std::vector<IndexTriangle>&);
// clang-format on

}  // namespace ormix
