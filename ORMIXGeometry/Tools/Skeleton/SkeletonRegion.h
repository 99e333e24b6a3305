#pragma once

#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Skeleton/Skeleton2d.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <vector>

namespace ormix::geom {

/// The region of a skeleton again: the union of the circles around all of its points, one polygon with its holes for
/// each component. Of a skeleton that was not pruned this is the region itself, without vertices where its boundary is
/// straight. Where branches were pruned, the boundary follows the circle around the vertex where they began; the
/// Hausdorff distance to the region is then at most the bound that pruneSkeleton() reports, plus the tolerance.
///
/// Found by a walk around the graph, so linear but for sorting the edges around vertices.
/// \param tolerance greatest distance between an arc of a circle and the chords that replace it, above 0
/// \throw ORMIXGeometryException, logged first, for another tolerance
ORMIX_GEOMETRY_API std::vector<boost::shared_ptr<PolygonWithHoles2d<omReal64>>> regionOf(const Skeleton2d& skeleton,
                                                                                         omReal64 tolerance);

}  // namespace ormix::geom
