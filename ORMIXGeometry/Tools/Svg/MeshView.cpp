#include <ORMIXGeometry/Tools/Svg/SpatialPicture.h>

#include <cmath>

namespace ormix::geom {

template <class T>
BoolResult drawMesh(SvgWriter& writer, const TriMesh3d<T>& mesh, const MeshViewOptions& options) {
  const omReal64 distance = options.towardsViewer.normL2();
  if (!std::isfinite(distance) || distance == 0) return failure("The direction towards the viewer is no direction");
  if (const BoolResult valid = checkIndices(mesh); !valid) return valid;
  detail::SpatialPicture picture(options.towardsViewer);
  const BoolResult added = picture.addMesh(mesh, options);
  return added ? picture.drawInto(writer) : added;
}

template <class T>
BoolResult drawMesh(SvgWriter& writer, const Mesh3d<T>& mesh, const MeshViewOptions& options) {
  return drawMesh(writer, TriMesh3d<T>(mesh), options);
}

#define ORMIX_GEOMETRY_DRAW_MESH(T)                                                                         \
  template ORMIX_GEOMETRY_API BoolResult drawMesh(SvgWriter&, const TriMesh3d<T>&, const MeshViewOptions&); \
  template ORMIX_GEOMETRY_API BoolResult drawMesh(SvgWriter&, const Mesh3d<T>&, const MeshViewOptions&);
ORMIX_GEOMETRY_DRAW_MESH(omInt32)
ORMIX_GEOMETRY_DRAW_MESH(omUInt32)
ORMIX_GEOMETRY_DRAW_MESH(omReal32)
ORMIX_GEOMETRY_DRAW_MESH(omReal64)
#undef ORMIX_GEOMETRY_DRAW_MESH

}  // namespace ormix::geom
