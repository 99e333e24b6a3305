#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>

/// \file
/// Meshes of cylinders, cones and tori, to be drawn, or measured with other meshes.

namespace ormix::geom {

/// The closed exterior mesh of a round solid, oriented outwards. Its vertices are on the surface, so that the mesh is
/// inside of what is convex: of a cylinder the volume is (n / 2π) sin(2π / n) times the real one. A torus has half as
/// many sides around its tube. O(sides), of a torus O(sides²).
/// \param nbSides sides around the axis
/// \throw ORMIXGeometryException, logged first, for fewer than 3 sides or more than 4096, for a value that is not
/// finite, and for a solid without a volume
/// @{
template <class T>
ORMIX_GEOMETRY_API Mesh3d<omReal64> toMesh3d(const Cylinder3d<T>& cylinder, omUInt32 nbSides);
template <class T>
ORMIX_GEOMETRY_API Mesh3d<omReal64> toMesh3d(const Cone3d<T>& cone, omUInt32 nbSides);
template <class T>
ORMIX_GEOMETRY_API Mesh3d<omReal64> toMesh3d(const Torus3d<T>& torus, omUInt32 nbSides);
/// @}

}  // namespace ormix::geom
