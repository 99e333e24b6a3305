#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXMath/Rotation/EulerAngles.h>

/// \file
/// The corners of cubes and cuboids; not installed.

namespace ormix::geom::detail {

/// The centre plus (localX, localY, localZ), rotated by Rz(chi)·Ry(beta)·Rx(alpha) about the origin of coordinates. The
/// parameters of eulerToMatrix() have the names of the angles in the reverse order (intended).
template <class T>
Point3dData<omReal64> rotatedCorner(const Point3dData<T>& center, omReal64 localX, omReal64 localY, omReal64 localZ,
                                    omReal64 alpha, omReal64 beta, omReal64 chi) {
  const Point3dData<omReal64> corner = cast<omReal64>(center) + Point3dData<omReal64>(localX, localY, localZ);
  const RotationMatrix rows = eulerToMatrix(chi, beta, alpha);
  const auto component = [&corner](const std::array<omReal64, 3>& row) {
    return row[0] * corner.getX() + row[1] * corner.getY() + row[2] * corner.getZ();
  };
  return {component(rows[0]), component(rows[1]), component(rows[2])};
}

}  // namespace ormix::geom::detail
