#include <ORMIXMath/Moments/PointMoments.h>

#include <algorithm>
#include <array>
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
// Terms of each lane between two compensated additions.
constexpr std::size_t nbStepsOfBlock = 64;

/// Coordinates of the point that the others are relative to.
struct Origin {
  omReal64 x;
  omReal64 y;
};

/// A sum of each moment, up to its factor, and what rounding took from it.
struct LaneSums {
  Lanes sum[nbSums];
  Lanes error[nbSums];
};

/// Two points, or two edges' ends, as they are in memory.
template <class T>
[[gnu::always_inline]] inline void loadFour(const T* numbers, Lanes& result) {
  using Four [[gnu::vector_size(4 * sizeof(T))]] = T;
  Four values;
  std::memcpy(&values, numbers, sizeof(values));
  result = __builtin_convertvector(values, Lanes);
}

/// Four consecutive points in the order 0, 2, 1, 3, which costs no exchange between the halves of a register, relative
/// to the origin.
template <class T>
[[gnu::always_inline]] inline void loadPoints(const T* xy, const Origin& origin, Lanes& x, Lanes& y) {
  using Order [[gnu::vector_size(32)]] = omInt64;
  Lanes first, second;
  loadFour(xy, first);
  loadFour(xy + nbLanes, second);
  x = __builtin_shuffle(first, second, Order{0, 4, 2, 6}) - origin.x;
  y = __builtin_shuffle(first, second, Order{1, 5, 3, 7}) - origin.y;
}

/// The triangles between four edges and the origin.
struct Triangles {
  static constexpr std::size_t nbPointsBefore = 1;  ///< points before those of a step that its terms need
  /// What the sums are to be multiplied by.
  static constexpr std::array<omReal64, nbSums> factors{1.0 / 2,  1.0 / 6,  1.0 / 6,   1.0 / 48,  1.0 / 48,
                                                        1.0 / 48, 1.0 / 40, 1.0 / 120, 1.0 / 120, 1.0 / 40};

  // With the sum (a, b) and the difference (u, v) of an edge's ends, the integral of a monomial is a polynomial of them
  // times the triangle's area. The area is computed from the difference, which is small where edges are short.
  template <class T>
  [[gnu::always_inline]] static inline void add(const T* xy, const Origin& origin, Lanes* sum) {
    Lanes x, y, xAfter, yAfter;
    loadPoints(xy, origin, x, y);
    loadPoints(xy + 2, origin, xAfter, yAfter);
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

/// Four points of mass 1.
struct Points {
  static constexpr std::size_t nbPointsBefore = 0;
  static constexpr std::array<omReal64, nbSums> factors{1, 1, 1, 1, 1, 1, 1, 1, 1, 1};

  // The mass is the number of points, which is exact; its sum stays 0.
  template <class T>
  [[gnu::always_inline]] static inline void add(const T* xy, const Origin& origin, Lanes* sum) {
    Lanes x, y;
    loadPoints(xy, origin, x, y);
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

/// Adds the terms of `nbSteps` times four points or edges.
template <class Terms, class T>
[[gnu::always_inline]] inline void addSteps(const T* xy, std::size_t nbSteps, const Origin& origin, LaneSums& sums) {
  while (nbSteps > 0) {
    const std::size_t nbNow = std::min(nbSteps, nbStepsOfBlock);
    Lanes block[nbSums] = {};
    for (const T* end = xy + 2 * nbLanes * nbNow; xy != end; xy += 2 * nbLanes) Terms::add(xy, origin, block);
    nbSteps -= nbNow;
    for (std::size_t k = 0; k < nbSums; ++k) {
      // Compensated addition (Knuth1969), not by a function: vectors would be passed as this processor passes them.
      const Lanes total = sums.sum[k] + block[k];
      const Lanes added = total - sums.sum[k];
      sums.error[k] += (sums.sum[k] - (total - added)) + (block[k] - added);
      sums.sum[k] = total;
    }
  }
}

template <class Terms, class T>
void addStepsPortable(const T* xy, std::size_t nbSteps, const Origin& origin, LaneSums& sums) {
  addSteps<Terms>(xy, nbSteps, origin, sums);
}

#if defined(ORMIX_HAS_AVX2_VERSION)
/// The same compiled for registers of four lanes: the same operations in the same order, without fused
/// multiplications, which would change the bits.
template <class Terms, class T>
[[gnu::target("avx2")]] void addStepsAvx2(const T* xy, std::size_t nbSteps, const Origin& origin, LaneSums& sums) {
  addSteps<Terms>(xy, nbSteps, origin, sums);
}
/// The same with twice as many registers, as the sums need.
template <class Terms, class T>
[[gnu::target("avx512f,avx512vl")]] void addStepsAvx512(const T* xy, std::size_t nbSteps, const Origin& origin,
                                                        LaneSums& sums) {
  addSteps<Terms>(xy, nbSteps, origin, sums);
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
  const std::size_t nbTerms = nbPoints - Terms::nbPointsBefore;
  add(xy, nbTerms / nbLanes, origin, sums);
  if (const std::size_t nbLeft = nbTerms % nbLanes; nbLeft > 0) {
    // Edges of length 0 and points at the origin, which add nothing, make up for missing ones.
    constexpr std::size_t nbMost = 2 * (nbLanes + Terms::nbPointsBefore);
    const T* rest = xy + 2 * (nbTerms - nbLeft);
    const T* last = Terms::nbPointsBefore > 0 ? xy + 2 * (nbPoints - 1) : xy;
    T padded[nbMost];
    for (std::size_t i = 0; i < nbMost; i += 2) {
      const T* point = i < 2 * (nbLeft + Terms::nbPointsBefore) ? rest + i : last;
      padded[i] = point[0];
      padded[i + 1] = point[1];
    }
    add(padded, 1, origin, sums);
  }
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
  if (__builtin_cpu_supports("avx512vl")) return momentsBy<Terms>(addStepsAvx512<Terms, T>, xy, nbPoints);
  if (__builtin_cpu_supports("avx2")) return momentsBy<Terms>(addStepsAvx2<Terms, T>, xy, nbPoints);
#endif
  return momentsBy<Terms>(addStepsPortable<Terms, T>, xy, nbPoints);
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
  return centredMoments(momentsBy<Triangles>(addStepsPortable<Triangles, T>, xy, nbPoints));
}

template <class T>
PlanarMoments detail::pointMomentsPortable(const T* xy, std::size_t nbPoints) {
  return withMass(momentsBy<Points>(addStepsPortable<Points, T>, xy, nbPoints), nbPoints);
}

ORMIX_MATH_POINT_MOMENTS(, omInt32)
ORMIX_MATH_POINT_MOMENTS(, omUInt32)
ORMIX_MATH_POINT_MOMENTS(, omReal32)
ORMIX_MATH_POINT_MOMENTS(, omReal64)

}  // namespace ormix
