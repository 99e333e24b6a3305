#pragma once

#include "Binding.h"

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>

namespace ormix::python {

/// A picture for notebooks as the text of an SVG file; None of what cannot be drawn. In space meshes are drawn, those
/// with holes from outside; with more triangles than `s_mostTriangles` they are printed instead, as their picture would
/// be too large for a page.
/// @{
py::object picture(const geom::BaseGeometryEntity2d& entity);
py::object picture(const geom::BaseGeometryEntity3d& entity);
/// @}

constexpr std::size_t s_mostTriangles = 50000;

}  // namespace ormix::python
