#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <cmath>
#include <limits>

/// \file
/// Centres of voxels along one axis; not installed.

namespace ormix::geom::detail {

/// Centres origin + (i + 0.5) · spacing for i below `nbCentres`, rounded. They ascend; see isSound().
struct GridAxis {
  omReal64 origin;
  omReal64 spacing;
  omInt64 nbCentres;

  omReal64 centre(omInt64 index) const { return origin + (static_cast<omReal64>(index) + 0.5) * spacing; }

  /// Whether all centres are finite and as far apart as the rounding of first() asks for.
  bool isSound() const {
    constexpr omReal64 largest = std::numeric_limits<omReal64>::max() / 4;
    const omReal64 reach = std::max(std::abs(origin), std::abs(centre(nbCentres)));
    return spacing > 0 && reach <= largest && spacing >= 0x1p-48 * reach && spacing >= 0x1p-1000;
  }

  /// The first index whose centre is at the value or above it, at most `nbCentres`. Constant time; 0 for NaN.
  omInt64 first(omReal64 value) const {
    const omReal64 guess = (value - origin) / spacing - 0.5;
    if (!(guess > 0)) return centre(0) < value && nbCentres > 0 ? 1 : 0;
    if (guess >= static_cast<omReal64>(nbCentres)) return centre(nbCentres - 1) < value ? nbCentres : nbCentres - 1;
    auto index = static_cast<omInt64>(std::ceil(guess));
    // Rounding takes the guess to a neighbour at most.
    while (index > 0 && centre(index - 1) >= value) --index;
    while (index < nbCentres && centre(index) < value) ++index;
    return index;
  }

  /// The first index in [begin, end] for which the predicate holds, which ascends from false to true; `end` where it
  /// holds for none before. Two calls where the guess is right, else their logarithm.
  template <class Predicate>
  static omInt64 firstOf(omInt64 begin, omInt64 end, omInt64 guess, Predicate predicate) {
    guess = std::clamp(guess, begin, end);
    if (guess == end || predicate(guess)) {
      end = guess;
      if (guess == begin || !predicate(guess - 1)) return guess;
      --end;
    } else {
      begin = guess + 1;
    }
    while (begin < end) {
      const omInt64 middle = begin + (end - begin) / 2;
      if (predicate(middle))
        end = middle;
      else
        begin = middle + 1;
    }
    return begin;
  }
};

}  // namespace ormix::geom::detail
