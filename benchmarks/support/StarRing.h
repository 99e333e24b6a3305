#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <type_traits>
#include <vector>

namespace ormix::benchmarks {

/// Interleaved coordinates of a closed star-shaped ring that turns counter-clockwise: `nbPoints` vertices, the last one
/// the first again. All coordinates are between 5,000 and 35,000, so that every scalar type can hold the ring; integers
/// are rounded. The same ring on every run.
template <class T>
std::vector<T> starRing(std::size_t nbPoints) {
  constexpr omReal64 fullTurn = 6.283185307179586;
  std::mt19937_64 generator(20);
  std::uniform_real_distribution<omReal64> roughness(-0.05, 0.05);
  const auto toScalar = [](omReal64 v) { return static_cast<T>(std::is_integral_v<T> ? std::round(v) : v); };
  std::vector<T> xy;
  xy.reserve(2 * nbPoints);
  for (std::size_t i = 0; i + 1 < nbPoints; ++i) {
    const omReal64 angle = fullTurn * static_cast<omReal64>(i) / static_cast<omReal64>(nbPoints - 1);
    const omReal64 radius = 10000 * (1 + 0.2 * std::sin(7 * angle) + roughness(generator));
    xy.push_back(toScalar(20000 + radius * std::cos(angle)));
    xy.push_back(toScalar(20000 + radius * std::sin(angle)));
  }
  xy.push_back(xy[0]);
  xy.push_back(xy[1]);
  return xy;
}

}  // namespace ormix::benchmarks
