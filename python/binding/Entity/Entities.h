#pragma once

#include "../Frame/Binding.h"

namespace ormix::python {

/// Each adds the Python classes of one family of planar entities; `bindEntities2d` calls them all.
/// @{
void bindArc2d(py::module_& module);
void bindBoundingBox2d(py::module_& module);
void bindCircle2d(py::module_& module);
void bindEllipse2d(py::module_& module);
void bindLine2d(py::module_& module);
void bindParabola2d(py::module_& module);
void bindPoint2d(py::module_& module);
void bindPointCloud2d(py::module_& module);
void bindPolygon2d(py::module_& module);
void bindPolygonWithHoles2d(py::module_& module);
void bindRectangle2d(py::module_& module);
void bindRowIntersections(py::module_& module);
void bindSegment2d(py::module_& module);
void bindShape2d(py::module_& module);
void bindSkeleton2d(py::module_& module);
void bindSkeletonVertex2d(py::module_& module);
void bindSquare2d(py::module_& module);
void bindVector2d(py::module_& module);
void bindEntities2d(py::module_& module);
/// @}

/// Each adds the Python classes of one family of spatial entities; `bindEntities3d` calls them all.
/// @{
void bindBoundingBox3d(py::module_& module);
void bindCircle3d(py::module_& module);
void bindCone3d(py::module_& module);
void bindCube3d(py::module_& module);
void bindCuboid3d(py::module_& module);
void bindCylinder3d(py::module_& module);
void bindEllipsoid3d(py::module_& module);
void bindFaceVertexAdjTriMesh3d(py::module_& module);
void bindFaceVertexTriMesh3d(py::module_& module);
void bindLine3d(py::module_& module);
void bindMesh3d(py::module_& module);
void bindMeshWithHoles3d(py::module_& module);
void bindPlan3d(py::module_& module);
void bindPoint3d(py::module_& module);
void bindPointCloud3d(py::module_& module);
void bindRowIntersections3d(py::module_& module);
void bindSegment3d(py::module_& module);
void bindShape3d(py::module_& module);
void bindSphere3d(py::module_& module);
void bindTorus3d(py::module_& module);
void bindTriMesh3d(py::module_& module);
void bindTriangle3d(py::module_& module);
void bindVector3d(py::module_& module);
void bindEntities3d(py::module_& module);
/// @}

}  // namespace ormix::python
