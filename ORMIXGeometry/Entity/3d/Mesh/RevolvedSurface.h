#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXMath/Shape/RoundSolid.h>

#include <vector>

/// \file
/// Triangles of round solids; not installed.

namespace ormix::geom::detail {

/// The triangles of a closed surface, as meshes have them.
struct RevolvedSurface {
  std::vector<Point3dData<omReal64>> vertices;  ///< on the surface of the solid
  std::vector<omUInt32> indices;                ///< triples, counter-clockwise from outside
};

/// The surface of a solid with this number of sides around the axis, and around the tube of a torus half as many. A
/// solid without a volume has triangles without an area.
RevolvedSurface revolvedSurface(const RoundSolid& solid, omUInt32 nbSides);

}  // namespace ormix::geom::detail
