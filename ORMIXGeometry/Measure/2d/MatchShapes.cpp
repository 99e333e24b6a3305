#include <ORMIXGeometry/Measure/2d/MatchShapes.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom {

omReal64 matchShapes(const HuMoments2dO3& a, const HuMoments2dO3& b, eShapeMatching method) {
  const auto scaled = [](omReal64 h) { return std::copysign(1.0, h) * std::log10(std::abs(h)); };
  omReal64 result = 0;
  for (omUInt32 i = 0; i < HuMoments2dO3::s_nbValues; ++i) {
    if (a.getValue(i) == 0 || b.getValue(i) == 0) continue;
    const omReal64 ma = scaled(a.getValue(i));
    const omReal64 mb = scaled(b.getValue(i));
    if (method == eSM_I2)
      result += std::abs(ma - mb);
    else if (method == eSM_I1 && ma != 0 && mb != 0)
      result += std::abs(1 / ma - 1 / mb);
    else if (method == eSM_I3 && ma != 0)
      result = std::max(result, std::abs(ma - mb) / std::abs(ma));
  }
  return result;
}

omReal64 matchShapes(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b, eShapeMatching method) {
  return matchShapes(HuMomentsMsr2d::measure(a), HuMomentsMsr2d::measure(b), method);
}

}  // namespace ormix::geom
