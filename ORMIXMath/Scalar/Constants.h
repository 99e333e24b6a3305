#pragma once

#include <ORMIXUtil/ScalarTypes.h>

namespace ormix {

/// Ratio of a circle's circumference to its diameter, as the nearest omReal64.
inline constexpr omReal64 s_pi = 3.141592653589793;
/// Twice s_pi: a full turn in radians, as the nearest omReal64.
inline constexpr omReal64 s_twoPi = 6.283185307179586;

}  // namespace ormix
