#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXMath/Contact/BoundaryRings.h>

// Not installed.
namespace ormix::geom::detail {

/// Adds the rings of a polygon, of a polygon with holes, or of a shape as the boundary of a region. The outermost rings
/// have the region inside, those in them outside, and so on; roles and orientations do not matter. Null holes and
/// boundaries are passed over. Of a shape without boundaries, the rings of its pixels.
/// \throw ORMIXGeometryException, logged, for entities of other classes
void addRings(ormix::detail::BoundaryRings& rings, const BaseGeometryEntity2d& entity, omUInt32 region);

}  // namespace ormix::geom::detail
