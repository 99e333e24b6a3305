#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <array>
#include <cstddef>

namespace ormix {

/// A box of space in any direction.
struct OrientedBox {
  SpatialPoint center{};                ///< in the unit of the points
  std::array<omReal64, 3> halfSizes{};  ///< along the axes, descending
  /// A rotation whose columns are the directions of the box's axes.
  RotationMatrix axes{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
};

/// A small box around points in space, given as `nbPoints` interleaved triples x0, y0, z0, x1, …
///
/// Its volume is at most that of the smallest box with a face along a face of the convex hull, which is found exactly,
/// and mostly within 1 % of the smallest of all, which need not have such a face (ORourke1985): the best boxes so
/// found, and those along many other directions, are improved by turning them about their axes, where the smallest
/// rectangle around the projection is best, and by small rotations, until nothing gets better. The box contains every
/// point up to rounding; half sizes are a few units in the last place too large for it. Points in one plane get a flat
/// box, the smallest rectangle there.
///
/// O(F V log V) for a hull of V vertices and F faces, besides the hull's own time. Where F V exceeds 5·10^6, only every
/// k-th face is tried.
///
/// Fails with a message, `box` untouched, when there are no points or a coordinate is NaN or infinite (the message
/// names the first such point), or where the extent exceeds the range of omReal64.
ORMIX_MATH_API BoolResult smallestOrientedBox(const omReal64* xyz, std::size_t nbPoints, OrientedBox& box);

}  // namespace ormix
