#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Tools/Location/RingsOf.h>
#include <ORMIXGeometry/Tools/RTree/CreateRTree.h>
#include <ORMIXGeometry/Tools/RTree/TreeOfParts.h>
#include <ORMIXGeometry/Transform/2d/EnvelopeTransform2d.h>
#include <ORMIXGeometry/Transform/2d/PlanarParts.h>

namespace ormix::geom {

namespace {

using namespace detail;

template <class U, class Region>
RTree<Segment2d<U>> treeOfSegments(const Region& region) {
  std::vector<std::array<Point2dData<U>, 2>> items;
  visitRings(region, [&items](const auto* xy, std::size_t nbPoints) {
    const auto vertex = [xy](std::size_t i) {
      return Point2dData<U>(static_cast<U>(xy[2 * i]), static_cast<U>(xy[2 * i + 1]));
    };
    const bool isClosed = nbPoints > 1 && vertex(0) == vertex(nbPoints - 1);
    const std::size_t nbSegments = isClosed ? nbPoints - 1 : nbPoints;
    for (std::size_t i = 0; i < nbSegments; ++i) items.push_back({vertex(i), vertex(i + 1 < nbPoints ? i + 1 : 0)});
  });
  return RTreeAccess::fromPoints<Segment2d<U>>(std::move(items));
}

/// visitRuns() as a function object.
struct VisitRuns {
  template <class Entity, class Visit>
  auto operator()(const Entity& entity, Visit visit) const -> decltype(detail::visitRuns(entity, visit)) {
    return detail::visitRuns(entity, visit);
  }
};

}  // namespace

template <class T>
RTree<Point2d<IndexCoordinate<T>>> createRTree(const PointCloud2d<T>& cloud) {
  return treeOfPoints<Point2d<IndexCoordinate<T>>>(cloud);
}
template <class T>
RTree<Segment2d<IndexCoordinate<T>>> createRTree(const Polygon2d<T>& polygon) {
  return treeOfSegments<IndexCoordinate<T>>(polygon);
}
template <class T>
RTree<Segment2d<IndexCoordinate<T>>> createRTree(const PolygonWithHoles2d<T>& polygon) {
  return treeOfSegments<IndexCoordinate<T>>(polygon);
}
RTree<Segment2d<omReal64>> createRTree(const Shape2d& shape) { return treeOfSegments<omReal64>(shape); }
RTree<BoundingBox2d<omReal64>> createRTree(const std::vector<GeometryEntity2dPtr>& entities) {
  return treeOfBoxes<BoundingBox2d<omReal64>, EnvelopeTransform2d>(PlanarEntityList(), entities, VisitRuns(),
                                                                   __PRETTY_FUNCTION__);
}

#define ORMIX_GEOMETRY_INSTANTIATE_CREATE(T)                                                          \
  template ORMIX_GEOMETRY_API RTree<Point2d<IndexCoordinate<T>>> createRTree(const PointCloud2d<T>&); \
  template ORMIX_GEOMETRY_API RTree<Segment2d<IndexCoordinate<T>>> createRTree(const Polygon2d<T>&);  \
  template ORMIX_GEOMETRY_API RTree<Segment2d<IndexCoordinate<T>>> createRTree(const PolygonWithHoles2d<T>&);
ORMIX_GEOMETRY_INSTANTIATE_CREATE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_CREATE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_CREATE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_CREATE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_CREATE

}  // namespace ormix::geom
