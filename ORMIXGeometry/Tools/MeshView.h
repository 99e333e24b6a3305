#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Tools/SvgWriter.h>

namespace ormix::geom {

/// From where a mesh is looked at, and its colour in full light.
struct MeshViewOptions {
  /// From the mesh to the viewer, at any length but zero. Up in the picture is +z, or +y when looked at along z.
  Point3dData<omReal64> towardsViewer{1, -2, 1};
  omUInt8 red = 130;
  omUInt8 green = 170;
  omUInt8 blue = 210;
};

/// Draws a mesh as seen from far away (an orthographic projection): triangles from the farthest to the nearest by their
/// barycentres, so that near ones hide far ones, each in one shade by the angle between its normal and a light over the
/// viewer's left shoulder. Triangles seen from their inside are left out of a closed mesh, which hides them, and are
/// darker in an open one. Triangles that pass through each other, or long ones beside small ones, may be drawn in the
/// wrong order.
///
/// Fails, and adds nothing, when a vertex that is used or the direction is not finite, or the direction is zero.
/// O(triangles · log triangles).
template <class T>
ORMIX_GEOMETRY_API BoolResult drawMesh(SvgWriter& writer, const Mesh3d<T>& mesh, const MeshViewOptions& options = {});

}  // namespace ormix::geom
