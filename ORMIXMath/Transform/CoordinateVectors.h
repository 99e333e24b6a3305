#pragma once

#include <ORMIXMath/Scalar/Round.h>

#include <cstddef>
#include <limits>
#include <type_traits>
#include <utility>

/// \file
/// Coordinates in vectors of N lanes, in the vector types of the compilers: one source for every width and processor.
/// A function that is compiled for a processor has all of it inlined, so that no vector is ever passed.

// How vectors would be passed differs between processors, which compilers warn of; left so for whoever includes this.
#pragma GCC diagnostic ignored "-Wpsabi"

namespace ormix::detail {

template <class T, std::size_t N>
struct VectorOf {
  using Type [[gnu::vector_size(N * sizeof(T))]] = T;
};
template <class T, std::size_t N>
using Vector = typename VectorOf<T, N>::Type;
/// The same where it stands in a run of coordinates.
template <class T, std::size_t N>
struct StoredVectorOf {
  using Type [[gnu::vector_size(N * sizeof(T)), gnu::aligned(alignof(T)), gnu::may_alias]] = T;
};
template <class T, std::size_t N>
using StoredVector = typename StoredVectorOf<T, N>::Type;
/// N coordinates as omReal64, which is what maps compute in.
template <std::size_t N>
using Reals = Vector<omReal64, N>;

/// x, y, x, y, ... in N lanes.
template <std::size_t N>
[[gnu::always_inline]] inline Reals<N> alternating(omReal64 x, omReal64 y) {
  if constexpr (N == 4) {
    return Reals<N>{x, y, x, y};
  } else {
    // From an array, as g++ 12 fills the lanes of a wider register one after the other otherwise.
    omReal64 lanes[N];
    for (std::size_t lane = 0; lane < N; ++lane) lanes[lane] = lane % 2 == 0 ? x : y;
    return *reinterpret_cast<const StoredVector<omReal64, N>*>(lanes);
  }
}

template <std::size_t N, class Values, std::size_t... I>
[[gnu::always_inline]] inline Reals<N> convertedLanes(const Values& values, std::index_sequence<I...>) {
  return Reals<N>{static_cast<omReal64>(values[I])...};
}

/// Coordinates of type T as omReal64.
template <class T, std::size_t N>
[[gnu::always_inline]] inline Reals<N> toReals(const Vector<T, N>& values) {
  constexpr auto lanes = std::make_index_sequence<N>();
  if constexpr (std::is_same_v<T, omReal64>) {
    return values;
  } else if constexpr (std::is_same_v<T, omUInt32>) {
    // Shifted down by 2^31 for the signed conversion, which every processor has, and back, which is exact.
    const Vector<omInt32, N> shifted = (Vector<omInt32, N>)(values ^ 0x80000000u);
    return convertedLanes<N>(shifted, lanes) + 0x1p31;
  } else {
    return convertedLanes<N>(values, lanes);
  }
}

/// Brings coordinates that are no NaN from omReal64 to type T as round() does.
template <class T, std::size_t N>
class Rounding {
 public:
  [[gnu::always_inline]] inline Rounding() {
    if constexpr (std::is_integral_v<T>) {
      // g++ 12 compiles a comparison with a bound to a minimum or a maximum only when it does not know the bound.
      const volatile omReal64 lowest = static_cast<omReal64>(std::numeric_limits<T>::min());
      const volatile omReal64 highest = static_cast<omReal64>(std::numeric_limits<T>::max());
      _lowest += lowest;
      _highest += highest;
    }
  }

  [[gnu::always_inline]] inline Vector<T, N> operator()(const Reals<N>& values) const {
    if constexpr (std::is_same_v<T, omReal64>) {
      return values;
    } else if constexpr (std::is_same_v<T, omReal32>) {
      return __builtin_convertvector(values, Vector<T, N>);
    } else if constexpr (std::is_same_v<T, omInt32>) {
      const Bits sign = (Bits)values & (Bits{} + std::numeric_limits<omInt64>::min());
      const Reals<N> signedHalf = (Reals<N>)(sign | (Bits)(Reals<N>{} + s_belowHalf));
      return __builtin_convertvector(bounded(values + signedHalf), Vector<T, N>);
    } else if constexpr (N == 8) {  // AVX-512 converts to unsigned integers.
      return __builtin_convertvector(bounded(values + s_belowHalf), Vector<T, N>);
    } else {
      // Beside 2^52 the lowest bits of a real are an integer, the nearest one: less one where that is above the value.
      const Reals<N> value = bounded(values + s_belowHalf);
      const Reals<N> beside = value + 0x1p52;
      return __builtin_convertvector((Bits)beside + (Bits)(beside - 0x1p52 > value), Vector<T, N>);
    }
  }

 private:
  using Bits = Vector<omInt64, N>;

  [[gnu::always_inline]] inline Reals<N> bounded(const Reals<N>& values) const {
    const Reals<N> below = values < _highest ? values : _highest;
    return below > _lowest ? below : _lowest;
  }

  Reals<N> _lowest{};
  Reals<N> _highest{};
};

/// Whether all coordinates that it was shown are finite; integers are.
template <class T, std::size_t N>
class FiniteCheck {
 public:
  [[gnu::always_inline]] inline void add(const Vector<T, N>& values) {
    if constexpr (std::is_floating_point_v<T>) _zeros += values * T{0};
  }
  [[gnu::always_inline]] inline bool areFinite() const {
    T sums[N];
    for (std::size_t lane = 0; lane < N; ++lane) sums[lane] = _zeros[lane];
    for (std::size_t half = N / 2; half > 0; half /= 2)
      for (std::size_t lane = 0; lane < half; ++lane) sums[lane] += sums[lane + half];
    return sums[0] == 0;
  }

 private:
  /// Sums of zero times each value: NaN once one of them is not finite.
  Vector<T, N> _zeros{};
};

/// A map on points in `s_nbVectors` vectors of N lanes: `apply(vectors)` replaces them by their images. PlanarMaps.h
/// and SpatialMaps.h have them and say what the lanes are.
template <class Map, std::size_t N>
class VectorMap;

}  // namespace ormix::detail
