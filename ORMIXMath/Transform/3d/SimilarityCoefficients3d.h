#pragma once

#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Transform/3d/AffineTransform3d.h>

#include <array>

namespace ormix {

/// The matrix of the rotation by the angles, times the scale, then the shift.
inline AffineCoefficients3d similarityCoefficients(omReal64 scale, const EulerAngles& angles,
                                                   const std::array<omReal64, 3>& shift) {
  const auto [x, y, z] = eulerToMatrix(angles);
  return {scale * x[0], scale * x[1], scale * x[2], shift[0],     scale * y[0], scale * y[1],
          scale * y[2], shift[1],     scale * z[0], scale * z[1], scale * z[2], shift[2]};
}

}  // namespace ormix
