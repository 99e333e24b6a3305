#include <ORMIXMath/Location/EdgeCrossing.h>
#include <ORMIXMath/Transform/CoordinateVectors.h>

#include <cmath>
#include <limits>

namespace ormix {

namespace {

using namespace detail;

/// The largest value of type T that is not above a finite one; `isNone` when all are above it.
template <class T>
T floorTo(omReal64 value, bool& isNone) {
  using Limits = std::numeric_limits<T>;
  isNone = value < static_cast<omReal64>(Limits::lowest());
  if (isNone || value >= static_cast<omReal64>(Limits::max())) return Limits::max();
  if constexpr (std::is_integral_v<T>) {
    return static_cast<T>(std::floor(value));
  } else {
    const T nearest = static_cast<T>(value);
    return static_cast<omReal64>(nearest) > value ? std::nextafter(nearest, Limits::lowest()) : nearest;
  }
}

/// Whether one of the edges from vertex to vertex has an end level with y or the ends on both sides of it. In vectors
/// of x, y, x, y, ...: comparisons of the x are made and not used.
/// \param level the largest coordinate that is not above y
template <class T, std::size_t N>
[[gnu::always_inline]] inline bool meetsLevel(const T* xy, std::size_t nbVectors, T level) {
  using Values = Vector<T, N>;
  using Stored = StoredVector<T, N>;
  const Values levels = Values{} + level;
  auto found = levels != levels;
  for (std::size_t i = 0; i < nbVectors; ++i) {
    const Values from = *reinterpret_cast<const Stored*>(xy + i * N);
    const Values to = *reinterpret_cast<const Stored*>(xy + i * N + 2);
    found |= ((from <= levels) ^ (to <= levels)) | (from == levels) | (to == levels);
  }
  auto any = found[1];
  for (std::size_t lane = 3; lane < N; lane += 2) any |= found[lane];
  return any != 0;
}

template <class T>
PlanarPoint pointAt(const T* xy, std::size_t index) {
  return toPlanarPoint(xy[2 * index], xy[2 * index + 1]);
}

template <class T, std::size_t NbBytes>
[[gnu::always_inline]] inline RingCrossings crossingsOfEdges(const T* xy, std::size_t nbPoints, const PlanarPoint& p,
                                                             T level) {
  constexpr std::size_t nbLanes = NbBytes / sizeof(T);
  constexpr std::size_t nbVectors = 16;
  constexpr std::size_t nbEdges = nbVectors * nbLanes / 2;
  RingCrossings result;
  std::size_t first = 0;
  for (; first + nbEdges < nbPoints; first += nbEdges) {
    if (!meetsLevel<T, nbLanes>(xy + 2 * first, nbVectors, level)) continue;
    for (std::size_t i = first; i < first + nbEdges; ++i) addEdge(result, pointAt(xy, i), pointAt(xy, i + 1), p);
  }
  for (; first + 1 < nbPoints; ++first) addEdge(result, pointAt(xy, first), pointAt(xy, first + 1), p);
  addEdge(result, pointAt(xy, nbPoints - 1), pointAt(xy, 0), p);
  return result;
}

#if defined(__x86_64__)
template <class T>
[[gnu::target("avx2")]] RingCrossings crossingsOfEdgesAvx2(const T* xy, std::size_t nbPoints, const PlanarPoint& p,
                                                           T level) {
  return crossingsOfEdges<T, 32>(xy, nbPoints, p, level);
}
#endif

}  // namespace

template <class T>
RingCrossings ringCrossings(const T* xy, std::size_t nbPoints, omReal64 x, omReal64 y) {
  bool isNone = false;
  if (nbPoints == 0 || !std::isfinite(x) || !std::isfinite(y)) return {};
  const T level = floorTo<T>(y, isNone);
  if (isNone) return {};
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx2")) return crossingsOfEdgesAvx2(xy, nbPoints, {x, y}, level);
#endif
  return crossingsOfEdges<T, 16>(xy, nbPoints, {x, y}, level);
}

// clang-format off
template ORMIX_MATH_API RingCrossings ringCrossings(const omInt32*, std::size_t, omReal64, omReal64);
template ORMIX_MATH_API RingCrossings ringCrossings(const omUInt32*, std::size_t, omReal64, omReal64);
template ORMIX_MATH_API RingCrossings ringCrossings(const omReal32*, std::size_t, omReal64, omReal64);
template ORMIX_MATH_API RingCrossings ringCrossings(const omReal64*, std::size_t, omReal64, omReal64);
// clang-format on

}  // namespace ormix
