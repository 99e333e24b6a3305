#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <vector>

namespace ormix {

/// The boundary of the convex hull of points in the plane, given as `nbPoints` interleaved pairs x0, y0, x1, ...
///
/// Exists for T in omInt32, omUInt32, omReal32, omReal64. `hullXy` gets the coordinates of the extreme points, pairs
/// again, counter-clockwise (x to the right, y up) from the one with the smallest x, of several the one with the
/// smallest y. The ring is not closed: the first vertex is not repeated. No vertex occurs twice and no three are on a
/// line. Of points that are all equal, the hull is this one point; of points on a line, it is the two outermost points.
///
/// The hull is that of the given numbers, whatever their size, as every decision has the sign of the exact determinant
/// (orientation()): no point is outside. Zeros of either sign are equal. O(n log n) steps and O(n) memory for the n
/// points that remain after removing points well inside; what removes them are slices between the two chains of a
/// sample's hull, and only where the sample tells that it pays.
///
/// Fails with a message, `hullXy` untouched, when there are no points or a coordinate is NaN or infinite (the message
/// names the first such point). `hullXy` may be empty or hold anything, but not the points themselves.
template <class T>
ORMIX_MATH_API BoolResult convexHull2d(const T* xy, std::size_t nbPoints, std::vector<T>& hullXy);

/// \name Instances in the library
/// @{
/// convexHull2d() of one type of coordinate.
extern template BoolResult convexHull2d(const omInt32*, std::size_t, std::vector<omInt32>&);
extern template BoolResult convexHull2d(const omUInt32*, std::size_t, std::vector<omUInt32>&);
extern template BoolResult convexHull2d(const omReal32*, std::size_t, std::vector<omReal32>&);
extern template BoolResult convexHull2d(const omReal64*, std::size_t, std::vector<omReal64>&);
/// @}

}  // namespace ormix
