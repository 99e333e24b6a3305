#pragma once

#include <ORMIXGeometry/Tools/Distance/SpatialDistance.h>
#include <ORMIXMath/Estimation/ProgressCallback.h>

#include <cstddef>
#include <limits>

/// \file
/// How far two surfaces or point clouds are from each other at most: the Hausdorff distance.
///
/// Entities are their surfaces, as with `eIP_Boundary`; meshes, shapes, boxes, triangles, segments, points and point
/// clouds have one that is made of triangles, edges or points, and are taken.
///
/// The answer is an interval that contains the distance for certain, up to 1e-12 of the largest coordinate. The lower
/// bound is the distance of a point that is answered. For the upper one each triangle of a is compared with single
/// triangles of b: the distance from one is convex, so that its value at the corners bounds it in between. Where no
/// triangle of b is near enough to all three corners, the triangle of a is cut in two where the nearest triangle
/// changes, until all parts are bounded. Most triangles need no search in the tree of b, as the nearest triangle of a
/// neighbour is mostly near enough.

namespace ormix::geom {

/// How exactly a Hausdorff distance is asked for, and what it may cost.
struct HausdorffOptions {
  /// Upper and lower bound shall differ by at most the largest of these: a length, a part of the lower bound, and
  /// 1e-9 of the largest size. Negative or NaN counts as 0.
  /// @{
  omReal64 tolerance = 0;
  omReal64 relativeTolerance = 0.01;
  /// @}
  /// The most searches for a nearest triangle in one direction; what is left then is bounded as it stands.
  std::size_t maxNbSearches = std::numeric_limits<std::size_t>::max();
  /// Told the share of triangles that are done; false stops as reaching the most searches does.
  ProgressCallback progress;
};

/// Bounds of a Hausdorff distance.
struct HausdorffBounds {
  omReal64 lower = 0;          ///< distance of `from` and `to`
  omReal64 upper = 0;          ///< at least the distance
  Point3dData<omReal64> from;  ///< a point of one entity as far from the other as `lower`
  Point3dData<omReal64> to;    ///< the nearest to it of the other
  bool isFromA = true;         ///< whether `from` is of a
  bool isComplete = true;      ///< whether the bounds are as near as was asked for
  std::size_t nbSearches = 0;  ///< searches for a nearest triangle that were made
};

/// The largest distance of a point of a from b.
/// \throw ORMIXGeometryException, logged first, for what has no surface of triangles, edges or points
ORMIX_GEOMETRY_API HausdorffBounds directedHausdorff(const PreparedEntity3d& a, const PreparedEntity3d& b,
                                                     const HausdorffOptions& options = {});

/// The larger one of both directions.
/// \throw ORMIXGeometryException, logged first, as directedHausdorff()
ORMIX_GEOMETRY_API HausdorffBounds hausdorff(const PreparedEntity3d& a, const PreparedEntity3d& b,
                                             const HausdorffOptions& options = {});

/// Whether no point of a is farther from b than a distance: false, with the bounds and the point, as soon as one is
/// found. Where the bounds do not tell, as the distance is within the tolerance of the limit or the effort ran out, the
/// answer is false and `upper` exceeds the limit.
/// \throw ORMIXGeometryException, logged first, as directedHausdorff()
ORMIX_GEOMETRY_API bool isWithinDirectedHausdorff(const PreparedEntity3d& a, const PreparedEntity3d& b, omReal64 limit,
                                                  const HausdorffOptions& options = {},
                                                  HausdorffBounds* bounds = nullptr);

/// \name Of entities that are not prepared
/// @{
ORMIX_GEOMETRY_API HausdorffBounds directedHausdorff(const BaseGeometryEntity3d& a, const BaseGeometryEntity3d& b,
                                                     const HausdorffOptions& options = {});
ORMIX_GEOMETRY_API HausdorffBounds hausdorff(const BaseGeometryEntity3d& a, const BaseGeometryEntity3d& b,
                                             const HausdorffOptions& options = {});
/// @}

}  // namespace ormix::geom
