#include <ORMIXMath/Shape/Parabola.h>

#include <cmath>

namespace ormix {

omReal64 parabolaArcLength(omReal64 focalLength, omReal64 fromAbscissa, omReal64 toAbscissa) {
  if (fromAbscissa == toAbscissa) return 0;
  const omReal64 parameter = 2 * focalLength;
  // With h = √(parameter² + t²), the difference t1·h1 − t0·h0 is (t1 − t0)·(h1 + t0·ratio), and that of the asinh is
  // the asinh of (t1·h0 − t0·h1) / parameter² = (t1 − t0)·(h0 − t0·ratio) / parameter².
  const omReal64 fromHypotenuse = std::hypot(parameter, fromAbscissa);
  const omReal64 toHypotenuse = std::hypot(parameter, toAbscissa);
  const omReal64 ratio = (fromAbscissa + toAbscissa) / (fromHypotenuse + toHypotenuse);
  const omReal64 step = (toAbscissa - fromAbscissa) / parameter;
  if (std::isinf(step)) return std::abs(step);
  const omReal64 straight = step * (toHypotenuse + fromAbscissa * ratio);
  const omReal64 curved = parameter * std::asinh(step * ((fromHypotenuse - fromAbscissa * ratio) / parameter));
  return std::abs(straight + curved) / 2;
}

}  // namespace ormix
