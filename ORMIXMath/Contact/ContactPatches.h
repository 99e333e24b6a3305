#pragma once

#include <ORMIXMath/Contact/FacingTriangles.h>

#include <vector>

/// \file
/// Which parts of a surface lie near another surface that faces them; not installed.

namespace ormix::detail {

/// How far a surface is subdivided.
struct PatchLimits {
  omReal64 tolerance;      ///< half of what need not be decided, as a share of the area
  std::size_t maxNbTests;  ///< about the largest number of distances between a piece and a triangle
};

/// A part of a surface, known up to some of it.
struct ContactPatches {
  omReal64 inside = 0;     ///< area that surely belongs to it
  omReal64 undecided = 0;  ///< area of which that is not known
  std::vector<Corners>
      pieces;  ///< triangles: all of what belongs to it, and of the undecided ones those with their centre
};

/// The part of triangles within the gap of other ones that face them. A triangle all of which is within the gap of one
/// other triangle belongs to it: the points within the gap of a triangle are convex, so that the corners tell. One that
/// is farther than the gap from all of them does not. Else it is cut into four, level by level for all triangles alike,
/// until what is undecided is little or there have been too many tests.
ORMIX_MATH_API ContactPatches contactPatches(const std::vector<SurfaceTriangle>& triangles,
                                             const FacingTriangles& others, omReal64 gap, const PatchLimits& limits);

}  // namespace ormix::detail
