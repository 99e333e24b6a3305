#pragma once

#include "../Frame/Binding.h"

namespace ormix::python {

/// Each adds the Python classes of one family of planar entities; `bindEntities2d` calls them all.
/// @{
void bindCircle2d(py::module_& module);
void bindLine2d(py::module_& module);
void bindPolygon2d(py::module_& module);
void bindPolygonWithHoles2d(py::module_& module);
void bindRowIntersections(py::module_& module);
void bindShape2d(py::module_& module);
void bindEntities2d(py::module_& module);
/// @}

/// Each adds the Python classes of one family of spatial entities; `bindEntities3d` calls them all.
/// @{
void bindFaceVertexAdjTriMesh3d(py::module_& module);
void bindFaceVertexTriMesh3d(py::module_& module);
void bindMesh3d(py::module_& module);
void bindMeshWithHoles3d(py::module_& module);
void bindRowIntersections3d(py::module_& module);
void bindShape3d(py::module_& module);
void bindTriMesh3d(py::module_& module);
void bindEntities3d(py::module_& module);
/// @}

}  // namespace ormix::python
