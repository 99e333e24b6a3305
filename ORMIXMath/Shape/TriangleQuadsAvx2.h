#pragma once

#include <ORMIXMath/Shape/CompensatedSum.h>
#include <ORMIXMath/Shape/RingIntrinsics.h>
#include <ORMIXMath/Shape/TrianglePairs.h>

#include <limits>
#include <type_traits>

namespace ormix::detail {

/// The sums over triangles four at a time, with the bits of the sums over pairs. Each takes as many triangles from the
/// front as fill its vectors and answers how many.
class TriangleQuadsAvx2 {
 public:
  /// Adds twice the area of triangle t to lane t % 4.
  template <class T>
  [[gnu::target("avx2")]] static std::size_t addDoubleAreas(const TriangleMeshView<T>& mesh, Lanes<4>& lanes) {
    const std::size_t nbTaken = mesh.nbTriangles - mesh.nbTriangles % 4;
    __m256d sum = _mm256_loadu_pd(lanes.sum);
    __m256d error = _mm256_loadu_pd(lanes.error);
    for (const omUInt32 *at = mesh.indices, *end = at + 3 * nbTaken; at != end; at += 12) {
      const Quad quad = load(mesh.xyz, at);
      const Corners across = normals(quad);
      const __m256d area = _mm256_sqrt_pd(dot(across, across));
      // addCompensated() on each lane.
      const __m256d total = _mm256_add_pd(sum, area);
      const __m256d added = _mm256_sub_pd(total, sum);
      const __m256d lost = _mm256_sub_pd(sum, _mm256_sub_pd(total, added));
      error = _mm256_add_pd(error, _mm256_add_pd(lost, _mm256_sub_pd(area, added)));
      sum = total;
    }
    _mm256_storeu_pd(lanes.sum, sum);
    _mm256_storeu_pd(lanes.error, error);
    return nbTaken;
  }

  /// Adds the signed volumes over the triangles in their order.
  template <class T>
  [[gnu::target("avx2")]] static std::size_t addVolumes(const TriangleMeshView<T>& mesh, omReal64& sum) {
    const std::size_t nbTaken = mesh.nbTriangles - mesh.nbTriangles % 4;
    omReal64 total = sum;
    for (const omUInt32 *at = mesh.indices, *end = at + 3 * nbTaken; at != end; at += 12) {
      const Quad quad = load(mesh.xyz, at);
      alignas(32) omReal64 volumes[4];
      _mm256_store_pd(volumes, _mm256_div_pd(dot(quad.a, normals(quad)), _mm256_set1_pd(6)));
      for (const omReal64 volume : volumes) total += volume;
    }
    sum = total;
    return nbTaken;
  }

  /// Adds six times the volumes over the triangles, with the apex at `origin`, to the halves of `sum` in turn.
  template <class T>
  [[gnu::target("avx2")]] static std::size_t addDeterminants(const TriangleMeshView<T>& mesh, const CornerPair& origin,
                                                             Pair& sum) {
    const std::size_t nbTaken = mesh.nbTriangles - mesh.nbTriangles % 4;
    const Corners apex{_mm256_set1_pd(origin.x[0]), _mm256_set1_pd(origin.y[0]), _mm256_set1_pd(origin.z[0])};
    __m128d total = sum;
    for (const omUInt32 *at = mesh.indices, *end = at + 3 * nbTaken; at != end; at += 12) {
      const Quad quad = load(mesh.xyz, at);
      const __m256d all = dot(minus(quad.a, apex), normals(quad));
      total = _mm_add_pd(total, _mm256_castpd256_pd128(all));
      total = _mm_add_pd(total, _mm256_extractf128_pd(all, 1));
    }
    sum = total;
    return nbTaken;
  }

 private:
  /// One corner of four triangles.
  struct Corners {
    __m256d x;
    __m256d y;
    __m256d z;
  };
  struct Quad {
    Corners a;
    Corners b;
    Corners c;
  };

  template <class T>
  [[gnu::target("avx2")]] static Quad load(const T* xyz, const omUInt32* indices) {
    return {corners(xyz, indices), corners(xyz, indices + 1), corners(xyz, indices + 2)};
  }

  template <class T>
  static const T* vertex(const T* xyz, omUInt32 index) {
    return xyz + 3 * static_cast<std::size_t>(index);
  }

  /// The vertices of which the indices stand three apart. Of each x and y are loaded at once, z by itself: nothing
  /// follows the last vertex, and masked loads of four take twice the time.
  [[gnu::target("avx2")]] static Corners corners(const omReal64* xyz, const omUInt32* indices) {
    const omReal64* const p0 = vertex(xyz, indices[0]);
    const omReal64* const p1 = vertex(xyz, indices[3]);
    const omReal64* const p2 = vertex(xyz, indices[6]);
    const omReal64* const p3 = vertex(xyz, indices[9]);
    const __m256d xy02 = joined(_mm_loadu_pd(p0), _mm_loadu_pd(p2));
    const __m256d xy13 = joined(_mm_loadu_pd(p1), _mm_loadu_pd(p3));
    const __m128d z01 = _mm_loadh_pd(_mm_load_sd(p0 + 2), p1 + 2);
    const __m128d z23 = _mm_loadh_pd(_mm_load_sd(p2 + 2), p3 + 2);
    return {_mm256_unpacklo_pd(xy02, xy13), _mm256_unpackhi_pd(xy02, xy13), joined(z01, z23)};
  }
  [[gnu::target("avx2")]] static __m256d joined(__m128d low, __m128d high) {
    return _mm256_insertf128_pd(_mm256_castpd128_pd256(low), high, 1);
  }
  template <class T>
  [[gnu::target("avx2")]] static Corners corners(const T* xyz, const omUInt32* indices) {
    const T* const p0 = vertex(xyz, indices[0]);
    const T* const p1 = vertex(xyz, indices[3]);
    const T* const p2 = vertex(xyz, indices[6]);
    const T* const p3 = vertex(xyz, indices[9]);
    const __m128i xy01 = _mm_unpacklo_epi32(twoWords(p0), twoWords(p1));
    const __m128i xy23 = _mm_unpacklo_epi32(twoWords(p2), twoWords(p3));
    const __m128i z01 = _mm_unpacklo_epi32(oneWord(p0 + 2), oneWord(p1 + 2));
    const __m128i z23 = _mm_unpacklo_epi32(oneWord(p2 + 2), oneWord(p3 + 2));
    return {converted<T>(_mm_unpacklo_epi64(xy01, xy23)), converted<T>(_mm_unpackhi_epi64(xy01, xy23)),
            converted<T>(_mm_unpacklo_epi64(z01, z23))};
  }
  /// Four words that hold values of the type T.
  template <class T>
  [[gnu::target("avx2")]] static __m256d converted(__m128i words) {
    if constexpr (std::is_same_v<T, omReal32>) {
      return _mm256_cvtps_pd(_mm_castsi128_ps(words));
    } else if constexpr (std::is_same_v<T, omInt32>) {
      return _mm256_cvtepi32_pd(words);
    } else {  // Shifted down by 2^31 for the signed conversion, and back, which is exact.
      const __m128i signBits = _mm_set1_epi32(std::numeric_limits<omInt32>::min());
      return _mm256_add_pd(_mm256_cvtepi32_pd(_mm_xor_si128(words, signBits)), _mm256_set1_pd(0x1p31));
    }
  }
  [[gnu::target("avx2")]] static __m128i twoWords(const void* at) {
    return _mm_loadl_epi64(static_cast<const __m128i*>(at));
  }
  [[gnu::target("avx2")]] static __m128i oneWord(const void* at) {
    return _mm_castps_si128(_mm_load_ss(static_cast<const float*>(at)));
  }

  [[gnu::target("avx2")]] static Corners minus(const Corners& p, const Corners& q) {
    return {_mm256_sub_pd(p.x, q.x), _mm256_sub_pd(p.y, q.y), _mm256_sub_pd(p.z, q.z)};
  }
  [[gnu::target("avx2")]] static __m256d determinant(__m256d p, __m256d q, __m256d r, __m256d s) {
    return _mm256_sub_pd(_mm256_mul_pd(p, s), _mm256_mul_pd(q, r));
  }
  [[gnu::target("avx2")]] static Corners cross(const Corners& p, const Corners& q) {
    return {determinant(p.y, p.z, q.y, q.z), determinant(p.z, p.x, q.z, q.x), determinant(p.x, p.y, q.x, q.y)};
  }
  /// normalPair() of four triangles.
  [[gnu::target("avx2")]] static Corners normals(const Quad& quad) {
    return cross(minus(quad.b, quad.a), minus(quad.c, quad.a));
  }
  [[gnu::target("avx2")]] static __m256d dot(const Corners& p, const Corners& q) {
    const __m256d xy = _mm256_add_pd(_mm256_mul_pd(p.x, q.x), _mm256_mul_pd(p.y, q.y));
    return _mm256_add_pd(xy, _mm256_mul_pd(p.z, q.z));
  }
};

}  // namespace ormix::detail
