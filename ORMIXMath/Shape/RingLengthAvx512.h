#pragma once

#include <ORMIXMath/Shape/RingIntrinsics.h>
#include <ORMIXMath/Shape/RingLengthBlocks.h>

namespace ormix::detail {

/// PortableBlocks with registers of eight lanes. Square root instructions limit the throughput, so two of five roots
/// are computed by multiplications instead, which run in parallel: all five take the time of three.
class Avx512Blocks {
 public:
  /// Adds edge l of each block to lane l; the lanes are overwritten.
  template <class T>
  [[gnu::target("avx512f")]] static void add(const T* xy, std::size_t nbBlocks, RingLanes& result) {
    WideLanes lanes{_mm512_setzero_pd(), _mm512_setzero_pd()};
    for (; nbBlocks >= 5; nbBlocks -= 5, xy += 5 * blockSize) {
      addPair(lanes, xy);
      addPair(lanes, xy + 2 * blockSize);
      addOne(lanes, xy + 4 * blockSize);
    }
    for (; nbBlocks >= 2; nbBlocks -= 2, xy += 2 * blockSize) addPair(lanes, xy);
    if (nbBlocks == 1) addOne(lanes, xy);
    store(lanes.sum, result.sum);
    store(lanes.error, result.error);
  }

 private:
  /// Eight lanes.
  struct WideLanes {
    __m512d sum;
    __m512d error;
  };

  /// Adds a block, by square root instructions.
  template <class T>
  [[gnu::target("avx512f")]] static void addOne(WideLanes& lanes, const T* xy) {
    prefetchBlock(xy);
    addTo(lanes, _mm512_sqrt_pd(squaredLengths(xy)));
  }

  /// Adds two blocks, the second by multiplications.
  template <class T>
  [[gnu::target("avx512f")]] static void addPair(WideLanes& lanes, const T* xy) {
    addOne(lanes, xy);
    prefetchBlock(xy + blockSize);
    addTo(lanes, multipliedRoots(squaredLengths(xy + blockSize)));
  }

  /// Loads four vertices and converts them to omReal64: x0, y0, x1, y1, ...
  [[gnu::target("avx512f")]] static __m512d loadFour(const omReal64* xy) { return _mm512_loadu_pd(xy); }
  [[gnu::target("avx512f")]] static __m512d loadFour(const omReal32* xy) {
    return _mm512_cvtps_pd(_mm256_loadu_ps(xy));
  }
  [[gnu::target("avx512f")]] static __m512d loadFour(const omInt32* xy) {
    return _mm512_cvtepi32_pd(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(xy)));
  }
  [[gnu::target("avx512f")]] static __m512d loadFour(const omUInt32* xy) {
    return _mm512_cvtepu32_pd(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(xy)));
  }

  /// Squared lengths of eight consecutive edges, in the order 0, 4, 1, 5, 2, 6, 3, 7 that results from the unpacking.
  template <class T>
  [[gnu::target("avx512f")]] static __m512d squaredLengths(const T* xy) {
    const __m512d first = _mm512_sub_pd(loadFour(xy + 2), loadFour(xy));
    const __m512d second = _mm512_sub_pd(loadFour(xy + 10), loadFour(xy + 8));
    const __m512d firstSquares = _mm512_mul_pd(first, first);
    const __m512d secondSquares = _mm512_mul_pd(second, second);
    return _mm512_add_pd(_mm512_unpacklo_pd(firstSquares, secondSquares),
                         _mm512_unpackhi_pd(firstSquares, secondSquares));
  }

  /// Correctly rounded square roots by multiplications: an approximate reciprocal square root of 14 bits is refined to
  /// more than double precision and rounded. Where areNearestRoots() does not confirm all roots, they are computed by
  /// the square root instruction.
  [[gnu::target("avx512f")]] static __m512d multipliedRoots(__m512d squares) {
    const __m512d half = _mm512_set1_pd(0.5);
    const __m512d estimate = _mm512_rsqrt14_pd(squares);
    const __m512d root = _mm512_mul_pd(squares, estimate);
    const __m512d halfInverse = _mm512_mul_pd(half, estimate);
    // With r = (1 - root * estimate) / 2 the exact root is root * (1 - 2r)^(-1/2) = root * (1 + r + 3/2 r² + ...).
    const __m512d r = _mm512_fnmadd_pd(root, halfInverse, half);
    const __m512d series = _mm512_mul_pd(r, _mm512_fmadd_pd(_mm512_set1_pd(1.5), r, _mm512_set1_pd(1)));
    const __m512d close = _mm512_fmadd_pd(root, series, root);
    const __m512d slope = _mm512_fmadd_pd(halfInverse, r, halfInverse);
    // The last Newton step (Markstein1990) increases the precision from 40 bits to more than 65 before rounding.
    const __m512d rounded = _mm512_fmadd_pd(_mm512_fnmadd_pd(close, close, squares), slope, close);
    return areNearestRoots(rounded, squares) ? rounded : _mm512_sqrt_pd(squares);
  }

  /// Whether each root is certainly the nearest number to the exact square root: by Tuckerman's test (Markstein1990),
  /// where root * below < square <= root * above for the neighbours below and above of the root. The signs of the
  /// differences are exact, as fused multiply-add rounds once. False also when a square is zero, infinite or NaN, since
  /// the root is then NaN.
  [[gnu::target("avx512f")]] static bool areNearestRoots(__m512d roots, __m512d squares) {
    constexpr int allLanes = 0xFF;
    const __m512i bits = _mm512_castpd_si512(roots);
    const __m512i one = _mm512_set1_epi64(1);
    const __m512d below = _mm512_castsi512_pd(_mm512_sub_epi64(bits, one));
    const __m512d above = _mm512_castsi512_pd(_mm512_add_epi64(bits, one));
    const __m512d zero = _mm512_setzero_pd();
    const __mmask8 notTooLarge = _mm512_cmp_pd_mask(_mm512_fnmadd_pd(roots, below, squares), zero, _CMP_GT_OQ);
    return _mm512_mask_cmp_pd_mask(notTooLarge, _mm512_fnmadd_pd(roots, above, squares), zero, _CMP_LT_OQ) == allLanes;
  }

  /// addCompensated() in every lane with one operation less, by ordering the operands (Dekker1971). The errors are the
  /// same since both ways compute them exactly.
  [[gnu::target("avx512f")]] static void addTo(WideLanes& lanes, __m512d value) {
    const __m512d total = _mm512_add_pd(lanes.sum, value);
    const __m512d larger = _mm512_max_pd(lanes.sum, value);
    const __m512d smaller = _mm512_min_pd(value, lanes.sum);
    lanes.error = _mm512_add_pd(lanes.error, _mm512_sub_pd(smaller, _mm512_sub_pd(total, larger)));
    lanes.sum = total;
  }

  /// Stores the lanes in the order of their edges.
  [[gnu::target("avx512f")]] static void store(__m512d lanes, omReal64* result) {
    const __m512i edgeOrder = _mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7);
    _mm512_storeu_pd(result, _mm512_permutexvar_pd(edgeOrder, lanes));
  }
};

}  // namespace ormix::detail
