#include <ORMIXGeometry/Entity/3d/Shape/ConnectedVoxels.h>
#include <ORMIXGeometry/Entity/3d/Shape/LabelShapes3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/SurfaceNets.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelSurfaces.h>
#include <ORMIXGeometry/Entity/MakeShapes.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <utility>

namespace ormix::geom {

Shape3dPtr makeShape(RowIntersections3d voxels, eShapeSurface surface, eVoxelConnectivity connectivity) {
  auto shape = boost::make_shared<Shape3d>();
  if (surface == eSS_VoxelFaces) shape->getMeshWithHolesColl() = voxelSurfaces<omReal32>(voxels, connectivity);
  if (surface == eSS_SurfaceNets) shape->getMeshWithHolesColl() = surfaceNets<omReal32>(voxels, connectivity);
  shape->getRowIntersections() = std::move(voxels);
  return shape;
}

Shape3dPtrColl labelShapes3d(const RowIntersections3d& voxels, eVoxelConnectivity connectivity, eShapeSurface surface) {
  return detail::makeShapes(connectedComponents(voxels, connectivity), [&](RowIntersections3d&& region) {
    return makeShape(std::move(region), surface, connectivity);
  });
}

}  // namespace ormix::geom
