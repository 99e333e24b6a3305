#pragma once

#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>

namespace ormix::geom {

/// How exact areas of contact are to be.
struct ContactSurfaceOptions {
  omReal64 tolerance = 0.01;  ///< the bound of the error that is wanted, as a share of the area; at least 0
  omReal64 effort = 200;      ///< the most distances computed, per triangle on average, but 1e6 in any case; at least 0
};

/// An area that is right to a bound.
struct ContactArea {
  omReal64 area = 0;
  omReal64 bound = 0;  ///< the true area is in [area - bound, area + bound], but for rounding
};

/// The areas along which two bodies are in contact.
struct ContactSurface {
  ContactArea onA;     ///< on the first body
  ContactArea onB;     ///< on the second body
  omReal64 area = 0;   ///< the mean of both
  omReal64 bound = 0;  ///< of the mean
};

/// The same with the parts of both surfaces as triangles with the outside of their body. Parts of neighbouring
/// triangles share vertices; where one has been cut and the other has not, there is a vertex on an edge. Of what is not
/// decided the mesh has those pieces whose centre is in contact, so that its area is right to the bound, too.
struct Contact3d {
  ContactSurface surface;
  Mesh3d<omReal64> onA;  ///< on the first body
  Mesh3d<omReal64> onB;  ///< on the second body
};

/// The area along which two bodies are in contact: the mean of the area of that part of the surface of a that lies
/// within the gap of parts of the surface of b which face it, and the reverse. Triangles face each other where their
/// normals are at more than a right angle: so the back of a plate beside a thick body is not in contact with it.
///
/// Bodies are meshes, meshes with holes, or spatial shapes with surfaces, and may be of different classes. A closed
/// mesh is turned, where it has to be, so that its normals point out of the body; what is not closed counts as it is
/// oriented.
///
/// Surfaces are cut into smaller and smaller triangles, until the area that is not decided is within the tolerance or
/// the effort is spent; the bound says what is known then, and is 0 for parts that are all decided. A gap counts as
/// wider by the rounding of coordinates (9e-16 of the largest), so that bodies which touch, or are exactly the gap
/// apart, are in contact.
///
/// The same bits both ways. About O(n log n) for n triangles and the effort; at worst the effort times n. Memory
/// likewise.
/// \throw ORMIXGeometryException, logged first, when the gap or an option is negative or not finite, when a coordinate
/// is not finite, for a shape that has voxels and no surfaces, and for entities of other classes
ORMIX_GEOMETRY_API ContactSurface contactSurface(const BaseGeometryEntity3d& a, const BaseGeometryEntity3d& b,
                                                 omReal64 gap, const ContactSurfaceOptions& options = {});

/// The same with the parts themselves.
/// \throw ORMIXGeometryException as contactSurface()
ORMIX_GEOMETRY_API Contact3d contact(const BaseGeometryEntity3d& a, const BaseGeometryEntity3d& b, omReal64 gap,
                                     const ContactSurfaceOptions& options = {});

}  // namespace ormix::geom
