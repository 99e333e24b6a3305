#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXMath/Shape/IndexTriangle.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <vector>

namespace ormix {

/// The boundary of the convex hull of points in space, given as `nbPoints` interleaved triples x0, y0, z0, x1, ...
///
/// Exists for T in omInt32, omUInt32, omReal32, omReal64. Each triangle has the indices of its points in the input,
/// counter-clockwise as seen from outside; each edge belongs to exactly two triangles, once in each direction.
///
/// The hull is that of the given numbers at any scale and offset, as every decision has the sign of the exact
/// determinant (orientation3d()): no point lies outside the plane of a triangle, no triangle is degenerate, and the
/// vertices are exactly the extreme points, none of them inside a face or an edge. Of several equal points one index is
/// used; which one is not specified, nor are the order of the triangles and how a flat face with more than three
/// corners is cut into triangles. Exception: where the largest magnitude exceeds 2^200, coordinates count as rounded to
/// multiples of 2^-1200 of it.
///
/// Quickhull (Barber1996) of the m points that remain after removing points well inside. Observed time is
/// O(nbPoints + m log m). Points for which the order of Quickhull takes many more steps, as exponential spirals, are
/// inserted in random order from then on (Clarkson1989), which bounds the expected time. Memory is proportional to m
/// and the size of the hull.
///
/// Fails with a message, `triangles` untouched, when a coordinate is NaN or infinite (the message names the first such
/// point), when the points lie in one plane or are fewer than four (it says how many there are and what they span), and
/// when there are more than 2^31.
template <class T>
ORMIX_MATH_API BoolResult convexHull3d(const T* xyz, std::size_t nbPoints, std::vector<IndexTriangle>& triangles);

/// \name Instances in the library
/// @{
// clang-format off
/// convexHull3d() of one type of coordinate.
extern template BoolResult convexHull3d(const omInt32*, std::size_t, std::vector<IndexTriangle>&);
extern template BoolResult convexHull3d(const omUInt32*, std::size_t, std::vector<IndexTriangle>&);
extern template BoolResult convexHull3d(const omReal32*, std::size_t, std::vector<IndexTriangle>&);
extern template BoolResult convexHull3d(const omReal64*, std::size_t, std::vector<IndexTriangle>&);
// clang-format on
/// @}

}  // namespace ormix
