#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <ORMIXGeometry/Entity/PointRun.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

namespace ormix::geom {

namespace {
const ScalarRegistrators<PointCloud3d> g_classRegistrator;
}  // namespace

template <class T>
std::ostream& operator<<(std::ostream& stream, const PointCloud3d<T>& cloud) {
  return printPoints(stream, cloud.getCollection());
}

template <class TOut, class TIn>
PointCloud3d<TOut> cast(const PointCloud3d<TIn>& cloud) {
  PointCloud3d<TOut> result;
  cast(cloud, result);
  return result;
}

template <class TOut, class TIn>
void cast(const PointCloud3d<TIn>& cloud, PointCloud3d<TOut>& result) {
  castPoints(cloud.getCollection(), result.getCollection());
}

#define ORMIX_GEOMETRY_INSTANTIATE_CLOUD_CAST(TOut, TIn)                               \
  template ORMIX_GEOMETRY_API PointCloud3d<TOut> cast<TOut>(const PointCloud3d<TIn>&); \
  template ORMIX_GEOMETRY_API void cast(const PointCloud3d<TIn>&, PointCloud3d<TOut>&);
#define ORMIX_GEOMETRY_INSTANTIATE_CLOUD(T)                                                    \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const PointCloud3d<T>&); \
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

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, PointCloud3d)
