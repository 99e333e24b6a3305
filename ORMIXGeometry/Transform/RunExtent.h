#pragma once

#include <cstddef>

/// \file
/// The sides of the box of a run of points; not installed.

namespace ormix::geom::detail {

/// Moves the sides `low[D]` and `high[D]` outwards to contain `nbPoints` points of D interleaved coordinates each, for
/// D = 2 and 3 and the four scalar types. Which of zeros of both signs becomes a side is unspecified. O(points).
/// \return whether all coordinates are finite; the sides are unspecified otherwise
template <std::size_t D, class T>
bool growToRun(const T* coords, std::size_t nbPoints, T* low, T* high);

}  // namespace ormix::geom::detail
