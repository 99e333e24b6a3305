#include <ORMIXGeometry/Transform/RunExtent.h>
#include <ORMIXMath/Transform/CoordinateVectors.h>

#include <algorithm>
#include <array>
#include <type_traits>
#include <utility>

namespace ormix::geom::detail {

namespace {

template <class T>
[[gnu::always_inline]] inline void include(T from, T to, T& low, T& high) {
  low = std::min(low, from);
  high = std::max(high, to);
}

template <class T>
bool areFinite(const T* values, std::size_t nbValues) {
  T zeros{};
  for (std::size_t at = 0; at < nbValues; ++at) zeros += values[at] * T(0);
  return zeros == 0;
}

template <class T, std::size_t N>
[[gnu::always_inline]] inline ormix::detail::Vector<T, N> lesser(const ormix::detail::Vector<T, N>& a,
                                                                 const ormix::detail::Vector<T, N>& b) {
  return a < b ? a : b;
}
template <class T, std::size_t N>
[[gnu::always_inline]] inline ormix::detail::Vector<T, N> greater(const ormix::detail::Vector<T, N>& a,
                                                                  const ormix::detail::Vector<T, N>& b) {
  return b < a ? a : b;
}

template <class Values, std::size_t... Lane>
[[gnu::always_inline]] inline auto lowerHalf(const Values& values, std::index_sequence<Lane...>) {
  return __builtin_shufflevector(values, values, Lane...);
}
template <class Values, std::size_t... Lane>
[[gnu::always_inline]] inline auto upperHalf(const Values& values, std::index_sequence<Lane...>) {
  return __builtin_shufflevector(values, values, (sizeof...(Lane) + Lane)...);
}

/// Moves the sides outwards to the least and the most of N lanes, whose axis is their index modulo 2. Both axes are
/// stored at once, as processors do not forward two numbers to a load of both.
template <std::size_t N, class T>
[[gnu::always_inline]] inline void includeLanes2d(const ormix::detail::Vector<T, N>& least,
                                                  const ormix::detail::Vector<T, N>& most, T* low, T* high) {
  if constexpr (N == 2) {
    using Stored = ormix::detail::StoredVector<T, 2>;
    Stored& lows = *reinterpret_cast<Stored*>(low);
    Stored& highs = *reinterpret_cast<Stored*>(high);
    lows = lesser<T, 2>(least, lows);
    highs = greater<T, 2>(most, highs);
  } else {
    constexpr auto half = std::make_index_sequence<N / 2>();
    includeLanes2d<N / 2, T>(lesser<T, N / 2>(lowerHalf(least, half), upperHalf(least, half)),
                             greater<T, N / 2>(lowerHalf(most, half), upperHalf(most, half)), low, high);
  }
}

/// The same in space, of vectors one after the other; the axis of the first lane is `first` modulo 3.
template <class Values, class T, std::size_t... Lane>
[[gnu::always_inline]] inline void includeLanes3d(const Values& least, const Values& most, T* low, T* high,
                                                  std::size_t first, std::index_sequence<Lane...>) {
  (include(least[Lane], most[Lane], low[(first + Lane) % 3], high[(first + Lane) % 3]), ...);
}

/// So many bytes hold a whole number of points.
template <std::size_t D>
constexpr std::size_t nbBytesOfBlock = 32 * D;

/// Block by block in vectors of so many bytes; the last block may overlap the one before it. Answers the sum of all
/// coordinates of reals, which is finite only where all of them are.
template <std::size_t NbBytes, std::size_t D, class T>
[[gnu::always_inline]] inline T growToBlocks(const T* coords, std::size_t nbValues, T* low, T* high) {
  constexpr std::size_t N = NbBytes / sizeof(T);
  constexpr std::size_t nbVectors = nbBytesOfBlock<D> / NbBytes;
  constexpr std::size_t nbInBlock = nbVectors * N;
  using Values = ormix::detail::Vector<T, N>;
  using Stored = ormix::detail::StoredVector<T, N>;
  Values least[nbVectors], most[nbVectors], sum[nbVectors];
#pragma GCC unroll 6
  for (std::size_t v = 0; v < nbVectors; ++v)
    least[v] = most[v] = sum[v] = *reinterpret_cast<const Stored*>(coords + v * N);
  const T* const last = coords + (nbValues - nbInBlock);
  for (const T* block = coords; block != last;) {
    block = last - block < std::ptrdiff_t(nbInBlock) ? last : block + nbInBlock;
#pragma GCC unroll 6
    for (std::size_t v = 0; v < nbVectors; ++v) {
      const Values from = *reinterpret_cast<const Stored*>(block + v * N);
      least[v] = lesser<T, N>(from, least[v]);
      most[v] = greater<T, N>(from, most[v]);
      if constexpr (std::is_floating_point_v<T>) sum[v] += from;
    }
  }
  if constexpr (D == 2) {
    for (std::size_t v = 1; v < nbVectors; ++v) {
      least[0] = lesser<T, N>(least[v], least[0]);
      most[0] = greater<T, N>(most[v], most[0]);
    }
    includeLanes2d<N, T>(least[0], most[0], low, high);
  } else {
    for (std::size_t v = 0; v < nbVectors; ++v)
      includeLanes3d(least[v], most[v], low, high, v * N, std::make_index_sequence<N>());
  }
  T total{};
  if constexpr (std::is_floating_point_v<T>) {
    for (std::size_t v = 1; v < nbVectors; ++v) sum[0] += sum[v];
    for (std::size_t lane = 0; lane < N; ++lane) total += sum[0][lane];
  }
  return total;
}

#if defined(__x86_64__)
template <std::size_t D, class T>
[[gnu::target("avx2")]] T growToBlocksAvx2(const T* coords, std::size_t nbValues, T* low, T* high) {
  return growToBlocks<32, D>(coords, nbValues, low, high);
}
#endif

}  // namespace

template <std::size_t D, class T>
bool growToRun(const T* coords, std::size_t nbPoints, T* low, T* high) {
  const std::size_t nbValues = D * nbPoints;
  if (nbValues * sizeof(T) < nbBytesOfBlock<D>) {
    for (std::size_t at = 0; at < nbValues; ++at) include(coords[at], coords[at], low[at % D], high[at % D]);
    return areFinite(coords, nbValues);
  }
#if defined(__x86_64__)
  const T sum = __builtin_cpu_supports("avx2") ? growToBlocksAvx2<D>(coords, nbValues, low, high)
                                               : growToBlocks<16, D>(coords, nbValues, low, high);
#else
  const T sum = growToBlocks<16, D>(coords, nbValues, low, high);
#endif
  // A sum of finite numbers may overflow.
  return sum * T(0) == 0 || areFinite(coords, nbValues);
}

#define ORMIX_GEOMETRY_INSTANTIATE_EXTENT(T)                 \
  template bool growToRun<2>(const T*, std::size_t, T*, T*); \
  template bool growToRun<3>(const T*, std::size_t, T*, T*);
ORMIX_GEOMETRY_INSTANTIATE_EXTENT(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_EXTENT(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_EXTENT(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_EXTENT(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_EXTENT

}  // namespace ormix::geom::detail
