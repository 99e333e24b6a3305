#include <ORMIXGeometry/Entity/2d/PointCloud/PointCloud2d.h>
#include <ORMIXGeometry/Entity/PointCollection.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

namespace ormix::geom {

template <class T>
std::ostream& operator<<(std::ostream& stream, const PointCloud2d<T>& cloud) {
  return detail::printPoints(stream, cloud.getCollection());
}

template <class TOut, class TIn>
PointCloud2d<TOut> cast(const PointCloud2d<TIn>& cloud) {
  PointCloud2d<TOut> result;
  cast(cloud, result);
  return result;
}

template <class TOut, class TIn>
void cast(const PointCloud2d<TIn>& cloud, PointCloud2d<TOut>& result) {
  detail::castPoints(cloud.getCollection(), result.getCollection());
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(PointCloud2d)
ORMIX_GEOMETRY_INSTANTIATE_CASTS(PointCloud2d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(, PointCloud2d)
