#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXMath/Shape/RoundSolid.h>

/// \file
/// Directions of space as entities store them: unit vectors, by their components; not installed.

namespace ormix::geom::detail {

template <class T>
SpatialPoint toSpatial(const Point3dData<T>& p) {
  return toSpatialPoint(p.getX(), p.getY(), p.getZ());
}
inline Point3dData<omReal64> toData(const SpatialPoint& p) { return {p.x, p.y, p.z}; }

/// The unit vector of a direction, see unitVector().
/// \throw ORMIXGeometryException, logged first, for the zero vector and for what is not finite
Point3dData<omReal64> unitDirection(const Point3dData<omReal64>& direction);

/// Whether a direction from an archive is a unit vector, to 1e-9 of its length.
bool isUnitDirection(const Point3dData<omReal64>& direction);

/// Whether two unit vectors differ by at most an angle, in radians. Opposite ones are as far apart as can be.
bool areDirectionsNear(const Point3dData<omReal64>& a, const Point3dData<omReal64>& b, omReal64 angle);

}  // namespace ormix::geom::detail
