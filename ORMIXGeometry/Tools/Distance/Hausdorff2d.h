#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Tools/Distance/HausdorffPoints.h>
#include <ORMIXGeometry/Tools/Distance/InteriorPolicy.h>
#include <ORMIXGeometry/Tools/Distance/ParabolaArc2d.h>

/// \file
/// How far planar entities are from being the same.

namespace ormix::geom {

/// A Hausdorff distance of planar entities.
using PlanarHausdorff = HausdorffPoints<Point2dData<omReal64>>;

/// The directed Hausdorff distance, the largest distance of a point of a from b, and both points. It is taken at any
/// point of an edge, not only at vertices. What entities are, and what is refused, is as for nearestPoints(); whole
/// parabolas are refused, too.
///
/// With eIP_Boundary, unlike for other distances the one to expect, boundaries are compared, as wanted for outlines and
/// paths. With eIP_Filled regions are: points of a inside b have the distance 0, and the distance may be taken inside
/// a, where b has a hole or a gap. Both are metrics of closed sets, and neither bounds the other: the boundaries of a
/// disc and of one with a small hole are far apart, the regions are not; of a disc and a thin ring it is the other way
/// round.
///
/// For straight edges and points right to 1e-14 of the answer on boundaries, to 1e-12 in regions, and to the rounding
/// errors of the coordinates. Where very many places inside a region have to be looked at, as where b has nearly the
/// boundary of a, `excess` says how much larger the answer may be; it is 0 otherwise, and on boundaries. Curves are
/// taken as polylines that are off by at most 1e-8 of the larger radius, or extent of a parabola; so far may the answer
/// be off for each.
///
/// Branch and bound over trees, which DirectedHausdorff describes: mostly O(n log n), and much less where one place is
/// far. At worst quadratic, as where all of b is equally far from all of a.
/// \throw ORMIXGeometryException as nearestPoints(), logged first
ORMIX_GEOMETRY_API PlanarHausdorff directedHausdorff(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b,
                                                     eInteriorPolicy policy = eIP_Boundary);

/// The Hausdorff distance: the larger one of both directions. Exchanging the entities exchanges the points and changes
/// no bit of the answer.
/// \throw ORMIXGeometryException as nearestPoints(), logged first
ORMIX_GEOMETRY_API PlanarHausdorff hausdorff(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b,
                                             eInteriorPolicy policy = eIP_Boundary);

}  // namespace ormix::geom
