#pragma once

#include <ORMIXMath/Scalar/Constants.h>

#include <cmath>

/// \file
/// Reduction of angles to the ranges in which vectors and planes store them; not installed.

namespace ormix::geom::detail {

/// The angle reduced to [-pi, pi); NaN for one that is not finite.
inline omReal64 signedAngle(omReal64 angle) {
  omReal64 reduced = std::fmod(angle, s_twoPi);
  if (reduced >= s_pi) reduced -= s_twoPi;
  if (reduced < -s_pi) reduced += s_twoPi;
  return reduced;
}

/// The angle reduced to [0, 2 pi], where a negative angle of tiny magnitude gives 2 pi by rounding; NaN for one that is
/// not finite.
inline omReal64 positiveAngle(omReal64 angle) {
  const omReal64 reduced = std::fmod(angle, s_twoPi);
  return reduced < 0 ? reduced + s_twoPi : reduced;
}

}  // namespace ormix::geom::detail
