#pragma once

#include <ORMIXMath/Distance/ConvexArc.h>
#include <ORMIXMath/Distance/NearestPair.h>
#include <ORMIXMath/Distance/PlanarSegment.h>

/// \file
/// Distances to smooth convex curves, without the areas of ellipses; not installed. Coordinates and radii should be
/// within 2^-400 and 2^500 in size. Errors are some units in the last place of the largest coordinate and radius.

namespace ormix::detail {

/// \name Parts of a polyline
/// Replace `best`, whose first point is on the arc, where a part of the polyline is nearer. The nearest points of an
/// arc and a segment are a common point, or an end of one of them and its foot on the other, or that point of the arc
/// whose tangent is parallel to the segment, and its foot. A vertex is the end of two edges and looked at once.
/// @{
ORMIX_MATH_API void updateByVertex(const ConvexArc& arc, const PlanarPoint& vertex, PlanarNearestPair& best);
/// Without the ends of the edge. Where the edge crosses the arc, `best` becomes a common point.
ORMIX_MATH_API void updateByEdge(const ConvexArc& arc, const PlanarSegment& edge, PlanarNearestPair& best);
/// @}

/// The nearest points of two arcs; exactly 0 with a common point where they cross.
///
/// Crossings are the roots of the polynomial, of degree four, that the equation of one curve is along the other.
/// Without a crossing the distance is taken at an end of a parabola and its foot on the other arc, or at two points
/// that have a normal in common. Those are all found: with outward unit normals n and sn, s being 1 or -1, at points
/// p(n) and q(sn), the number D = n (p - q) is a function of the angle of n, whose derivative is the component of p - q
/// across n. So normals in common are the zeros of D', and |D| is the distance there. As D'' + D is the difference
/// (s = 1) or the sum (s = -1) of the two radii of curvature (Schneider2014), of which there are bounds R in an
/// interval of angles, D(m + e) and D'(m + e) lie between D(m) cos e + D'(m) sin e + R (1 - cos e) and -D(m) sin e +
/// D'(m) cos e + R sin e for the least and the greatest R (variation of constants). An interval is left where these
/// exclude a zero of D' or a |D| below the least distance known; where D'' has one sign in it, the zero of D' is found
/// by halving; else it is halved. Nothing depends on a start.
ORMIX_MATH_API PlanarNearestPair nearestOfArcs(const ConvexArc& a, const ConvexArc& b);

}  // namespace ormix::detail
