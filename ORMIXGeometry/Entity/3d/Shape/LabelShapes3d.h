#pragma once

#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/VolumeView.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelConnectivity.h>
#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <string_view>
#include <vector>

namespace ormix::geom {

using Shape3dPtr = boost::shared_ptr<Shape3d>;   ///< shared pointer to a shape
using Shape3dPtrColl = std::vector<Shape3dPtr>;  ///< shapes, none of them null

/// Which surfaces a shape gets with its voxels.
enum eShapeSurface {
  eSS_None,        ///< none: the voxels alone, in time and memory for their runs
  eSS_VoxelFaces,  ///< those of voxelSurfaces()
  eSS_SurfaceNets  ///< those of surfaceNets()
};

/// The shape of a set of voxels. Linear in the runs, and with surfaces in the faces.
/// \throw ORMIXGeometryException, logged, where voxelSurfaces<omReal32>() refuses the voxels and surfaces are wanted
ORMIX_GEOMETRY_API Shape3dPtr makeShape(RowIntersections3d voxels, eShapeSurface surface = eSS_None,
                                        eVoxelConnectivity connectivity = eVC_26);

/// The connected regions of a set of voxels or of a volume, in the order of their first voxels, slice by slice and row
/// by row. Linear in the runs, in the voxels of a volume, and with surfaces in the faces.
/// \throw ORMIXGeometryException, logged, as makeShape() and connectedComponents(), and where toRowIntersections3d()
/// refuses the volume
/// @{
ORMIX_GEOMETRY_API Shape3dPtrColl labelShapes3d(const RowIntersections3d& voxels,
                                                eVoxelConnectivity connectivity = eVC_26,
                                                eShapeSurface surface = eSS_None);
template <class T>
Shape3dPtrColl labelShapes3d(const VolumeView<T>& volume, eVoxelConnectivity connectivity = eVC_26,
                             eShapeSurface surface = eSS_None) {
  return labelShapes3d(toRowIntersections3d(volume), connectivity, surface);
}
/// @}

}  // namespace ormix::geom

namespace ormix {

/// Texts of eShapeSurface.
template <>
struct EnumerationNames<geom::eShapeSurface> {
  static constexpr std::string_view typeName = "eShapeSurface";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 3> names{"eSS_None", "eSS_VoxelFaces", "eSS_SurfaceNets"};
};

}  // namespace ormix
