#pragma once

#include <ORMIXUtil/ScalarTypes.h>

namespace ormix {

/// Ratio of a circle's circumference to its diameter, and twice it, each the nearest value of the type.
inline constexpr omReal64 s_pi = 3.141592653589793;
inline constexpr omReal64 s_twoPi = 6.283185307179586;

}  // namespace ormix
