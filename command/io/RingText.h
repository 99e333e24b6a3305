#pragma once

#include <ORMIXSerialization/Object/ObjectArchive.h>

#include <iosfwd>

namespace ormix::command {

/// Writes the rings of polygons, polygons with holes and shapes as blocks of lines "x y", which readRings() gives back
/// as they are; a hole is a ring of its own.
/// \return failure for an entity without rings
BoolResult writeRings(std::ostream& out, const SerializationObjectPtrColl& entities);

/// The number of vertices of these rings; of entities without rings 0.
omUInt64 countRingVertices(const SerializationObjectPtrColl& entities);

/// Writes the points of each entity that has some as a block of lines, "x y" or "x y z", see pointsOf().
/// \return failure for an entity without points
BoolResult writePoints(std::ostream& out, const SerializationObjectPtrColl& entities);

}  // namespace ormix::command
