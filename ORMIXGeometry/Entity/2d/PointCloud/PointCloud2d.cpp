#include <ORMIXGeometry/Entity/2d/PointCloud/PointCloud2d.h>
#include <ORMIXGeometry/Entity/PointRun.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

namespace ormix::geom {

namespace {
const ScalarRegistrators<PointCloud2d> g_classRegistrator;
}  // namespace

template <class T>
std::ostream& operator<<(std::ostream& stream, const PointCloud2d<T>& cloud) {
  return printPoints(stream, cloud.getCollection());
}

template <class TOut, class TIn>
PointCloud2d<TOut> cast(const PointCloud2d<TIn>& cloud) {
  PointCloud2d<TOut> result;
  cast(cloud, result);
  return result;
}

template <class TOut, class TIn>
void cast(const PointCloud2d<TIn>& cloud, PointCloud2d<TOut>& result) {
  castPoints(cloud.getCollection(), result.getCollection());
}

#define ORMIX_GEOMETRY_INSTANTIATE_CLOUD_CAST(TOut, TIn)                               \
  template ORMIX_GEOMETRY_API PointCloud2d<TOut> cast<TOut>(const PointCloud2d<TIn>&); \
  template ORMIX_GEOMETRY_API void cast(const PointCloud2d<TIn>&, PointCloud2d<TOut>&);
#define ORMIX_GEOMETRY_INSTANTIATE_CLOUD(T)                                                    \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const PointCloud2d<T>&); \
  ORMIX_GEOMETRY_INSTANTIATE_CLOUD_CAST(omInt32, T)                                            \
  ORMIX_GEOMETRY_INSTANTIATE_CLOUD_CAST(omUInt32, T)                                           \
  ORMIX_GEOMETRY_INSTANTIATE_CLOUD_CAST(omReal32, T)                                           \
  ORMIX_GEOMETRY_INSTANTIATE_CLOUD_CAST(omReal64, T)
ORMIX_GEOMETRY_INSTANTIATE_CLOUD(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_CLOUD(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_CLOUD(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_CLOUD(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_CLOUD
#undef ORMIX_GEOMETRY_INSTANTIATE_CLOUD_CAST

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(, PointCloud2d)
