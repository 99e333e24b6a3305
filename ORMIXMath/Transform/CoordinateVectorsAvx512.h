#pragma once

#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXMath/Shape/RingIntrinsics.h>

namespace ormix::detail {

/// Eight coordinates of any of the four types as a vector of omReal64, and back with the rounding of round().
class CoordinateVectorsAvx512 {
 protected:
  [[gnu::target("avx512f")]] static __m256i loadWords(const void* at) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(at));
  }
  [[gnu::target("avx512f")]] static __m512d load(const omReal64* at) { return _mm512_loadu_pd(at); }
  [[gnu::target("avx512f")]] static __m512d load(const omReal32* at) { return _mm512_cvtps_pd(_mm256_loadu_ps(at)); }
  [[gnu::target("avx512f")]] static __m512d load(const omInt32* at) { return _mm512_cvtepi32_pd(loadWords(at)); }
  [[gnu::target("avx512f")]] static __m512d load(const omUInt32* at) { return _mm512_cvtepu32_pd(loadWords(at)); }

  /// What round() truncates.
  [[gnu::target("avx512f")]] static __m512d beforeTruncation(__m512d values) {
    constexpr int andOr = 0xEA;  // (a & b) | c
    const __m512i signedHalf =
        _mm512_ternarylogic_epi64(_mm512_castpd_si512(values), _mm512_castpd_si512(_mm512_set1_pd(-0.0)),
                                  _mm512_castpd_si512(_mm512_set1_pd(s_belowHalf)), andOr);
    return _mm512_add_pd(values, _mm512_castsi512_pd(signedHalf));
  }

  [[gnu::target("avx512f")]] static void storeWords(void* at, __m256i words) {
    _mm256_storeu_si256(static_cast<__m256i*>(at), words);
  }
  [[gnu::target("avx512f")]] static void store(omReal64* at, __m512d values) { _mm512_storeu_pd(at, values); }
  [[gnu::target("avx512f")]] static void store(omReal32* at, __m512d values) {
    _mm256_storeu_ps(at, _mm512_cvtpd_ps(values));
  }
  [[gnu::target("avx512f")]] static void store(omInt32* at, __m512d values) {
    // Below the range the conversion answers the lowest integer by itself.
    storeWords(at, _mm512_cvttpd_epi32(_mm512_min_pd(beforeTruncation(values), _mm512_set1_pd(0x7FFFFFFF))));
  }
  [[gnu::target("avx512f")]] static void store(omUInt32* at, __m512d values) {
    // Beyond the range the conversion answers the highest integer by itself.
    storeWords(at, _mm512_cvttpd_epu32(_mm512_max_pd(beforeTruncation(values), _mm512_setzero_pd())));
  }
};

}  // namespace ormix::detail
