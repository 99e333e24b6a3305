#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Tools/Svg/SvgWriter.h>

namespace ormix::geom {

/// The viewing direction of a picture of a mesh, and the colour of a triangle at the brightest shade.
struct MeshViewOptions {
  /// The direction from the mesh to the viewer; any length but zero. Up in the picture is +z, or +y for a direction
  /// along the z axis.
  Point3dData<omReal64> towardsViewer{1, -2, 1};
  omUInt8 red = 130;    ///< of sRGB, 0 to 255
  omUInt8 green = 170;  ///< of sRGB, 0 to 255
  omUInt8 blue = 210;   ///< of sRGB, 0 to 255
};

/// Draws a mesh in orthographic projection. Triangles are drawn from the farthest to the nearest barycentre, so that
/// near ones cover far ones (painter's algorithm). Each has one shade by the angle between its normal and the direction
/// of the light, which comes from the upper left of the viewer. Triangles seen from their inside are omitted in a
/// closed mesh, where others cover them, and darker in an open one. Triangles that intersect, or long ones beside small
/// ones, may be drawn in the wrong order.
///
/// Fails, and adds nothing, when a vertex of a triangle or the direction is not finite, or the direction is zero.
/// O(triangles · log triangles).
template <class T>
ORMIX_GEOMETRY_API BoolResult drawMesh(SvgWriter& writer, const Mesh3d<T>& mesh, const MeshViewOptions& options = {});

}  // namespace ormix::geom
