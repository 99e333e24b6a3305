#include "Entities.h"

namespace ormix::python {

// Classes come before those whose signatures name them.

void bindEntities2d(py::module_& module) {
  bindVector2d(module);
  bindPoint2d(module);
  bindPointCloud2d(module);
  bindSegment2d(module);
  bindLine2d(module);
  bindBoundingBox2d(module);
  bindCircle2d(module);
  bindArc2d(module);
  bindEllipse2d(module);
  bindRectangle2d(module);
  bindSquare2d(module);
  bindParabola2d(module);
  bindPolygon2d(module);
  bindPolygonWithHoles2d(module);
  bindRowIntersections(module);
  bindShape2d(module);
  bindSkeletonVertex2d(module);
  bindSkeleton2d(module);
}

void bindEntities3d(py::module_& module) {
  bindVector3d(module);
  bindPoint3d(module);
  bindPointCloud3d(module);
  bindSegment3d(module);
  bindPlan3d(module);
  bindBoundingBox3d(module);
  bindCube3d(module);
  bindCuboid3d(module);
  bindEllipsoid3d(module);
  bindSphere3d(module);
  bindCylinder3d(module);
  bindCone3d(module);
  bindTorus3d(module);
  bindCircle3d(module);
  bindLine3d(module);
  bindTriangle3d(module);
  bindTriMesh3d(module);
  bindFaceVertexTriMesh3d(module);
  bindFaceVertexAdjTriMesh3d(module);
  bindMesh3d(module);
  bindMeshWithHoles3d(module);
  bindRowIntersections3d(module);
  bindShape3d(module);
}

}  // namespace ormix::python
