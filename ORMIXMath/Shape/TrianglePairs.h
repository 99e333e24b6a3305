#pragma once

#include <ORMIXMath/Shape/TriangleMesh.h>

#include <cmath>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// \file
/// Triangles taken two at a time, one in each half of a vector that every processor has; not installed.

namespace ormix::detail {

/// Two reals that are computed with at once; its operators act on each.
using Pair = omReal64 __attribute__((vector_size(16)));

/// One corner of two triangles.
struct CornerPair {
  Pair x;
  Pair y;
  Pair z;
};

template <class T>
inline CornerPair cornerPair(const T* p, const T* q) {
  return {Pair{static_cast<omReal64>(p[0]), static_cast<omReal64>(q[0])},
          Pair{static_cast<omReal64>(p[1]), static_cast<omReal64>(q[1])},
          Pair{static_cast<omReal64>(p[2]), static_cast<omReal64>(q[2])}};
}

#if defined(__SSE2__)
// The same with the coordinates brought together before they are converted: half as many conversions.
inline CornerPair cornerPair(const omReal32* p, const omReal32* q) {
  const __m128 fromP = _mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
  const __m128 fromQ = _mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(q)));
  const __m128 xxyy = _mm_unpacklo_ps(fromP, fromQ);
  const __m128 zz = _mm_unpacklo_ps(_mm_load_ss(p + 2), _mm_load_ss(q + 2));
  return {_mm_cvtps_pd(xxyy), _mm_cvtps_pd(_mm_movehl_ps(xxyy, xxyy)), _mm_cvtps_pd(zz)};
}
#endif

inline Pair rootPair(const Pair& square) {
#if defined(__SSE2__)
  return _mm_sqrt_pd(square);
#else
  return {std::sqrt(square[0]), std::sqrt(square[1])};
#endif
}

/// The corners of two triangles, of which the first has its first index at `indices`.
struct TrianglePair {
  CornerPair a;
  CornerPair b;
  CornerPair c;
};

template <class T>
inline TrianglePair trianglePair(const T* xyz, const omUInt32* indices) {
  const auto vertex = [=](std::size_t corner) { return xyz + 3 * static_cast<std::size_t>(indices[corner]); };
  return {cornerPair(vertex(0), vertex(3)), cornerPair(vertex(1), vertex(4)), cornerPair(vertex(2), vertex(5))};
}

/// A triangle beside itself, for the last of an odd number.
template <class T>
inline TrianglePair doubledTriangle(const T* xyz, const omUInt32* indices) {
  const auto vertex = [=](std::size_t corner) { return xyz + 3 * static_cast<std::size_t>(indices[corner]); };
  return {cornerPair(vertex(0), vertex(0)), cornerPair(vertex(1), vertex(1)), cornerPair(vertex(2), vertex(2))};
}

inline CornerPair operator-(const CornerPair& p, const CornerPair& q) { return {p.x - q.x, p.y - q.y, p.z - q.z}; }

inline CornerPair crossPair(const CornerPair& p, const CornerPair& q) {
  return {p.y * q.z - p.z * q.y, p.z * q.x - p.x * q.z, p.x * q.y - p.y * q.x};
}

inline Pair dotPair(const CornerPair& p, const CornerPair& q) { return p.x * q.x + p.y * q.y + p.z * q.z; }

/// Across the triangles, of twice their areas in length.
inline CornerPair normalPair(const TrianglePair& t) { return crossPair(t.b - t.a, t.c - t.a); }

/// Six times the signed volumes over the triangles. From edges, not from the corners' own cross products, which are as
/// large as the square of the distance from the apex and cancel to the size of a triangle.
inline Pair determinantPair(const TrianglePair& t) { return dotPair(t.a, normalPair(t)); }
inline Pair determinantPair(const TrianglePair& t, const CornerPair& apex) {
  return dotPair(t.a - apex, normalPair(t));
}

/// Twice the areas.
inline Pair doubleAreaPair(const TrianglePair& t) {
  const CornerPair normal = normalPair(t);
  return rootPair(dotPair(normal, normal));
}

}  // namespace ormix::detail
