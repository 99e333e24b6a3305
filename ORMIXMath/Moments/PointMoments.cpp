#include <ORMIXMath/Moments/PointMoments.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#if defined(__x86_64__)
#define ORMIX_HAS_AVX2_VERSION 1
#endif

namespace ormix {
namespace {

// Sums run in four lanes, held in one register or in two. Their number is part of the result's definition: it fixes the
// order of the additions and so the bits.
using Lanes [[gnu::vector_size(32), gnu::may_alias]] = omReal64;
constexpr std::size_t nbLanes = 4;
constexpr std::size_t nbSums = PlanarMoments::s_nbMoments;
// Terms between two compensated additions: points or edges.
constexpr std::size_t nbTermsOfBlock = 256;

/// Coordinates of the point that the others are relative to.
struct Origin {
  omReal64 x;
  omReal64 y;
};

/// The points of a block relative to the origin: as many as it has terms, the end of its last edge, and what
/// loadBlock() adds.
struct Block {
  alignas(64) omReal64 x[nbTermsOfBlock + nbLanes];
  alignas(64) omReal64 y[nbTermsOfBlock + nbLanes];
};

/// A sum of each moment, up to its factor, and what rounding took from it.
struct LaneSums {
  Lanes sum[nbSums];
  Lanes error[nbSums];
};

// Vectors are neither passed nor returned by these functions but stay in the function that they are inlined into, since
// how they are passed depends on the processor that a function is compiled for.

[[gnu::always_inline]] inline void loadFour(const omReal64* numbers, Lanes& result) {
  std::memcpy(&result, numbers, sizeof(result));
}

/// Prefetches a point. An address past the end is allowed: prefetching does not fault.
template <class T>
[[gnu::always_inline]] inline void prefetch(const T* xy, std::size_t point) {
  __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(xy) + 2 * sizeof(T) * point));
}

/// Loads points, and after them the origin as often as lanes may be left: points at the origin and edges that begin or
/// end there add nothing.
template <class T>
[[gnu::always_inline]] inline void loadBlock(const T* xy, std::size_t nbPoints, const Origin& origin, Block& block) {
  for (std::size_t i = 0; i < nbPoints; ++i) {
    block.x[i] = static_cast<omReal64>(xy[2 * i]) - origin.x;
    block.y[i] = static_cast<omReal64>(xy[2 * i + 1]) - origin.y;
  }
  for (std::size_t i = nbPoints; i < nbPoints + nbLanes - 1; ++i) {
    block.x[i] = 0;
    block.y[i] = 0;
  }
}

/// The triangles between the edges and the origin.
struct Triangles {
  /// What the sums are to be multiplied by.
  static constexpr std::array<omReal64, nbSums> factors{1.0 / 2,  1.0 / 6,  1.0 / 6,   1.0 / 48,  1.0 / 48,
                                                        1.0 / 48, 1.0 / 40, 1.0 / 120, 1.0 / 120, 1.0 / 40};
  static constexpr std::size_t nbPointsOfTerm = 2;  ///< from one point to the next

  /// Adds the four edges from point i on. With the sum (a, b) and the difference (u, v) of an edge's ends, the integral
  /// of a monomial is a polynomial of them times the triangle's area. The area is computed from the difference, which
  /// is small where edges are short.
  [[gnu::always_inline]] static inline void add(const Block& block, std::size_t i, Lanes* sum) {
    Lanes x, y, xAfter, yAfter;
    loadFour(block.x + i, x);
    loadFour(block.y + i, y);
    loadFour(block.x + i + 1, xAfter);
    loadFour(block.y + i + 1, yAfter);
    const Lanes a = x + xAfter, b = y + yAfter;
    const Lanes u = xAfter - x, v = yAfter - y;
    const Lanes d = x * v - y * u;
    const Lanes da = d * a, db = d * b;
    const Lanes aa = a * a, bb = b * b, uu = u * u, vv = v * v, uv = u * v;
    const Lanes xx = 3 * aa + uu, yy = 3 * bb + vv, twice = uv + uv;
    sum[0] += d;
    sum[1] += da;
    sum[2] += db;
    sum[3] += d * xx;
    sum[4] += d * (3 * (a * b) + uv);
    sum[5] += d * yy;
    sum[6] += da * (aa + uu);
    sum[7] += db * xx + da * twice;
    sum[8] += da * yy + db * twice;
    sum[9] += db * (bb + vv);
  }
};

/// Points of mass 1.
struct Points {
  static constexpr std::array<omReal64, nbSums> factors{1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
  static constexpr std::size_t nbPointsOfTerm = 1;

  /// Adds four points from point i on. The mass is their number, which is exact; its sum stays 0.
  [[gnu::always_inline]] static inline void add(const Block& block, std::size_t i, Lanes* sum) {
    Lanes x, y;
    loadFour(block.x + i, x);
    loadFour(block.y + i, y);
    const Lanes xx = x * x, yy = y * y;
    sum[1] += x;
    sum[2] += y;
    sum[3] += xx;
    sum[4] += x * y;
    sum[5] += yy;
    sum[6] += xx * x;
    sum[7] += xx * y;
    sum[8] += x * yy;
    sum[9] += yy * y;
  }
};

/// The sums over all points or edges. Prefetching the next block during this one takes a quarter less time for a ring
/// of a million points.
template <class Terms, class T>
[[gnu::always_inline]] inline void addAll(const T* xy, std::size_t nbPoints, const Origin& origin, LaneSums& sums) {
  Block block;
  for (std::size_t nbTerms = nbPoints - (Terms::nbPointsOfTerm - 1); nbTerms > 0;) {
    const std::size_t nbNow = std::min(nbTerms, nbTermsOfBlock);
    loadBlock(xy, nbNow + (Terms::nbPointsOfTerm - 1), origin, block);
    Lanes term[nbSums] = {};
    for (std::size_t i = 0; i < nbNow; i += nbLanes) {
      prefetch(xy, i + nbTermsOfBlock);
      Terms::add(block, i, term);
    }
    for (std::size_t k = 0; k < nbSums; ++k) {
      // Compensated addition (Knuth1969).
      const Lanes total = sums.sum[k] + term[k];
      const Lanes added = total - sums.sum[k];
      sums.error[k] += (sums.sum[k] - (total - added)) + (term[k] - added);
      sums.sum[k] = total;
    }
    nbTerms -= nbNow;
    xy += 2 * nbNow;
  }
}

template <class Terms, class T>
void addAllPortable(const T* xy, std::size_t nbPoints, const Origin& origin, LaneSums& sums) {
  addAll<Terms>(xy, nbPoints, origin, sums);
}

#if defined(ORMIX_HAS_AVX2_VERSION)
/// The same compiled for registers of four lanes: the same operations in the same order, without fused
/// multiplications, which would change the bits.
template <class Terms, class T>
[[gnu::target("avx2")]] void addAllAvx2(const T* xy, std::size_t nbPoints, const Origin& origin, LaneSums& sums) {
  addAll<Terms>(xy, nbPoints, origin, sums);
}
/// The same with twice as many registers, as the sums need.
template <class Terms, class T>
[[gnu::target("avx512f,avx512vl")]] void addAllAvx512(const T* xy, std::size_t nbPoints, const Origin& origin,
                                                      LaneSums& sums) {
  addAll<Terms>(xy, nbPoints, origin, sums);
}
#endif

/// Sums over all points or edges by `add`, one of the functions above.
template <class Terms, class T, class Add>
PlanarMoments momentsBy(Add add, const T* xy, std::size_t nbPoints) {
  PlanarMoments moments;
  if (nbPoints == 0) return moments;
  const Origin origin{static_cast<omReal64>(xy[0]), static_cast<omReal64>(xy[1])};
  moments.originX = origin.x;
  moments.originY = origin.y;
  LaneSums sums{};
  add(xy, nbPoints, origin, sums);
  for (std::size_t k = 0; k < nbSums; ++k) {
    const Lanes& s = sums.sum[k];
    const Lanes& e = sums.error[k];
    moments.about[k] = Terms::factors[k] * (((s[0] + s[1]) + (s[2] + s[3])) + ((e[0] + e[1]) + (e[2] + e[3])));
  }
  return moments;
}

template <class Terms, class T>
PlanarMoments momentsByBest(const T* xy, std::size_t nbPoints) {
#if defined(ORMIX_HAS_AVX2_VERSION)
  // Tested on each call, which costs a load. A function resolved when the library is loaded (ifunc) would run before
  // the sanitizers are initialised and crash them.
  if (__builtin_cpu_supports("avx512vl")) return momentsBy<Terms>(addAllAvx512<Terms, T>, xy, nbPoints);
  if (__builtin_cpu_supports("avx2")) return momentsBy<Terms>(addAllAvx2<Terms, T>, xy, nbPoints);
#endif
  return momentsBy<Terms>(addAllPortable<Terms, T>, xy, nbPoints);
}

PlanarMoments withMass(PlanarMoments moments, std::size_t nbPoints) {
  moments.about[0] = static_cast<omReal64>(nbPoints);
  return centredMoments(moments);
}

constexpr std::size_t nbPointsWithoutArea = 3;

}  // namespace

template <class T>
PlanarMoments ringMoments(const T* xy, std::size_t nbPoints) {
  if (nbPoints <= nbPointsWithoutArea) return {};
  return centredMoments(momentsByBest<Triangles>(xy, nbPoints));
}

template <class T>
PlanarMoments pointMoments(const T* xy, std::size_t nbPoints) {
  return withMass(momentsByBest<Points>(xy, nbPoints), nbPoints);
}

template <class T>
PlanarMoments detail::ringMomentsPortable(const T* xy, std::size_t nbPoints) {
  if (nbPoints <= nbPointsWithoutArea) return {};
  return centredMoments(momentsBy<Triangles>(addAllPortable<Triangles, T>, xy, nbPoints));
}

template <class T>
PlanarMoments detail::pointMomentsPortable(const T* xy, std::size_t nbPoints) {
  return withMass(momentsBy<Points>(addAllPortable<Points, T>, xy, nbPoints), nbPoints);
}

ORMIX_MATH_POINT_MOMENTS(, omInt32)
ORMIX_MATH_POINT_MOMENTS(, omUInt32)
ORMIX_MATH_POINT_MOMENTS(, omReal32)
ORMIX_MATH_POINT_MOMENTS(, omReal64)

}  // namespace ormix
