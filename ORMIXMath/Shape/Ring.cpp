#include <ORMIXMath/Shape/Ring.h>

#include <cmath>
#include <cstdint>
#if defined(__x86_64__)
#include <immintrin.h>

#include <limits>
#define ORMIX_HAS_AVX2_VERSION 1
#endif

namespace ormix {
namespace {

/// Edges are dealt in turn to this many running sums; part of the result's definition, as it fixes its bits.
constexpr std::size_t nbLanes = 8;

/// TwoSum (Knuth 1969): the rounding error of sum + value is itself a number, kept in `error`.
inline void addCompensated(omReal64 value, omReal64& sum, omReal64& error) {
  const omReal64 total = sum + value;
  const omReal64 added = total - sum;
  error += (sum - (total - added)) + (value - added);
  sum = total;
}

/// A sum and the rounding errors made so far: exact to about twice the precision of omReal64.
struct CompensatedSum {
  omReal64 sum = 0;
  omReal64 error = 0;

  void add(omReal64 value) { addCompensated(value, sum, error); }
  /// Once the sum is infinite its error is inf - inf: the plain sum then tells what happened.
  omReal64 result() const {
    const omReal64 rounded = sum + error;
    return std::isnan(rounded) ? sum : rounded;
  }
};

template <class T>
omReal64 edgeLength(const T* xy) {
  const omReal64 dx = static_cast<omReal64>(xy[2]) - static_cast<omReal64>(xy[0]);
  const omReal64 dy = static_cast<omReal64>(xy[3]) - static_cast<omReal64>(xy[1]);
  return std::sqrt(dx * dx + dy * dy);
}

/// nbLanes compensated sums, sums and errors apart so that one vector holds several of either.
struct Lanes {
  omReal64 sum[nbLanes] = {};
  omReal64 error[nbLanes] = {};
};

/// Asks for what will be read some ten blocks from now. Without it rings beyond the caches cost half as much again; an
/// address past the end is ignored by the processor.
inline void prefetch(const void* xy) {
  constexpr std::uintptr_t bytesAhead = 1024;
  __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(xy) + bytesAhead));
}

/// Adds edge l of each of the blocks of nbLanes edges to lane l.
struct PortableBlocks {
  template <class T>
  static void add(const T* xy, std::size_t nbBlocks, Lanes& result) {
    Lanes lanes;
    for (; nbBlocks > 0; --nbBlocks, xy += 2 * nbLanes) {
      prefetch(xy);
      omReal64 lengths[nbLanes];
      for (std::size_t l = 0; l < nbLanes; ++l) lengths[l] = edgeLength(xy + 2 * l);
      for (std::size_t l = 0; l < nbLanes; ++l) addCompensated(lengths[l], lanes.sum[l], lanes.error[l]);
    }
    // One by one: an assignment as a whole would keep the sums in memory and the compiler from making vectors of them.
    for (std::size_t l = 0; l < nbLanes; ++l) {
      result.sum[l] = lanes.sum[l];
      result.error[l] = lanes.error[l];
    }
  }
};

#if defined(ORMIX_HAS_AVX2_VERSION)

/// Two vertices, converted one coordinate each: x0, y0, x1, y1.
[[gnu::target("avx2")]] inline __m256d loadPair(const omReal64* xy) { return _mm256_loadu_pd(xy); }
[[gnu::target("avx2")]] inline __m256d loadPair(const omReal32* xy) { return _mm256_cvtps_pd(_mm_loadu_ps(xy)); }
[[gnu::target("avx2")]] inline __m256d loadPair(const omInt32* xy) {
  return _mm256_cvtepi32_pd(_mm_loadu_si128(reinterpret_cast<const __m128i*>(xy)));
}
[[gnu::target("avx2")]] inline __m256d loadPair(const omUInt32* xy) {
  // Shifted down by 2^31 to fit the signed conversion; differences of vertices do not see the shift and stay exact.
  const __m128i bits = _mm_loadu_si128(reinterpret_cast<const __m128i*>(xy));
  return _mm256_cvtepi32_pd(_mm_xor_si128(bits, _mm_set1_epi32(std::numeric_limits<omInt32>::min())));
}

/// Lengths of four consecutive edges, in the order 0, 2, 1, 3 that the horizontal addition leaves.
template <class T>
[[gnu::target("avx2")]] inline __m256d edgeLengths(const T* xy) {
  const __m256d first = _mm256_sub_pd(loadPair(xy + 2), loadPair(xy));
  const __m256d second = _mm256_sub_pd(loadPair(xy + 6), loadPair(xy + 4));
  return _mm256_sqrt_pd(_mm256_hadd_pd(_mm256_mul_pd(first, first), _mm256_mul_pd(second, second)));
}

/// Four lanes.
struct WideLanes {
  __m256d sum;
  __m256d error;
};

/// addCompensated on each of the lanes.
[[gnu::target("avx2")]] inline void addTo(WideLanes& lanes, __m256d value) {
  const __m256d total = _mm256_add_pd(lanes.sum, value);
  const __m256d added = _mm256_sub_pd(total, lanes.sum);
  const __m256d lost = _mm256_sub_pd(lanes.sum, _mm256_sub_pd(total, added));
  lanes.error = _mm256_add_pd(lanes.error, _mm256_add_pd(lost, _mm256_sub_pd(value, added)));
  lanes.sum = total;
}

[[gnu::target("avx2")]] inline void store(const WideLanes& lanes, omReal64* sum, omReal64* error) {
  constexpr int edgeOrder = 0xD8;  // 0, 2, 1, 3 back to 0, 1, 2, 3
  _mm256_storeu_pd(sum, _mm256_permute4x64_pd(lanes.sum, edgeOrder));
  _mm256_storeu_pd(error, _mm256_permute4x64_pd(lanes.error, edgeOrder));
}

/// PortableBlocks with four square roots at once, the same operations on every lane and so the same bits.
struct Avx2Blocks {
  template <class T>
  [[gnu::target("avx2")]] static void add(const T* xy, std::size_t nbBlocks, Lanes& result) {
    WideLanes low{_mm256_setzero_pd(), _mm256_setzero_pd()};
    WideLanes high = low;
    for (; nbBlocks > 0; --nbBlocks, xy += 2 * nbLanes) {
      prefetch(xy);
      addTo(low, edgeLengths(xy));
      addTo(high, edgeLengths(xy + nbLanes));
    }
    store(low, result.sum, result.error);
    store(high, result.sum + nbLanes / 2, result.error + nbLanes / 2);
  }
};

#endif

/// Whole blocks by lanes, these joined in their order, then the few edges left over one by one.
template <class Blocks, class T>
omReal64 sumOfEdges(const T* xy, std::size_t nbPoints) {
  if (nbPoints <= 1) return 0;
  const std::size_t nbEdges = nbPoints - 1;
  const std::size_t nbBlocks = nbEdges / nbLanes;
  CompensatedSum length;
  if (nbBlocks > 0) {
    Lanes lanes;
    Blocks::add(xy, nbBlocks, lanes);
    for (std::size_t l = 0; l < nbLanes; ++l) {
      length.add(lanes.sum[l]);
      length.error += lanes.error[l];
    }
  }
  for (std::size_t i = nbBlocks * nbLanes; i < nbEdges; ++i) length.add(edgeLength(xy + 2 * i));
  return length.result();
}

}  // namespace

template <class T>
omReal64 ringSignedArea(const T* xy, std::size_t nbPoints) {
  if (nbPoints <= 3) return 0;
  omReal64 sum = 0;
  const T* vertex = xy + 2 * (nbPoints - 1);
  auto x = static_cast<omReal64>(vertex[0]);
  auto y = static_cast<omReal64>(vertex[1]);
  while (vertex != xy) {
    vertex -= 2;
    const auto xBefore = static_cast<omReal64>(vertex[0]);
    const auto yBefore = static_cast<omReal64>(vertex[1]);
    sum += (x + xBefore) * (y - yBefore);
    x = xBefore;
    y = yBefore;
  }
  return 0.5 * sum;
}

template <class T>
omReal64 ringSignedAreaReversed(const T* xy, std::size_t nbPoints) {
  if (nbPoints <= 3) return 0;
  omReal64 sum = 0;
  auto x = static_cast<omReal64>(xy[0]);
  auto y = static_cast<omReal64>(xy[1]);
  for (const T *vertex = xy + 2, *end = xy + 2 * nbPoints; vertex != end; vertex += 2) {
    const auto xAfter = static_cast<omReal64>(vertex[0]);
    const auto yAfter = static_cast<omReal64>(vertex[1]);
    sum += (x + xAfter) * (y - yAfter);
    x = xAfter;
    y = yAfter;
  }
  return 0.5 * sum;
}

template <class T>
omReal64 pathLength(const T* xy, std::size_t nbPoints) {
#if defined(ORMIX_HAS_AVX2_VERSION)
  // A load and a test: no resolver of the dynamic linker, which sanitizers do not survive.
  if (nbPoints > nbLanes && __builtin_cpu_supports("avx2")) return sumOfEdges<Avx2Blocks>(xy, nbPoints);
#endif
  return sumOfEdges<PortableBlocks>(xy, nbPoints);
}

template <class T>
omReal64 detail::pathLengthPortable(const T* xy, std::size_t nbPoints) {
  return sumOfEdges<PortableBlocks>(xy, nbPoints);
}

// clang-format off
template omReal64 ringSignedArea(const omInt32*, std::size_t);
template omReal64 ringSignedArea(const omUInt32*, std::size_t);
template omReal64 ringSignedArea(const omReal32*, std::size_t);
template omReal64 ringSignedArea(const omReal64*, std::size_t);
template omReal64 ringSignedAreaReversed(const omInt32*, std::size_t);
template omReal64 ringSignedAreaReversed(const omUInt32*, std::size_t);
template omReal64 ringSignedAreaReversed(const omReal32*, std::size_t);
template omReal64 ringSignedAreaReversed(const omReal64*, std::size_t);
template omReal64 pathLength(const omInt32*, std::size_t);
template omReal64 pathLength(const omUInt32*, std::size_t);
template omReal64 pathLength(const omReal32*, std::size_t);
template omReal64 pathLength(const omReal64*, std::size_t);
template omReal64 detail::pathLengthPortable(const omInt32*, std::size_t);
template omReal64 detail::pathLengthPortable(const omUInt32*, std::size_t);
template omReal64 detail::pathLengthPortable(const omReal32*, std::size_t);
template omReal64 detail::pathLengthPortable(const omReal64*, std::size_t);
// clang-format on

}  // namespace ormix
