#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Entity/3d/Mesh/RevolvedSurface.h>
#include <ORMIXGeometry/Entity/3d/Mesh/RoundMeshes.h>
#include <ORMIXGeometry/Entity/3d/RoundSolidOf.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <cmath>

namespace ormix::geom {

namespace {

Mesh3d<omReal64> meshOf(const RoundSolid& solid, omUInt32 nbSides) {
  constexpr omUInt32 least = 3, most = 4096;
  if (nbSides < least || nbSides > most)
    logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_WrongNbSides, nbSides), __PRETTY_FUNCTION__, __FILE__,
                __LINE__);
  const omReal64 size = volume(solid);
  const SpatialPoint center = centroid(solid);
  if (!(size > 0) || !std::isfinite(size) || !std::isfinite(center.x + center.y + center.z))
    logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_NoVolume), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  const detail::RevolvedSurface surface = detail::revolvedSurface(solid, nbSides);
  return toMesh3d(TriMesh3d<omReal64>(surface.vertices.data(), surface.vertices.size(), surface.indices.data(),
                                      surface.indices.size() / 3));
}

}  // namespace

template <class T>
Mesh3d<omReal64> toMesh3d(const Cylinder3d<T>& cylinder, omUInt32 nbSides) {
  return meshOf(detail::roundSolidOf(cylinder), nbSides);
}
template <class T>
Mesh3d<omReal64> toMesh3d(const Cone3d<T>& cone, omUInt32 nbSides) {
  return meshOf(detail::roundSolidOf(cone), nbSides);
}
template <class T>
Mesh3d<omReal64> toMesh3d(const Torus3d<T>& torus, omUInt32 nbSides) {
  return meshOf(detail::roundSolidOf(torus), nbSides);
}

#define ORMIX_GEOMETRY_INSTANTIATE_MESHES(T)                                             \
  template ORMIX_GEOMETRY_API Mesh3d<omReal64> toMesh3d(const Cylinder3d<T>&, omUInt32); \
  template ORMIX_GEOMETRY_API Mesh3d<omReal64> toMesh3d(const Cone3d<T>&, omUInt32);     \
  template ORMIX_GEOMETRY_API Mesh3d<omReal64> toMesh3d(const Torus3d<T>&, omUInt32);
ORMIX_GEOMETRY_INSTANTIATE_MESHES(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_MESHES(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_MESHES(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_MESHES(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_MESHES

}  // namespace ormix::geom
