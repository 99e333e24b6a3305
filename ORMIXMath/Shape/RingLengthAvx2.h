#pragma once

#include <ORMIXMath/Shape/RingIntrinsics.h>
#include <ORMIXMath/Shape/RingLengthBlocks.h>

#include <limits>

namespace ormix::detail {

/// PortableBlocks with registers of four lanes: the same operations in every lane and so the same bits.
class Avx2Blocks {
 public:
  /// Adds edge l of each block to lane l; the lanes are overwritten.
  template <class T>
  [[gnu::target("avx2")]] static void add(const T* xy, std::size_t nbBlocks, RingLanes& result) {
    WideLanes low{_mm256_setzero_pd(), _mm256_setzero_pd()};
    WideLanes high = low;
    for (; nbBlocks > 0; --nbBlocks, xy += blockSize) {
      prefetchBlock(xy);
      addTo(low, edgeLengths(xy));
      addTo(high, edgeLengths(xy + nbLanes));
    }
    store(low, result.sum, result.error);
    store(high, result.sum + nbLanes / 2, result.error + nbLanes / 2);
  }

 private:
  /// Four lanes.
  struct WideLanes {
    __m256d sum;
    __m256d error;
  };

  /// Loads two vertices and converts them to omReal64: x0, y0, x1, y1.
  [[gnu::target("avx2")]] static __m256d loadPair(const omReal64* xy) { return _mm256_loadu_pd(xy); }
  [[gnu::target("avx2")]] static __m256d loadPair(const omReal32* xy) { return _mm256_cvtps_pd(_mm_loadu_ps(xy)); }
  [[gnu::target("avx2")]] static __m256d loadPair(const omInt32* xy) {
    return _mm256_cvtepi32_pd(_mm_loadu_si128(reinterpret_cast<const __m128i*>(xy)));
  }
  [[gnu::target("avx2")]] static __m256d loadPair(const omUInt32* xy) {
    // Shifted down by 2^31 to fit the signed conversion. Only differences of coordinates are used, which the shift does
    // not change.
    const __m128i bits = _mm_loadu_si128(reinterpret_cast<const __m128i*>(xy));
    return _mm256_cvtepi32_pd(_mm_xor_si128(bits, _mm_set1_epi32(std::numeric_limits<omInt32>::min())));
  }

  /// Lengths of four consecutive edges, in the order 0, 2, 1, 3 that results from the horizontal addition.
  template <class T>
  [[gnu::target("avx2")]] static __m256d edgeLengths(const T* xy) {
    const __m256d first = _mm256_sub_pd(loadPair(xy + 2), loadPair(xy));
    const __m256d second = _mm256_sub_pd(loadPair(xy + 6), loadPair(xy + 4));
    return _mm256_sqrt_pd(_mm256_hadd_pd(_mm256_mul_pd(first, first), _mm256_mul_pd(second, second)));
  }

  /// addCompensated() in every lane.
  [[gnu::target("avx2")]] static void addTo(WideLanes& lanes, __m256d value) {
    const __m256d total = _mm256_add_pd(lanes.sum, value);
    const __m256d added = _mm256_sub_pd(total, lanes.sum);
    const __m256d lost = _mm256_sub_pd(lanes.sum, _mm256_sub_pd(total, added));
    lanes.error = _mm256_add_pd(lanes.error, _mm256_add_pd(lost, _mm256_sub_pd(value, added)));
    lanes.sum = total;
  }

  /// Stores four lanes in the order of their edges.
  [[gnu::target("avx2")]] static void store(const WideLanes& lanes, omReal64* sum, omReal64* error) {
    constexpr int edgeOrder = 0xD8;  // permutes 0, 2, 1, 3 to 0, 1, 2, 3
    _mm256_storeu_pd(sum, _mm256_permute4x64_pd(lanes.sum, edgeOrder));
    _mm256_storeu_pd(error, _mm256_permute4x64_pd(lanes.error, edgeOrder));
  }
};

}  // namespace ormix::detail
