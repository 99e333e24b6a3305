#pragma once

#include <ORMIXGeometry/Entity/3d/Cuboid/Cuboid3d.h>

namespace ormix::geom {

/// A smallest box around a spatial entity, in any direction: at most the smallest one with a face along a face of the
/// convex hull, and mostly within 1 % of the smallest of all, see smallestOrientedBox(), which has the complexity.
///
/// The half length, width and height descend. The cuboid is where its corners are, as it is turned about the origin of
/// coordinates: `center()` is that before the turn. It contains every stored point up to rounding, a few units in the
/// last place of its size and of its distance from the origin. Of a sphere and an ellipsoid it is the one along the
/// axes, which is the smallest. Points in one plane get a flat box.
/// \throw ORMIXGeometryException, logged first with the message of EnvelopeTransform3d, where that has no answer
ORMIX_GEOMETRY_API Cuboid3d<omReal64> smallestBox(const BaseGeometryEntity3d& entity);

}  // namespace ormix::geom
