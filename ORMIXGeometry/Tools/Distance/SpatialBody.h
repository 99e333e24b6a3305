#pragma once

#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXMath/Distance/EllipsoidDistance.h>
#include <ORMIXMath/Distance/NearestPair.h>
#include <ORMIXMath/Index/BoxTree.h>
#include <ORMIXMath/Shape/RoundSolid.h>

#include <array>
#include <cstddef>
#include <vector>

/// \file
/// What all spatial entities are to distances; not installed.

namespace ormix::geom::detail {

/// The kinds of bodies. What is bounded by planes is its corners, edges or triangles; cylinders, cones, tori and
/// circles are round.
enum eBodyKind { eBK_Facets, eBK_Ellipsoid, eBK_Plane, eBK_Round, eBK_Line };

/// A body of facets, which are points, segments or triangles, all of one kind; an ellipsoid; a plane; a round solid; or
/// a line.
struct SpatialBody {
  using Facet = std::array<omUInt32, 3>;  ///< vertices; the last ones equal where there are less than three

  /// A run of facets that ends before `end`.
  struct Surface {
    std::size_t end;
    bool isClosed;  ///< bounds a solid
  };

  eBodyKind kind = eBK_Facets;
  std::size_t nbCorners = 3;           ///< of a facet: 1, 2 or 3
  std::vector<SpatialPoint> vertices;  ///< all of them in use
  std::vector<Facet> facets;
  std::vector<Surface> surfaces;
  ormix::detail::BoxTree<3> tree;  ///< of the facets
  SpatialEllipsoid ellipsoid{};
  SpatialPoint normal{};  ///< of the plane, of length 1
  omReal64 rho = 0;       ///< its distance from the origin along the normal
  RoundSolid round{};
  SpatialPoint linePoint{};      ///< of the line, the nearest to the origin
  SpatialPoint lineDirection{};  ///< of length 1

  std::array<SpatialPoint, 3> corners(std::size_t facet) const {
    const Facet& f = facets[facet];
    return {vertices[f[0]], vertices[f[1]], vertices[f[2]]};
  }
};

/// The body of an entity, with the tree of its facets. Linear in the vertices and triangles, but for the order of the
/// tree.
///
/// Boxes, cubes and cuboids are twelve triangles between their corners. Each mesh of a mesh with holes is a surface, at
/// any depth; null ones are ignored. A shape is its surfaces or, without any, the faces between its voxels and others.
/// \throw ORMIXGeometryException, logged first, for vectors, for what has no points, and where a value is not finite
SpatialBody toSpatialBody(const BaseGeometryEntity3d& entity);

/// The same without the tree, for callers that do not search: facets may be none, and numbers are not checked.
/// \throw ORMIXGeometryException, logged first, for vectors
SpatialBody toBodyWithoutTree(const BaseGeometryEntity3d& entity);

/// Whether a body of facets contains a point that is not on them: an odd number of its closed surfaces have it inside,
/// which they do where they wind around it, whichever way their triangles are oriented. Decided without rounding along
/// a segment out of the body that meets no edge.
bool contains(const SpatialBody& body, const SpatialPoint& point);

/// The same body with all coordinates times 2^exponent.
SpatialBody scaled(const SpatialBody& body, int exponent);

/// The largest magnitude of its coordinates and sizes.
omReal64 magnitude(const SpatialBody& body);

/// An order of bodies in which only equal ones are equal, so that a pair can be computed in one order.
bool isBefore(const SpatialBody& a, const SpatialBody& b);

/// The nearest pair of points of two bodies, with what closed surfaces contain and the insides of ellipsoids or to
/// boundaries only. Bounds as nearestPoints() of entities has them.
/// @{
SpatialNearestPair nearestPair(const SpatialBody& a, const SpatialBody& b, bool isFilled);
/// Where b is round or a line, and a of the same kind or of one before.
SpatialNearestPair nearestPairToRound(const SpatialBody& a, const SpatialBody& b, bool isFilled);
SpatialNearestPair nearestPairToLine(const SpatialBody& a, const SpatialBody& b, bool isFilled);
/// @}

}  // namespace ormix::geom::detail
