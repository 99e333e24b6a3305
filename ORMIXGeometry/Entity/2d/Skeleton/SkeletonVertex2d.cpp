#include <ORMIXGeometry/Entity/2d/Skeleton/SkeletonVertex2d.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <ostream>

namespace ormix::geom {

std::ostream& operator<<(std::ostream& stream, const SkeletonVertex2d& vertex) {
  stream << "[point=" << vertex.getPoint() << ", radius=" << vertex.getRadius() << ", edges=[";
  const char* separator = "";
  for (const omUInt32 edgeIdx : vertex.getEdgeIndexColl()) {
    stream << separator << edgeIdx;
    separator = ", ";
  }
  return stream << "]]";
}

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_LEVELS(, SkeletonVertex2d, BaseGeometryEntity2d)
