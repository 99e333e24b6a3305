#pragma once

#include <ORMIXMath/Transform/2d/PointRun2dPortable.h>
#include <ORMIXMath/Transform/3d/PointRun3dPortable.h>
#include <ORMIXMath/Transform/CoordinateVectorsAvx512.h>

namespace ormix::detail {

/// PointRun3dPortable on eight points at once, with the same bits.
class PointRun3dAvx512 : private CoordinateVectorsAvx512 {
 public:
  /// Maps eight points at a time; isWatched makes it tell whether their images are finite.
  template <bool isWatched = false, class T>
  [[gnu::target("avx512f")]] static MappedPoints apply(const AffineCoefficients3d& c, const T* xyz, T* out,
                                                       std::size_t nbPoints) {
    const Row rowX = rowOf(c.xx, c.xy, c.xz, c.tx);
    const Row rowY = rowOf(c.yx, c.yy, c.yz, c.ty);
    const Row rowZ = rowOf(c.zx, c.zy, c.zz, c.tz);
    const std::size_t nbMapped = nbPoints - nbPoints % 8;
    Watch watch = watching();
    for (const T* const end = xyz + 3 * nbMapped; xyz != end; xyz += 24, out += 24) {
      const Points points = loadPoints(xyz);
      storePoints<isWatched>(out, {value(rowX, points), value(rowY, points), value(rowZ, points)}, watch);
    }
    return {nbMapped, areFinite(watch)};
  }

  /// Of omReal64 four points at a time, whose coordinates stay where they are: each vector of images takes the points'
  /// coordinates from loads at three neighbouring addresses. Taking them apart and together again is what costs most,
  /// and four lanes cost half of eight; the registers that hold all coefficients are what this needs the processor for.
  template <bool isWatched = false>
  [[gnu::target("avx512f,avx512vl")]] static MappedPoints apply(const AffineCoefficients3d& c, const omReal64* xyz,
                                                                omReal64* out, std::size_t nbPoints) {
    const __m256d xs[3] = {turn(c.xx, c.yx, c.zx), turn(c.yx, c.zx, c.xx), turn(c.zx, c.xx, c.yx)};
    const __m256d ys[3] = {turn(c.xy, c.yy, c.zy), turn(c.yy, c.zy, c.xy), turn(c.zy, c.xy, c.yy)};
    const __m256d zs[3] = {turn(c.xz, c.yz, c.zz), turn(c.yz, c.zz, c.xz), turn(c.zz, c.xz, c.yz)};
    const __m256d shifts[3] = {turn(c.tx, c.ty, c.tz), turn(c.ty, c.tz, c.tx), turn(c.tz, c.tx, c.ty)};
    const std::size_t nbMapped = nbPoints - nbPoints % 4;
    Watch watch = watching();
    for (const omReal64* const end = xyz + 3 * nbMapped; xyz != end; xyz += 12, out += 12) {
      // x0 y0 z0 x1 | y1 z1 x2 y2 | z2 x3 y3 z3; in the lanes 0 and 3 of a load at x0 stand x0 and x1, and so on.
      const __m256d first = linear<0, 0, 0, 3>(xs[0], ys[0], zs[0], shifts[0], xyz);
      const __m256d second = linear<0, 0, 3, 3>(xs[1], ys[1], zs[1], shifts[1], xyz + 3);
      const __m256d third = linear<0, 3, 3, 3>(xs[2], ys[2], zs[2], shifts[2], xyz + 6);
      store<isWatched>(out, first, watch);
      store<isWatched>(out + 4, second, watch);
      store<isWatched>(out + 8, third, watch);
    }
    return {nbMapped, areFinite(watch)};
  }

  template <bool isWatched = false, class T>
  [[gnu::target("avx512f")]] static MappedPoints apply(const HomographyCoefficients3d& h, const T* xyz, T* out,
                                                       std::size_t nbPoints) {
    const Row rowX = rowOf(h[0], h[1], h[2], h[3]);
    const Row rowY = rowOf(h[4], h[5], h[6], h[7]);
    const Row rowZ = rowOf(h[8], h[9], h[10], h[11]);
    const Row rowW = rowOf(h[12], h[13], h[14], h[15]);
    const std::size_t nbMapped = nbPoints - nbPoints % 8;
    Watch watch = watching();
    for (const T* const end = xyz + 3 * nbMapped; xyz != end; xyz += 24, out += 24) {
      const Points points = loadPoints(xyz);
      const __m512d w = value(rowW, points);
      storePoints<isWatched>(out,
                             {_mm512_div_pd(value(rowX, points), w), _mm512_div_pd(value(rowY, points), w),
                              _mm512_div_pd(value(rowZ, points), w)},
                             watch);
    }
    return {nbMapped, areFinite(watch)};
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

  /// Three coefficients in turn.
  [[gnu::target("avx512f,avx512vl")]] static __m256d turn(omReal64 a, omReal64 b, omReal64 c) {
    return _mm256_setr_pd(a, b, c, a);
  }
  /// value() on the points whose x, y and z stand in the given lanes from `xyz`, from the next value and the one after.
  template <int a, int b, int c, int d>
  [[gnu::target("avx512f,avx512vl")]] static __m256d linear(__m256d xs, __m256d ys, __m256d zs, __m256d shifts,
                                                            const omReal64* xyz) {
    constexpr int order = a | b << 2 | c << 4 | d << 6;
    const __m256d x = _mm256_mul_pd(xs, _mm256_permute4x64_pd(_mm256_loadu_pd(xyz), order));
    const __m256d y = _mm256_mul_pd(ys, _mm256_permute4x64_pd(_mm256_loadu_pd(xyz + 1), order));
    const __m256d z = _mm256_mul_pd(zs, _mm256_permute4x64_pd(_mm256_loadu_pd(xyz + 2), order));
    return _mm256_add_pd(_mm256_add_pd(_mm256_add_pd(x, y), z), shifts);
  }

  using CoordinateVectorsAvx512::store;
  template <bool isWatched>
  [[gnu::target("avx512f,avx512vl")]] static void store(omReal64* at, __m256d values, Watch& watch) {
    _mm256_storeu_pd(at, values);
    if constexpr (isWatched)
      watch.sum64 = _mm512_fmadd_pd(_mm512_zextpd256_pd512(values), _mm512_setzero_pd(), watch.sum64);
  }

  [[gnu::target("avx512f")]] static __m512i lanes(int a, int b, int c, int d, int e, int f, int g, int h) {
    return _mm512_setr_epi64(a, b, c, d, e, f, g, h);
  }
  /// Lanes of two vectors, those of the second counted from 8, then lanes of that and a third.
  [[gnu::target("avx512f")]] static __m512d picked(__m512d a, __m512i fromAB, __m512d b, __m512i withC, __m512d c) {
    return _mm512_permutex2var_pd(_mm512_permutex2var_pd(a, fromAB, b), withC, c);
  }

  /// Eight points as one vector a coordinate.
  [[gnu::target("avx512f")]] static Points loadPoints(const omReal64* xyz) {
    const __m512d a = load(xyz);
    const __m512d b = load(xyz + 8);
    const __m512d c = load(xyz + 16);
    return {picked(a, lanes(0, 3, 6, 9, 12, 15, 0, 0), b, lanes(0, 1, 2, 3, 4, 5, 10, 13), c),
            picked(a, lanes(1, 4, 7, 10, 13, 0, 0, 0), b, lanes(0, 1, 2, 3, 4, 8, 11, 14), c),
            picked(a, lanes(2, 5, 8, 11, 14, 0, 0, 0), b, lanes(0, 1, 2, 3, 4, 9, 12, 15), c)};
  }
  /// The reverse.
  template <bool isWatched>
  [[gnu::target("avx512f")]] static void storePoints(omReal64* xyz, const Points& p, Watch& watch) {
    store<isWatched>(xyz, picked(p.x, lanes(0, 8, 0, 1, 9, 0, 2, 10), p.y, lanes(0, 1, 8, 3, 4, 9, 6, 7), p.z), watch);
    store<isWatched>(xyz + 8, picked(p.x, lanes(0, 3, 11, 0, 4, 12, 0, 5), p.y, lanes(10, 1, 2, 11, 4, 5, 12, 7), p.z),
                     watch);
    store<isWatched>(xyz + 16,
                     picked(p.x, lanes(13, 0, 6, 14, 0, 7, 15, 0), p.y, lanes(0, 13, 2, 3, 14, 5, 6, 15), p.z), watch);
  }

  // Of the other types before they are converted, at half the width. The places of a coordinate in the three vectors
  // are all different, so that it is blended from them and then put in order.
  template <class T>
  [[gnu::target("avx512f")]] static Points loadPoints(const T* xyz) {
    const __m256i a = loadWords(xyz);
    const __m256i b = loadWords(xyz + 8);
    const __m256i c = loadWords(xyz + 16);
    return {converted<T>(_mm256_permutevar8x32_epi32(blended<0b10010010, 0b00100100>(a, b, c), orderX())),
            converted<T>(_mm256_permutevar8x32_epi32(blended<0b00100100, 0b01001001>(a, b, c),
                                                     _mm256_setr_epi32(1, 4, 7, 2, 5, 0, 3, 6))),
            converted<T>(_mm256_permutevar8x32_epi32(blended<0b01001001, 0b10010010>(a, b, c), orderZ()))};
  }
  template <bool isWatched, class T>
  [[gnu::target("avx512f")]] static void storePoints(T* xyz, const Points& p, Watch& watch) {
    const __m256i x = _mm256_permutevar8x32_epi32(rounded<T>(p.x), orderX());
    const __m256i y = _mm256_permutevar8x32_epi32(rounded<T>(p.y), _mm256_setr_epi32(5, 0, 3, 6, 1, 4, 7, 2));
    const __m256i z = _mm256_permutevar8x32_epi32(rounded<T>(p.z), orderZ());
    storeRounded<isWatched>(xyz, blended<0b10010010, 0b00100100>(x, y, z), watch);
    storeRounded<isWatched>(xyz + 8, blended<0b00100100, 0b01001001>(x, y, z), watch);
    storeRounded<isWatched>(xyz + 16, blended<0b01001001, 0b10010010>(x, y, z), watch);
  }
  /// Lanes of the first but for the given ones of the second and of the third.
  template <int ofSecond, int ofThird>
  [[gnu::target("avx512f")]] static __m256i blended(__m256i first, __m256i second, __m256i third) {
    return _mm256_blend_epi32(_mm256_blend_epi32(first, second, ofSecond), third, ofThird);
  }
  /// The orders of x and of z are their own reverses.
  [[gnu::target("avx512f")]] static __m256i orderX() { return _mm256_setr_epi32(0, 3, 6, 1, 4, 7, 2, 5); }
  [[gnu::target("avx512f")]] static __m256i orderZ() { return _mm256_setr_epi32(2, 5, 0, 3, 6, 1, 4, 7); }
};

}  // namespace ormix::detail
