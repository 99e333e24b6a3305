#include <ORMIXGeometry/Entity/3d/Shape/VoxelShells.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelSurfaces.h>

namespace ormix::geom {

template <class T>
std::vector<boost::shared_ptr<MeshWithHoles3d<T>>> voxelSurfaces(const RowIntersections3d& voxels,
                                                                 eVoxelConnectivity connectivity) {
  auto shells = detail::traceShells<T>(voxels, connectivity);
  return detail::makeMeshes(shells);
}

template ORMIX_GEOMETRY_API std::vector<boost::shared_ptr<MeshWithHoles3d<omReal32>>> voxelSurfaces<omReal32>(
    const RowIntersections3d&, eVoxelConnectivity);
template ORMIX_GEOMETRY_API std::vector<boost::shared_ptr<MeshWithHoles3d<omReal64>>> voxelSurfaces<omReal64>(
    const RowIntersections3d&, eVoxelConnectivity);

}  // namespace ormix::geom
