#pragma once

#include <ORMIXMath/Scalar/Constants.h>

#include <cmath>

/// \file
/// The range of the angles that vectors and plans store; not installed.

namespace ormix::geom::detail {

/// The angle in [-pi, pi), NaN where it is not finite.
inline omReal64 signedAngle(omReal64 angle) {
  omReal64 turned = std::fmod(angle, s_twoPi);
  if (turned >= s_pi) turned -= s_twoPi;
  if (turned < -s_pi) turned += s_twoPi;
  return turned;
}

/// The angle in [0, 2 pi], the upper end only for what rounds to it; NaN where it is not finite.
inline omReal64 positiveAngle(omReal64 angle) {
  const omReal64 turned = std::fmod(angle, s_twoPi);
  return turned < 0 ? turned + s_twoPi : turned;
}

}  // namespace ormix::geom::detail
