#pragma once

#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXMath/Shape/RingIntrinsics.h>

#include <type_traits>

namespace ormix::detail {

/// Eight coordinates of any of the four types as a vector of omReal64, and back with the rounding of round().
class CoordinateVectorsAvx512 {
 protected:
  [[gnu::target("avx512f")]] static __m256i loadWords(const void* at) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(at));
  }
  /// Eight words that hold values of the type T.
  template <class T>
  [[gnu::target("avx512f")]] static __m512d converted(__m256i words) {
    if constexpr (std::is_same_v<T, omReal32>)
      return _mm512_cvtps_pd(_mm256_castsi256_ps(words));
    else if constexpr (std::is_same_v<T, omInt32>)
      return _mm512_cvtepi32_pd(words);
    else
      return _mm512_cvtepu32_pd(words);
  }
  [[gnu::target("avx512f")]] static __m512d load(const omReal64* at) { return _mm512_loadu_pd(at); }
  template <class T>
  [[gnu::target("avx512f")]] static __m512d load(const T* at) {
    return converted<T>(loadWords(at));
  }

  /// What round() truncates.
  [[gnu::target("avx512f")]] static __m512d beforeTruncation(__m512d values) {
    constexpr int andOr = 0xEA;  // (a & b) | c
    const __m512i signedHalf =
        _mm512_ternarylogic_epi64(_mm512_castpd_si512(values), _mm512_castpd_si512(_mm512_set1_pd(-0.0)),
                                  _mm512_castpd_si512(_mm512_set1_pd(s_belowHalf)), andOr);
    return _mm512_add_pd(values, _mm512_castsi512_pd(signedHalf));
  }

  /// The reverse of converted().
  template <class T>
  [[gnu::target("avx512f")]] static __m256i rounded(__m512d values) {
    if constexpr (std::is_same_v<T, omReal32>)
      return _mm256_castps_si256(_mm512_cvtpd_ps(values));
    else if constexpr (std::is_same_v<T, omInt32>)  // Below the range the conversion answers the lowest integer itself,
      return _mm512_cvttpd_epi32(_mm512_min_pd(beforeTruncation(values), _mm512_set1_pd(0x7FFFFFFF)));
    else  // beyond it the highest.
      return _mm512_cvttpd_epu32(_mm512_max_pd(beforeTruncation(values), _mm512_setzero_pd()));
  }

  /// Sums of zero times each real that was stored: NaN once one of them is not finite.
  struct Watch {
    __m512d sum64;
    __m256 sum32;
  };
  [[gnu::target("avx512f")]] static Watch watching() { return {_mm512_setzero_pd(), _mm256_setzero_ps()}; }
  [[gnu::target("avx512f")]] static bool areFinite(const Watch& watch) {
    return _mm512_cmp_pd_mask(watch.sum64, watch.sum64, _CMP_UNORD_Q) == 0 &&
           _mm256_movemask_ps(_mm256_cmp_ps(watch.sum32, watch.sum32, _CMP_UNORD_Q)) == 0;
  }

  template <bool isWatched>
  [[gnu::target("avx512f")]] static void store(omReal64* at, __m512d values, Watch& watch) {
    _mm512_storeu_pd(at, values);
    if constexpr (isWatched) watch.sum64 = _mm512_fmadd_pd(values, _mm512_setzero_pd(), watch.sum64);
  }
  template <bool isWatched, class T>
  [[gnu::target("avx512f")]] static void store(T* at, __m512d values, Watch& watch) {
    storeRounded<isWatched>(at, rounded<T>(values), watch);
  }
  /// Eight words that hold values of the type T.
  template <bool isWatched, class T>
  [[gnu::target("avx512f")]] static void storeRounded(T* at, __m256i words, Watch& watch) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(at), words);
    if constexpr (isWatched && std::is_same_v<T, omReal32>)
      watch.sum32 = _mm256_add_ps(watch.sum32, _mm256_mul_ps(_mm256_castsi256_ps(words), _mm256_setzero_ps()));
  }
};

}  // namespace ormix::detail
