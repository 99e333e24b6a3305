#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <ORMIXGeometry/Entity/PointCollection.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

namespace ormix::geom {

template <class T>
std::ostream& operator<<(std::ostream& stream, const PointCloud3d<T>& cloud) {
  return detail::printPoints(stream, cloud.getCollection());
}

template <class TOut, class TIn>
PointCloud3d<TOut> cast(const PointCloud3d<TIn>& cloud) {
  PointCloud3d<TOut> result;
  cast(cloud, result);
  return result;
}

template <class TOut, class TIn>
void cast(const PointCloud3d<TIn>& cloud, PointCloud3d<TOut>& result) {
  detail::castPoints(cloud.getCollection(), result.getCollection());
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(PointCloud3d)
ORMIX_GEOMETRY_INSTANTIATE_CASTS(PointCloud3d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, PointCloud3d)
