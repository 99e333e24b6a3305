#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXMath/Rotation/EulerAngles.h>

/// \file
/// What cubes and cuboids compute with; not installed.

namespace ormix::geom::detail {

/// The point turned by Rz(chi)·Ry(beta)·Rx(alpha) about the origin of coordinates. The angles of eulerToMatrix() bear
/// their names the other way round (intended).
inline Point3dData<omReal64> turnedAboutOrigin(const Point3dData<omReal64>& point, omReal64 alpha, omReal64 beta,
                                               omReal64 chi) {
  const RotationMatrix rows = eulerToMatrix(chi, beta, alpha);
  const auto component = [&point](const std::array<omReal64, 3>& row) {
    return row[0] * point.getX() + row[1] * point.getY() + row[2] * point.getZ();
  };
  return {component(rows[0]), component(rows[1]), component(rows[2])};
}

}  // namespace ormix::geom::detail
