#pragma once

#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXMath/Shape/RingIntrinsics.h>

#include <limits>
#include <type_traits>

namespace ormix::detail {

/// Four coordinates of any of the four types as a vector of omReal64, and back with the rounding of round().
class CoordinateVectorsAvx2 {
 protected:
  [[gnu::target("avx2")]] static __m128i loadWords(const void* at) {
    return _mm_loadu_si128(static_cast<const __m128i*>(at));
  }
  [[gnu::target("avx2")]] static __m128i signBits() { return _mm_set1_epi32(std::numeric_limits<omInt32>::min()); }

  /// Four words that hold values of the type T.
  template <class T>
  [[gnu::target("avx2")]] static __m256d converted(__m128i words) {
    if constexpr (std::is_same_v<T, omReal32>)
      return _mm256_cvtps_pd(_mm_castsi128_ps(words));
    else if constexpr (std::is_same_v<T, omInt32>)
      return _mm256_cvtepi32_pd(words);
    else  // Shifted down by 2^31 for the signed conversion, and back, which is exact.
      return _mm256_add_pd(_mm256_cvtepi32_pd(_mm_xor_si128(words, signBits())), _mm256_set1_pd(0x1p31));
  }
  [[gnu::target("avx2")]] static __m256d load(const omReal64* at) { return _mm256_loadu_pd(at); }
  template <class T>
  [[gnu::target("avx2")]] static __m256d load(const T* at) {
    return converted<T>(loadWords(at));
  }

  /// What round() truncates.
  [[gnu::target("avx2")]] static __m256d beforeTruncation(__m256d values) {
    const __m256d signedHalf = _mm256_or_pd(_mm256_and_pd(values, _mm256_set1_pd(-0.0)), _mm256_set1_pd(s_belowHalf));
    return _mm256_add_pd(values, signedHalf);
  }

  /// Sums of zero times each real that was stored: NaN once one of them is not finite.
  struct Watch {
    __m256d sum64;
    __m128 sum32;
  };
  [[gnu::target("avx2")]] static Watch watching() { return {_mm256_setzero_pd(), _mm_setzero_ps()}; }
  [[gnu::target("avx2")]] static bool areFinite(const Watch& watch) {
    return _mm256_movemask_pd(_mm256_cmp_pd(watch.sum64, watch.sum64, _CMP_UNORD_Q)) == 0 &&
           _mm_movemask_ps(_mm_cmp_ps(watch.sum32, watch.sum32, _CMP_UNORD_Q)) == 0;
  }

  template <bool isWatched>
  [[gnu::target("avx2")]] static void store(omReal64* at, __m256d values, Watch& watch) {
    _mm256_storeu_pd(at, values);
    if constexpr (isWatched) watch.sum64 = _mm256_add_pd(watch.sum64, _mm256_mul_pd(values, _mm256_setzero_pd()));
  }
  template <bool isWatched>
  [[gnu::target("avx2")]] static void store(omReal32* at, __m256d values, Watch& watch) {
    const __m128 stored = _mm256_cvtpd_ps(values);
    _mm_storeu_ps(at, stored);
    if constexpr (isWatched) watch.sum32 = _mm_add_ps(watch.sum32, _mm_mul_ps(stored, _mm_setzero_ps()));
  }
  template <bool>
  [[gnu::target("avx2")]] static void store(omInt32* at, __m256d values, Watch&) {
    // Below the range the conversion answers the lowest integer by itself.
    const __m256d bounded = _mm256_min_pd(beforeTruncation(values), _mm256_set1_pd(0x7FFFFFFF));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(at), _mm256_cvttpd_epi32(bounded));
  }
  template <bool>
  [[gnu::target("avx2")]] static void store(omUInt32* at, __m256d values, Watch&) {
    const __m256d positive = _mm256_max_pd(beforeTruncation(values), _mm256_setzero_pd());
    const __m256d bounded = _mm256_min_pd(_mm256_floor_pd(positive), _mm256_set1_pd(0xFFFFFFFF));
    const __m128i shifted = _mm256_cvttpd_epi32(_mm256_sub_pd(bounded, _mm256_set1_pd(0x1p31)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(at), _mm_xor_si128(shifted, signBits()));
  }
};

}  // namespace ormix::detail
