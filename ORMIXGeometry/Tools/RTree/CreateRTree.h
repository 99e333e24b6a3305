#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXGeometry/Tools/RTree/RTree.h>

#include <type_traits>
#include <vector>

/// \file
/// Indexes of the parts of entities and of collections of entities. All are packed, in O(n log n), and throw
/// ORMIXGeometryException, logged first, when a coordinate is not finite.

namespace ormix::geom {

/// The coordinates of an index of entities whose coordinates are of type T: omReal32 of omReal32, else omReal64, which
/// holds all others exactly.
template <class T>
using IndexCoordinate = std::conditional_t<std::is_same_v<T, omReal32>, omReal32, omReal64>;

/// The points of a cloud, by their place in it.
/// @{
template <class T>
RTree<Point2d<IndexCoordinate<T>>> createRTree(const PointCloud2d<T>& cloud);
template <class T>
RTree<Point3d<IndexCoordinate<T>>> createRTree(const PointCloud3d<T>& cloud);
/// @}

/// The segments of the boundary: of a polygon segment i from vertex i to the next one, the last one closing the ring
/// where it is not closed; of a polygon with holes those of its rings one after the other, the exterior first and each
/// hole before its own holes, null holes passed over. A single vertex is a segment of length 0.
/// @{
template <class T>
RTree<Segment2d<IndexCoordinate<T>>> createRTree(const Polygon2d<T>& polygon);
template <class T>
RTree<Segment2d<IndexCoordinate<T>>> createRTree(const PolygonWithHoles2d<T>& polygon);
/// @}
/// The same of the boundaries of a shape, one after the other; of one without boundaries those of its pixels.
ORMIX_GEOMETRY_API RTree<Segment2d<omReal64>> createRTree(const Shape2d& shape);

/// The triangles of a mesh by their place in it; of a mesh with holes those of its meshes one after the other, the
/// exterior first and each hole before its own holes, null holes passed over.
/// @{
template <class T>
RTree<LightTriangle3d<IndexCoordinate<T>>> createRTree(const Mesh3d<T>& mesh);
template <class T>
RTree<LightTriangle3d<IndexCoordinate<T>>> createRTree(const MeshWithHoles3d<T>& mesh);
/// @}
/// The same of the surfaces of a shape, one after the other; null ones are passed over.
ORMIX_GEOMETRY_API RTree<LightTriangle3d<omReal64>> createRTree(const Shape3d& shape);

/// The smallest boxes of entities, by their place in the collection. What has none, as a line, an empty cloud, a
/// polygon with a null hole or a null pointer, has an empty one, which is never found.
/// @{
ORMIX_GEOMETRY_API RTree<BoundingBox2d<omReal64>> createRTree(const std::vector<GeometryEntity2dPtr>& entities);
ORMIX_GEOMETRY_API RTree<BoundingBox3d<omReal64>> createRTree(const std::vector<GeometryEntity3dPtr>& entities);
/// @}

}  // namespace ormix::geom
