#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/2d/Segment/Segment2d.h>

#include <vector>

namespace ormix::geom {

/// A run of segments, each of which begins where the one before ends; they can be drawn and archived one by one. They
/// run along the boundary that they are a part of, with its region to the left where x points to the right and y up.
using ContactPiece2d = std::vector<Segment2d<omReal64>>;

/// The parts of the boundary of one region that are in contact with another one.
struct ContactSide2d {
  omReal64 length = 0;                 ///< of all pieces
  std::vector<ContactPiece2d> pieces;  ///< apart from each other, in order of the rings and along them
};

/// What two regions have in contact.
struct Contact2d {
  ContactSide2d onA;    ///< the parts of the boundary of the first region
  ContactSide2d onB;    ///< of the second region
  omReal64 length = 0;  ///< the mean of both lengths
};

/// The length along which two regions are in contact: the mean of the lengths of those parts of the boundary of a that
/// lie within the gap of a part of the boundary of b that faces them, and the reverse. Parts face each other where
/// their directions oppose: the tangents of both boundaries, each with its region on the same side, are at more than a
/// right angle, as along the border of neighbours. So the back of a sheet beside a thick region is not in contact with
/// it.
///
/// Regions are polygons, polygons with holes, or shapes, of any type of coordinate, and may be of different classes.
/// Rings count as closed and must not cross themselves; orientations and roles do not matter. A shape without
/// boundaries has those of its pixels. What has no vertices has no contact.
///
/// With gap 0 the length is that of the border which both have in common, decided exactly: where edges of both lie on
/// one line, run in opposite directions and overlap. For regions of an image of labels it is the number of edges
/// between a pixel of the one and a pixel of the other. A gap above 0 counts as wider by the rounding of coordinates
/// (9e-16 of the largest), so that regions which are exactly the gap apart are in contact.
///
/// The same bits both ways; never more than a perimeter, up to rounding. Each end of a part is right to about 1e-15 of
/// the largest coordinate, and where boundaries graze the gap to the root of the gap times that.
///
/// About O(n log n) for n edges, where each is covered by few edges of the other region. An edge that is not covered
/// takes time for all that face it within the gap: at worst O(n^2). Memory is linear in n.
/// \throw ORMIXGeometryException, logged first, when the gap is negative or not finite, when a coordinate is not
/// finite, and for entities of other classes
ORMIX_GEOMETRY_API omReal64 contactLength(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b, omReal64 gap);

/// The same with the parts themselves.
/// \throw ORMIXGeometryException as contactLength()
ORMIX_GEOMETRY_API Contact2d contact(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b, omReal64 gap);

}  // namespace ormix::geom
