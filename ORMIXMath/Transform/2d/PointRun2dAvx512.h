#pragma once

#include <ORMIXMath/Transform/2d/PointRun2dPortable.h>
#include <ORMIXMath/Transform/CoordinateVectorsAvx512.h>

#include <algorithm>

namespace ormix::detail {

/// PointRun2dPortable on four points at once, with the same bits.
class PointRun2dAvx512 : CoordinateVectorsAvx512 {
 public:
  /// Maps eight points at a time; isWatched makes it tell whether their images are finite.
  template <bool isWatched = false, class T>
  [[gnu::target("avx512f")]] static MappedPoints apply(const AffineCoefficients2d& c, const T* xy, T* images,
                                                       std::size_t nbPoints) {
    const __m512d same = pair(c.xx, c.yy);
    const __m512d other = pair(c.xy, c.yx);
    const __m512d shift = pair(c.tx, c.ty);
    const std::size_t nbMapped = nbPoints - nbPoints % 8;
    Watch watch = watching();
    for (const T* const end = xy + 2 * nbMapped; xy != end; xy += 16, images += 16) {
      store<isWatched>(images, linear(same, other, shift, load(xy)), watch);
      store<isWatched>(images + 8, linear(same, other, shift, load(xy + 8)), watch);
    }
    return {nbMapped, areFinite(watch)};
  }

  template <bool isWatched = false, class T>
  [[gnu::target("avx512f")]] static MappedPoints apply(const HomographyCoefficients2d& h, const T* xy, T* images,
                                                       std::size_t nbPoints) {
    // The unit for divisions of these processors is as fast as the multipliers that could do its work.
    return __builtin_cpu_is("amd") ? applyDividing<isWatched>(h, xy, images, nbPoints)
                                   : applyMultiplying<isWatched>(h, xy, images, nbPoints);
  }

  /// A division for each coordinate.
  template <bool isWatched = false, class T>
  [[gnu::target("avx512f")]] static MappedPoints applyDividing(const HomographyCoefficients2d& h, const T* xy,
                                                               T* images, std::size_t nbPoints) {
    const __m512d same = pair(h[0], h[4]);
    const __m512d other = pair(h[1], h[3]);
    const __m512d shift = pair(h[2], h[5]);
    const __m512d denominator = pair(h[6], h[7]);
    const __m512d denominatorShift = _mm512_set1_pd(h[8]);
    const std::size_t nbMapped = nbPoints - nbPoints % 4;
    Watch watch = watching();
    for (const T* const end = xy + 2 * nbMapped; xy != end; xy += 8, images += 8) {
      const __m512d point = load(xy);
      const __m512d products = _mm512_mul_pd(denominator, point);
      const __m512d w = _mm512_add_pd(_mm512_add_pd(products, swapped(products)), denominatorShift);
      store<isWatched>(images, _mm512_div_pd(linear(same, other, shift, point), w), watch);
    }
    return {nbMapped, areFinite(watch)};
  }

  /// Half as many divisions.
  template <bool isWatched = false, class T>
  [[gnu::target("avx512f")]] static MappedPoints applyMultiplying(const HomographyCoefficients2d& h, const T* xy,
                                                                  T* images, std::size_t nbPoints) {
    const std::size_t nbMapped = nbPoints - nbPoints % 8;
    Watch watch = watching();
    for (const T* const end = xy + 2 * nbMapped; xy != end; xy += 16, images += 16) {
      const __m512d first = load(xy);
      const __m512d second = load(xy + 8);
      // The points in the order 0, 4, 1, 5, ... that the same two operations undo.
      const __m512d x = _mm512_unpacklo_pd(first, second);
      const __m512d y = _mm512_unpackhi_pd(first, second);
      const Quotients quotients =
          divided(row(h[0], h[1], h[2], x, y), row(h[3], h[4], h[5], x, y), row(h[6], h[7], h[8], x, y));
      store<isWatched>(images, _mm512_unpacklo_pd(quotients.x, quotients.y), watch);
      store<isWatched>(images + 8, _mm512_unpackhi_pd(quotients.x, quotients.y), watch);
    }
    return {nbMapped, areFinite(watch)};
  }

  /// Raises `largest` to the largest magnitudeWord(); answers how many values at the end are left. The four quarters
  /// are read side by side, as the processor fetches several streams faster than one, and each from its last value to
  /// its first.
  template <class T>
  [[gnu::target("avx512f")]] static std::size_t raise(const T* values, std::size_t nbValues, omUInt32& largest) {
    constexpr std::size_t nbInVector = sizeof(__m512i) / sizeof(T);
    __m512i words[4] = {_mm512_setzero_si512(), _mm512_setzero_si512(), _mm512_setzero_si512(), _mm512_setzero_si512()};
    const std::size_t quarter = nbValues / (4 * nbInVector) * nbInVector;
    for (std::size_t at = quarter; at > 0;) {
      at -= nbInVector;
      for (std::size_t q = 0; q < 4; ++q) words[q] = _mm512_max_epu32(words[q], magnitudes(values + q * quarter + at));
    }
    const __m512i joined = _mm512_max_epu32(_mm512_max_epu32(words[0], words[1]), _mm512_max_epu32(words[2], words[3]));
    omUInt32 each[16];
    _mm512_storeu_si512(each, joined);
    largest = std::max(largest, *std::max_element(each, each + 16));
    return nbValues - 4 * quarter;
  }

 private:
  struct Quotients {
    __m512d x;
    __m512d y;
  };

  [[gnu::target("avx512f")]] static __m512d pair(omReal64 x, omReal64 y) {
    return _mm512_setr_pd(x, y, x, y, x, y, x, y);
  }

  [[gnu::target("avx512f")]] static __m512d swapped(__m512d points) { return _mm512_permute_pd(points, 0x55); }

  /// Both rows of an affine map at once: the coordinate's own factor, the other coordinate's, and the shift.
  [[gnu::target("avx512f")]] static __m512d linear(__m512d same, __m512d other, __m512d shift, __m512d points) {
    return _mm512_add_pd(_mm512_add_pd(_mm512_mul_pd(same, points), _mm512_mul_pd(other, swapped(points))), shift);
  }

  [[gnu::target("avx512f")]] static __m512d row(omReal64 a, omReal64 b, omReal64 c, __m512d x, __m512d y) {
    const __m512d sum = _mm512_add_pd(_mm512_mul_pd(_mm512_set1_pd(a), x), _mm512_mul_pd(_mm512_set1_pd(b), y));
    return _mm512_add_pd(sum, _mm512_set1_pd(c));
  }

  /// u / w and v / w. The unit for divisions is what bounds it: it gives the reciprocal, once, and the multipliers,
  /// which are idle meanwhile, both quotients.
  [[gnu::target("avx512f")]] static Quotients divided(__m512d u, __m512d v, __m512d w) {
    if (!areModerate(u, v, w)) return {_mm512_div_pd(u, w), _mm512_div_pd(v, w)};
    const __m512d inverse = _mm512_div_pd(_mm512_set1_pd(1), w);
    return {quotient(u, w, inverse), quotient(v, w, inverse)};
  }

  /// The quotient correctly rounded, so the one that division gives: a quotient off by less than a unit in the last
  /// place is made so by its exact remainder times the correctly rounded reciprocal (Markstein1990). The product with
  /// the reciprocal alone may be off by more, hence the first of the two steps.
  [[gnu::target("avx512f")]] static __m512d quotient(__m512d dividend, __m512d divisor, __m512d inverse) {
    const __m512d product = _mm512_mul_pd(dividend, inverse);
    const __m512d close = _mm512_fmadd_pd(_mm512_fnmadd_pd(product, divisor, dividend), inverse, product);
    return _mm512_fmadd_pd(_mm512_fnmadd_pd(close, divisor, dividend), inverse, close);
  }

  /// Whether no step of quotient() can leave the normal numbers, nor lose the sign of a zero: the magnitudes of u and v
  /// in [2^-511, 2^513), where the first two bits of the exponent differ, that of w in [2^-256, 2^256).
  [[gnu::target("avx512f")]] static bool areModerate(__m512d u, __m512d v, __m512d w) {
    const __m512i uBits = _mm512_castpd_si512(u);
    const __m512i vBits = _mm512_castpd_si512(v);
    const __m512i uDiffers = _mm512_xor_si512(uBits, _mm512_slli_epi64(uBits, 1));
    constexpr int andXor = 0x60;  // a & (b ^ c)
    const __m512i differ = _mm512_ternarylogic_epi64(uDiffers, vBits, _mm512_slli_epi64(vBits, 1), andXor);
    const __mmask8 dividends = _mm512_test_epi64_mask(differ, _mm512_set1_epi64(0x4000000000000000));
    // Twice the bits, which drops the sign.
    const __m512i wTwice = _mm512_slli_epi64(_mm512_castpd_si512(w), 1);
    constexpr long long lowest = (1023LL - 256) << 53;
    constexpr long long range = 512LL << 53;
    const __m512i above = _mm512_sub_epi64(wTwice, _mm512_set1_epi64(lowest));
    constexpr int allLanes = 0xFF;
    return _mm512_mask_cmp_epu64_mask(dividends, above, _mm512_set1_epi64(range), _MM_CMPINT_LT) == allLanes;
  }

  /// The magnitudeWord() of each value; of omReal64 in the upper half of its lane, zero in the lower.
  template <class T>
  [[gnu::target("avx512f")]] static __m512i magnitudes(const T* values) {
    const __m512i bits = _mm512_loadu_si512(values);
    if constexpr (std::is_same_v<T, omUInt32>)
      return bits;
    else if constexpr (std::is_same_v<T, omInt32>)
      return _mm512_abs_epi32(bits);
    else if constexpr (std::is_same_v<T, omReal32>)
      return _mm512_and_si512(bits, _mm512_set1_epi32(0x7FFFFFFF));
    else
      return _mm512_and_si512(bits, _mm512_set1_epi64(0x7FFFFFFF00000000));
  }
};

}  // namespace ormix::detail
