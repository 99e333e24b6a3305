#include <ORMIXGeometry/Measure/3d/MeshMoments3d.h>

namespace ormix::geom {

template <class T>
omReal64 localVolume(const TriMesh3d<T>& mesh) {
  return meshLocalVolume<T>(mesh);
}

template <class T>
bool moments(const TriMesh3d<T>& mesh, MeshMoments& result) {
  return meshMoments<T>(mesh, result);
}

#define ORMIX_GEOMETRY_INSTANTIATE_MOMENTS(T)                            \
  template ORMIX_GEOMETRY_API omReal64 localVolume(const TriMesh3d<T>&); \
  template ORMIX_GEOMETRY_API bool moments(const TriMesh3d<T>&, MeshMoments&);
ORMIX_GEOMETRY_INSTANTIATE_MOMENTS(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_MOMENTS(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_MOMENTS(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_MOMENTS(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_MOMENTS

}  // namespace ormix::geom
