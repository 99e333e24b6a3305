#include <ORMIXGeometry/Entity/3d/Shape/ConnectedVoxels.h>
#include <ORMIXGeometry/Entity/3d/Shape/LabelShapes3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/SurfaceNets.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelSurfaces.h>

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
  std::vector<RowIntersections3d> regions = connectedComponents(voxels, connectivity);
  Shape3dPtrColl shapes;
  shapes.reserve(regions.size());
  for (RowIntersections3d& region : regions) shapes.push_back(makeShape(std::move(region), surface, connectivity));
  return shapes;
}

}  // namespace ormix::geom
