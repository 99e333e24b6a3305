#pragma once

#include <ORMIXMath/Distance/SpatialSegment.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

/// \file
/// Sums over the triangles of a mesh: area, volume, centroid, inertia.
///
/// The functions exist for T in omInt32, omUInt32, omReal32, omReal64. Every coordinate is converted to omReal64 before
/// any arithmetic, so integers neither wrap nor overflow; infinite and NaN coordinates give what the arithmetic gives.
/// Nothing is allocated. O(nbTriangles). The same bits on every processor.

namespace ormix {

/// Triangles given by indices of vertices, neither of them owned. Corner k of triangle t is the vertex i = indices[3 t
/// + k] with the coordinates xyz[3 i], xyz[3 i + 1], xyz[3 i + 2]. Indices are not checked. The pointers may be null
/// where there are no triangles. Corners are in counter-clockwise order as seen from outside.
template <class T>
struct TriangleMeshView {
  const T* xyz;             ///< three coordinates a vertex
  const omUInt32* indices;  ///< three vertices a triangle
  std::size_t nbTriangles;  ///< number of triangles
};

/// Signed volume of the tetrahedron over the triangle (p0, p1, p2) with its apex at the origin, as
/// p0 · ((p1 - p0) × (p2 - p0)) / 6: positive where the triangle is counter-clockwise as seen from the side away from
/// the origin. Right to about epsilon · area · distance from the origin, where p0 · (p1 × p2) / 6, the same number, is
/// off by epsilon times the cube of that distance.
ORMIX_MATH_API omReal64 tetrahedronSignedVolume(omReal64 x0, omReal64 y0, omReal64 z0, omReal64 x1, omReal64 y1,
                                                omReal64 z1, omReal64 x2, omReal64 y2, omReal64 z2);

/// Sum of the triangles' areas, half the lengths of the cross products of their edges. Summed with compensation (about
/// 106 bits) in four lanes, triangle t in lane t % 4, and rounded once: the exact sum of the rounded areas to within
/// one unit in the last place. Edges beyond about 1e77 overflow to infinity, areas below 1e-154 underflow to 0.
template <class T>
ORMIX_MATH_API omReal64 meshArea(const TriangleMeshView<T>& mesh);

/// Sum of tetrahedronSignedVolume() over the triangles in their order, each added to the sum before: the volume within
/// a closed mesh, positive when its triangles are counter-clockwise from outside. Right to about epsilon · area ·
/// distance from the origin.
template <class T>
ORMIX_MATH_API omReal64 meshSignedVolume(const TriangleMeshView<T>& mesh);

/// The same volume about the first corner instead of the origin; of a closed mesh the two differ by rounding only. This
/// one is right to about epsilon · area · (extent of the mesh + epsilon · distance from the origin · number of
/// triangles).
template <class T>
ORMIX_MATH_API omReal64 meshLocalVolume(const TriangleMeshView<T>& mesh);

/// Volume integrals of the body of density 1 within a closed mesh: its volume, positive; its centroid; the entries of
/// its symmetric inertia tensor about the centroid, so xx is the integral of y² + z² and xy that of −x·y, and so on.
struct MeshMoments {
  omReal64 volume = 0;
  SpatialPoint centroid{0, 0, 0};
  omReal64 inertiaXX = 0;
  omReal64 inertiaYY = 0;
  omReal64 inertiaZZ = 0;
  omReal64 inertiaXY = 0;
  omReal64 inertiaXZ = 0;
  omReal64 inertiaYZ = 0;
};

/// The moments of the body within a closed mesh, oriented either way, from those of the tetrahedra over its triangles
/// (Tonon2005) with their apex at the first corner. False, the moments untouched, where the volume is zero or anything
/// is not finite.
template <class T>
ORMIX_MATH_API bool meshMoments(const TriangleMeshView<T>& mesh, MeshMoments& moments);

// clang-format off
extern template omReal64 meshArea(const TriangleMeshView<omInt32>&);
extern template omReal64 meshArea(const TriangleMeshView<omUInt32>&);
extern template omReal64 meshArea(const TriangleMeshView<omReal32>&);
extern template omReal64 meshArea(const TriangleMeshView<omReal64>&);
extern template omReal64 meshSignedVolume(const TriangleMeshView<omInt32>&);
extern template omReal64 meshSignedVolume(const TriangleMeshView<omUInt32>&);
extern template omReal64 meshSignedVolume(const TriangleMeshView<omReal32>&);
extern template omReal64 meshSignedVolume(const TriangleMeshView<omReal64>&);
extern template omReal64 meshLocalVolume(const TriangleMeshView<omInt32>&);
extern template omReal64 meshLocalVolume(const TriangleMeshView<omUInt32>&);
extern template omReal64 meshLocalVolume(const TriangleMeshView<omReal32>&);
extern template omReal64 meshLocalVolume(const TriangleMeshView<omReal64>&);
extern template bool meshMoments(const TriangleMeshView<omInt32>&, MeshMoments&);
extern template bool meshMoments(const TriangleMeshView<omUInt32>&, MeshMoments&);
extern template bool meshMoments(const TriangleMeshView<omReal32>&, MeshMoments&);
extern template bool meshMoments(const TriangleMeshView<omReal64>&, MeshMoments&);
// clang-format on

}  // namespace ormix
