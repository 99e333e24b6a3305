#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Entity/3d/Triangle/LightTriangle3d.h>

// Forward declarations of the indexes, as PlanarClasses.h has those of the plane: include this header instead of
// declaring one elsewhere.

namespace ormix::geom {

template <class Item>
class ORMIX_GEOMETRY_API RTree;

namespace detail {

/// The index of each kind of item, for each type of coordinates.
template <template <class> class... Item>
using RTreesOf = geom::JoinedLists<ClassList<RTree<Item<omReal32>>, RTree<Item<omReal64>>>...>;

}  // namespace detail

/// All indexes: those of items of the plane, those of items of space, and both.
/// @{
using PlanarRTreeList = detail::RTreesOf<Point2d, Segment2d, BoundingBox2d>;
using SpatialRTreeList = detail::RTreesOf<Point3d, Segment3d, BoundingBox3d, LightTriangle3d>;
using RTreeList = JoinedLists<PlanarRTreeList, SpatialRTreeList>;
/// @}

}  // namespace ormix::geom
