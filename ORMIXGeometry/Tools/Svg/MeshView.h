#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>
#include <ORMIXGeometry/Tools/Svg/ColourScale.h>
#include <ORMIXGeometry/Tools/Svg/SvgWriter.h>

#include <optional>
#include <vector>

namespace ormix::geom {

/// The viewing direction of a picture of a mesh, its colours and its edges.
struct MeshViewOptions {
  /// The direction from the mesh to the viewer; any length but zero. Up in the picture is +z, or +y for a direction
  /// along the z axis.
  Point3dData<omReal64> towardsViewer{1, -2, 1};
  omUInt8 red = 130;    ///< of sRGB, 0 to 255, at the brightest shade
  omUInt8 green = 170;  ///< of sRGB, 0 to 255
  omUInt8 blue = 210;   ///< of sRGB, 0 to 255
  /// Edges at which normals differ by more than this angle, in radians, are drawn, the darker the sharper they are; so
  /// are boundaries, whatever the angle. About 3 degrees.
  omReal64 edgeAngle = 0.05;
  std::vector<omReal64> values = {};      ///< one a vertex, or none; a triangle has the colour of their mean
  std::optional<ColourScale> scale = {};  ///< the colours of the values; without one they are not shown
};

/// Draws a mesh in orthographic projection. Triangles are drawn from the farthest to the nearest barycentre, so that
/// near ones cover far ones (painter's algorithm). Each has one shade by its normal: the light comes from the upper
/// left of the viewer, weaker light from the right. Triangles seen from their inside are omitted in a closed mesh,
/// where others cover them, and darker in an open one. Triangles that intersect, or long ones beside small ones, may be
/// drawn in the wrong order.
///
/// Fails, and adds nothing, when a vertex of a triangle or the direction is not finite, the direction is zero, or an
/// index or the number of values is wrong. O(triangles · log triangles).
/// @{
template <class T>
ORMIX_GEOMETRY_API BoolResult drawMesh(SvgWriter& writer, const Mesh3d<T>& mesh, const MeshViewOptions& options = {});
template <class T>
ORMIX_GEOMETRY_API BoolResult drawMesh(SvgWriter& writer, const TriMesh3d<T>& mesh,
                                       const MeshViewOptions& options = {});
/// @}

}  // namespace ormix::geom
