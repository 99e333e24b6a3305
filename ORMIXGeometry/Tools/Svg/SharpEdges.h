#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>

#include <array>
#include <cstddef>
#include <vector>

/// \file
/// The edges of a mesh that pictures show; not installed.

namespace ormix::geom::detail {

/// An edge between two faces that differ in direction, or one that has not just two faces.
struct SharpEdge {
  std::array<omUInt32, 2> vertices;
  std::array<std::size_t, 2> triangles;  ///< two of its triangles; the same where it has one only
  omReal64 angle;                        ///< between the normals, in radians; pi where it has not just two faces
};

/// The edges at which normals differ by more than an angle, boundaries and edges of more than two triangles. Of two
/// triangles that run in the same direction along their edge, one is taken the other way round. Triangles without an
/// area have no edges but boundaries.
struct SharpEdges {
  std::vector<SharpEdge> edges;
  bool isClosed;  ///< whether every edge has two triangles, one in each direction
};

/// Linear.
/// \param mesh with valid indices
/// \param angle in radians
template <class T>
SharpEdges findSharpEdges(const TriMesh3d<T>& mesh, omReal64 angle);

/// The unit normal of a triangle of any size; zero where it has none, as without an area or with a corner that is not
/// finite.
Point3dData<omReal64> unitNormal(const std::array<Point3dData<omReal64>, 3>& corners);

}  // namespace ormix::geom::detail
