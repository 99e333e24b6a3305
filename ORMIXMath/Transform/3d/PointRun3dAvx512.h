#pragma once

#include <ORMIXMath/Transform/2d/PointRun2dPortable.h>
#include <ORMIXMath/Transform/3d/PointRun3dPortable.h>
#include <ORMIXMath/Transform/CoordinateVectorsAvx512.h>

namespace ormix::detail {

/// PointRun3dPortable on eight points at once, with the same bits.
class PointRun3dAvx512 : private CoordinateVectorsAvx512 {
 public:
  /// Maps eight points at a time; answers how many.
  template <class T>
  [[gnu::target("avx512f")]] static std::size_t apply(const AffineCoefficients3d& c, const T* xyz, T* out,
                                                      std::size_t nbPoints) {
    const Row rowX = rowOf(c.xx, c.xy, c.xz, c.tx);
    const Row rowY = rowOf(c.yx, c.yy, c.yz, c.ty);
    const Row rowZ = rowOf(c.zx, c.zy, c.zz, c.tz);
    const std::size_t nbMapped = nbPoints - nbPoints % 8;
    for (const T* const end = xyz + 3 * nbMapped; xyz != end; xyz += 24, out += 24) {
      prefetchLines<2048, 24 * sizeof(T)>(xyz);
      const Points points = loadPoints(xyz);
      storePoints(out, {value(rowX, points), value(rowY, points), value(rowZ, points)});
    }
    return nbMapped;
  }

  template <class T>
  [[gnu::target("avx512f")]] static std::size_t apply(const HomographyCoefficients3d& h, const T* xyz, T* out,
                                                      std::size_t nbPoints) {
    const Row rowX = rowOf(h[0], h[1], h[2], h[3]);
    const Row rowY = rowOf(h[4], h[5], h[6], h[7]);
    const Row rowZ = rowOf(h[8], h[9], h[10], h[11]);
    const Row rowW = rowOf(h[12], h[13], h[14], h[15]);
    const std::size_t nbMapped = nbPoints - nbPoints % 8;
    for (const T* const end = xyz + 3 * nbMapped; xyz != end; xyz += 24, out += 24) {
      prefetchLines<2048, 24 * sizeof(T)>(xyz);
      const Points points = loadPoints(xyz);
      const __m512d w = value(rowW, points);
      storePoints(out, {_mm512_div_pd(value(rowX, points), w), _mm512_div_pd(value(rowY, points), w),
                        _mm512_div_pd(value(rowZ, points), w)});
    }
    return nbMapped;
  }

 private:
  struct Points {
    __m512d x;
    __m512d y;
    __m512d z;
  };
  /// A row of the map in every lane.
  struct Row {
    __m512d x;
    __m512d y;
    __m512d z;
    __m512d shift;
  };

  [[gnu::target("avx512f")]] static Row rowOf(omReal64 x, omReal64 y, omReal64 z, omReal64 shift) {
    return {_mm512_set1_pd(x), _mm512_set1_pd(y), _mm512_set1_pd(z), _mm512_set1_pd(shift)};
  }
  [[gnu::target("avx512f")]] static __m512d value(const Row& row, const Points& points) {
    const __m512d xy = _mm512_add_pd(_mm512_mul_pd(row.x, points.x), _mm512_mul_pd(row.y, points.y));
    return _mm512_add_pd(_mm512_add_pd(xy, _mm512_mul_pd(row.z, points.z)), row.shift);
  }

  [[gnu::target("avx512f")]] static __m512i lanes(int a, int b, int c, int d, int e, int f, int g, int h) {
    return _mm512_setr_epi64(a, b, c, d, e, f, g, h);
  }
  /// Lanes of two vectors, those of the second counted from 8, then lanes of that and a third.
  [[gnu::target("avx512f")]] static __m512d picked(__m512d a, __m512i fromAB, __m512d b, __m512i withC, __m512d c) {
    return _mm512_permutex2var_pd(_mm512_permutex2var_pd(a, fromAB, b), withC, c);
  }

  /// Eight points as one vector a coordinate.
  template <class T>
  [[gnu::target("avx512f")]] static Points loadPoints(const T* xyz) {
    const __m512d a = load(xyz);
    const __m512d b = load(xyz + 8);
    const __m512d c = load(xyz + 16);
    return {picked(a, lanes(0, 3, 6, 9, 12, 15, 0, 0), b, lanes(0, 1, 2, 3, 4, 5, 10, 13), c),
            picked(a, lanes(1, 4, 7, 10, 13, 0, 0, 0), b, lanes(0, 1, 2, 3, 4, 8, 11, 14), c),
            picked(a, lanes(2, 5, 8, 11, 14, 0, 0, 0), b, lanes(0, 1, 2, 3, 4, 9, 12, 15), c)};
  }
  /// The reverse.
  template <class T>
  [[gnu::target("avx512f")]] static void storePoints(T* xyz, const Points& p) {
    store(xyz, picked(p.x, lanes(0, 8, 0, 1, 9, 0, 2, 10), p.y, lanes(0, 1, 8, 3, 4, 9, 6, 7), p.z));
    store(xyz + 8, picked(p.x, lanes(0, 3, 11, 0, 4, 12, 0, 5), p.y, lanes(10, 1, 2, 11, 4, 5, 12, 7), p.z));
    store(xyz + 16, picked(p.x, lanes(13, 0, 6, 14, 0, 7, 15, 0), p.y, lanes(0, 13, 2, 3, 14, 5, 6, 15), p.z));
  }
};

}  // namespace ormix::detail
