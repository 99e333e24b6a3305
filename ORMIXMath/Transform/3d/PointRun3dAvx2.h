#pragma once

#include <ORMIXMath/Transform/2d/PointRun2dPortable.h>
#include <ORMIXMath/Transform/3d/PointRun3dPortable.h>
#include <ORMIXMath/Transform/CoordinateVectorsAvx2.h>

namespace ormix::detail {

/// PointRun3dPortable on four points at once, with the same bits.
class PointRun3dAvx2 : private CoordinateVectorsAvx2 {
 public:
  /// Maps four points at a time; isWatched makes it tell whether their images are finite.
  template <bool isWatched = false, class T>
  [[gnu::target("avx2")]] static MappedPoints apply(const AffineCoefficients3d& c, const T* xyz, T* out,
                                                    std::size_t nbPoints) {
    const Row rowX = rowOf(c.xx, c.xy, c.xz, c.tx);
    const Row rowY = rowOf(c.yx, c.yy, c.yz, c.ty);
    const Row rowZ = rowOf(c.zx, c.zy, c.zz, c.tz);
    const std::size_t nbMapped = nbPoints - nbPoints % 4;
    Watch watch = watching();
    for (const T* const end = xyz + 3 * nbMapped; xyz != end; xyz += 12, out += 12) {
      const Points points = loadPoints(xyz);
      storePoints<isWatched>(out, {value(rowX, points), value(rowY, points), value(rowZ, points)}, watch);
    }
    return {nbMapped, areFinite(watch)};
  }

  template <bool isWatched = false, class T>
  [[gnu::target("avx2")]] static MappedPoints apply(const HomographyCoefficients3d& h, const T* xyz, T* out,
                                                    std::size_t nbPoints) {
    const Row rowX = rowOf(h[0], h[1], h[2], h[3]);
    const Row rowY = rowOf(h[4], h[5], h[6], h[7]);
    const Row rowZ = rowOf(h[8], h[9], h[10], h[11]);
    const Row rowW = rowOf(h[12], h[13], h[14], h[15]);
    const std::size_t nbMapped = nbPoints - nbPoints % 4;
    Watch watch = watching();
    for (const T* const end = xyz + 3 * nbMapped; xyz != end; xyz += 12, out += 12) {
      const Points points = loadPoints(xyz);
      const __m256d w = value(rowW, points);
      storePoints<isWatched>(out,
                             {_mm256_div_pd(value(rowX, points), w), _mm256_div_pd(value(rowY, points), w),
                              _mm256_div_pd(value(rowZ, points), w)},
                             watch);
    }
    return {nbMapped, areFinite(watch)};
  }

 private:
  struct Points {
    __m256d x;
    __m256d y;
    __m256d z;
  };
  /// A row of the map in every lane.
  struct Row {
    __m256d x;
    __m256d y;
    __m256d z;
    __m256d shift;
  };

  [[gnu::target("avx2")]] static Row rowOf(omReal64 x, omReal64 y, omReal64 z, omReal64 shift) {
    return {_mm256_set1_pd(x), _mm256_set1_pd(y), _mm256_set1_pd(z), _mm256_set1_pd(shift)};
  }
  [[gnu::target("avx2")]] static __m256d value(const Row& row, const Points& points) {
    const __m256d xy = _mm256_add_pd(_mm256_mul_pd(row.x, points.x), _mm256_mul_pd(row.y, points.y));
    return _mm256_add_pd(_mm256_add_pd(xy, _mm256_mul_pd(row.z, points.z)), row.shift);
  }

  /// x0 y0 z0 x1 | y1 z1 x2 y2 | z2 x3 y3 z3 as one vector a coordinate.
  template <class T>
  [[gnu::target("avx2")]] static Points loadPoints(const T* xyz) {
    const __m256d first = load(xyz);
    const __m256d second = load(xyz + 4);
    const __m256d third = load(xyz + 8);
    const __m256d xy = _mm256_blend_pd(first, second, 0b1100);      // x0 y0 x2 y2
    const __m256d zx = _mm256_permute2f128_pd(first, third, 0x21);  // z0 x1 z2 x3
    const __m256d yz = _mm256_blend_pd(second, third, 0b1100);      // y1 z1 y3 z3
    return {_mm256_shuffle_pd(xy, zx, 0b1010), _mm256_shuffle_pd(xy, yz, 0b0101), _mm256_shuffle_pd(zx, yz, 0b1010)};
  }
  /// The reverse.
  template <bool isWatched, class T>
  [[gnu::target("avx2")]] static void storePoints(T* xyz, const Points& points, Watch& watch) {
    const __m256d xy = _mm256_unpacklo_pd(points.x, points.y);
    const __m256d zx = _mm256_shuffle_pd(points.z, points.x, 0b1010);
    const __m256d yz = _mm256_unpackhi_pd(points.y, points.z);
    store<isWatched>(xyz, _mm256_permute2f128_pd(xy, zx, 0x20), watch);
    store<isWatched>(xyz + 4, _mm256_blend_pd(yz, xy, 0b1100), watch);
    store<isWatched>(xyz + 8, _mm256_permute2f128_pd(zx, yz, 0x31), watch);
  }
};

}  // namespace ormix::detail
