#pragma once

#include <ORMIXGeometry/Entity/2d/Skeleton/Skeleton2d.h>

#include <vector>

// Not installed.
namespace ormix::geom::detail {

/// The edges that are marked, with their vertices and parts, and some more vertices; all in the order they have.
Skeleton2d subSkeleton(const Skeleton2d& skeleton, const std::vector<char>& isKept,
                       const std::vector<omUInt32>& moreVertices = {});

}  // namespace ormix::geom::detail
