#include <ORMIXGeometry/Measure/3d/MeshMeasure.h>
#include <ORMIXGeometry/Measure/3d/MeshMoments3d.h>

namespace ormix::geom {

template <class T>
omReal64 localVolume(const Mesh3d<T>& mesh) {
  return meshLocalVolume(detail::triangleView(mesh));
}

template <class T>
bool moments(const Mesh3d<T>& mesh, MeshMoments& result) {
  return meshMoments(detail::triangleView(mesh), result);
}

#define ORMIX_GEOMETRY_INSTANTIATE_MOMENTS(T)                         \
  template ORMIX_GEOMETRY_API omReal64 localVolume(const Mesh3d<T>&); \
  template ORMIX_GEOMETRY_API bool moments(const Mesh3d<T>&, MeshMoments&);
ORMIX_GEOMETRY_INSTANTIATE_MOMENTS(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_MOMENTS(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_MOMENTS(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_MOMENTS(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_MOMENTS

}  // namespace ormix::geom
