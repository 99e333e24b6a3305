#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <array>
#include <boost/multiprecision/cpp_int.hpp>
#include <climits>
#include <cmath>
#include <cstddef>

/// \file
/// Finite numbers as integers, for determinants that no rounded arithmetic decides; not installed.

namespace ormix::detail {

__extension__ typedef __int128 Integer128;
/// An integer of so many bits beside its sign.
template <unsigned t_bits>
using WideInteger = boost::multiprecision::number<boost::multiprecision::cpp_int_backend<
    t_bits, t_bits, boost::multiprecision::signed_magnitude, boost::multiprecision::unchecked, void>>;

/// The power of two of which all given finite numbers are multiples, and the number of bits of the multiples.
struct CommonGrid {
  int lowestBit = INT_MAX;   ///< Exponent of the power of two.
  int highestBit = INT_MIN;  ///< Exponent of a power of two above all magnitudes.

  template <std::size_t N>
  explicit CommonGrid(const std::array<omReal64, N>& coordinates) {
    for (const omReal64 value : coordinates) {
      if (value == 0) continue;
      int exponent = 0;
      const auto digits = static_cast<omInt64>(std::ldexp(std::frexp(value, &exponent), 53));
      lowestBit = std::min(lowestBit, exponent - 53 + __builtin_ctzll(static_cast<omUInt64>(digits)));
      highestBit = std::max(highestBit, exponent);
    }
  }

  bool onlyZeros() const { return lowestBit == INT_MAX; }
  int bits() const { return highestBit - lowestBit; }

  /// The multiple that a number is, exactly.
  template <class Integer>
  Integer toInteger(omReal64 value) const {
    if (value == 0) return 0;
    int exponent = 0;
    const auto digits = static_cast<omInt64>(std::ldexp(std::frexp(value, &exponent), 53));
    const int shift = exponent - 53 - lowestBit;
    // By multiplication, since a left shift of a negative number is undefined.
    if (shift >= 0) return static_cast<Integer>(digits) * (static_cast<Integer>(1) << shift);
    return static_cast<Integer>(digits / (omInt64{1} << -shift));
  }
};

}  // namespace ormix::detail
