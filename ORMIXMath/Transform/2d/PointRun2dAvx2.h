#pragma once

#include <ORMIXMath/Transform/2d/PointRun2dPortable.h>
#include <ORMIXMath/Transform/CoordinateVectorsAvx2.h>

#include <algorithm>

namespace ormix::detail {

/// PointRun2dPortable on two points at once, the same operations on each.
class PointRun2dAvx2 : CoordinateVectorsAvx2 {
 public:
  /// Maps four points at a time; isWatched makes it tell whether their images are finite.
  template <bool isWatched = false, class T>
  [[gnu::target("avx2")]] static MappedPoints apply(const AffineCoefficients2d& c, const T* xy, T* images,
                                                    std::size_t nbPoints) {
    const __m256d same = pair(c.xx, c.yy);
    const __m256d other = pair(c.xy, c.yx);
    const __m256d shift = pair(c.tx, c.ty);
    const std::size_t nbMapped = nbPoints - nbPoints % 4;
    Watch watch = watching();
    for (const T* const end = xy + 2 * nbMapped; xy != end; xy += 8, images += 8) {
      store<isWatched>(images, linear(same, other, shift, load(xy)), watch);
      store<isWatched>(images + 4, linear(same, other, shift, load(xy + 4)), watch);
    }
    return {nbMapped, areFinite(watch)};
  }

  template <bool isWatched = false, class T>
  [[gnu::target("avx2")]] static MappedPoints apply(const HomographyCoefficients2d& h, const T* xy, T* images,
                                                    std::size_t nbPoints) {
    const __m256d same = pair(h[0], h[4]);
    const __m256d other = pair(h[1], h[3]);
    const __m256d shift = pair(h[2], h[5]);
    const __m256d denominator = pair(h[6], h[7]);
    const __m256d denominatorShift = _mm256_set1_pd(h[8]);
    const std::size_t nbMapped = nbPoints - nbPoints % 2;
    Watch watch = watching();
    for (const T* const end = xy + 2 * nbMapped; xy != end; xy += 4, images += 4) {
      const __m256d point = load(xy);
      const __m256d products = _mm256_mul_pd(denominator, point);
      const __m256d w = _mm256_add_pd(_mm256_add_pd(products, swapped(products)), denominatorShift);
      store<isWatched>(images, _mm256_div_pd(linear(same, other, shift, point), w), watch);
    }
    return {nbMapped, areFinite(watch)};
  }

  /// Raises `largest` to the largest magnitudeWord(); answers how many values at the end are left. The four quarters
  /// are read side by side, as the processor fetches several streams faster than one, and each from its last value to
  /// its first.
  template <class T>
  [[gnu::target("avx2")]] static std::size_t raise(const T* values, std::size_t nbValues, omUInt32& largest) {
    constexpr std::size_t nbInVector = sizeof(__m256i) / sizeof(T);
    __m256i words[4] = {_mm256_setzero_si256(), _mm256_setzero_si256(), _mm256_setzero_si256(), _mm256_setzero_si256()};
    const std::size_t quarter = nbValues / (4 * nbInVector) * nbInVector;
    for (std::size_t at = quarter; at > 0;) {
      at -= nbInVector;
      for (std::size_t q = 0; q < 4; ++q) words[q] = _mm256_max_epu32(words[q], magnitudes(values + q * quarter + at));
    }
    const __m256i joined = _mm256_max_epu32(_mm256_max_epu32(words[0], words[1]), _mm256_max_epu32(words[2], words[3]));
    omUInt32 each[8];
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(each), joined);
    largest = std::max(largest, *std::max_element(each, each + 8));
    return nbValues - 4 * quarter;
  }

 private:
  [[gnu::target("avx2")]] static __m256d pair(omReal64 x, omReal64 y) { return _mm256_setr_pd(x, y, x, y); }
  [[gnu::target("avx2")]] static __m256d swapped(__m256d points) { return _mm256_permute_pd(points, 0x5); }

  /// Both rows of the map at once: the coordinate's own factor, the other coordinate's, and the shift.
  [[gnu::target("avx2")]] static __m256d linear(__m256d same, __m256d other, __m256d shift, __m256d points) {
    return _mm256_add_pd(_mm256_add_pd(_mm256_mul_pd(same, points), _mm256_mul_pd(other, swapped(points))), shift);
  }

  /// The magnitudeWord() of each value; of omReal64 in the upper half of its lane, zero in the lower.
  template <class T>
  [[gnu::target("avx2")]] static __m256i magnitudes(const T* values) {
    const __m256i bits = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(values));
    if constexpr (std::is_same_v<T, omUInt32>)
      return bits;
    else if constexpr (std::is_same_v<T, omInt32>)
      return _mm256_abs_epi32(bits);
    else if constexpr (std::is_same_v<T, omReal32>)
      return _mm256_and_si256(bits, _mm256_set1_epi32(0x7FFFFFFF));
    else
      return _mm256_and_si256(bits, _mm256_set1_epi64x(0x7FFFFFFF00000000));
  }
};

}  // namespace ormix::detail
