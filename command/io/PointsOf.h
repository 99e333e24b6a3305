#pragma once

#include <ORMIXSerialization/Object/BaseSerializationObject.h>
#include <command/io/PointText.h>

#include <optional>

namespace ormix::command {

/// The points of a point, a point cloud, a polygon (a last one that repeats the first is left out) or a mesh, in order;
/// none of other objects. Linear.
std::optional<PointSet> pointsOf(const BaseSerializationObject& object);

}  // namespace ormix::command
