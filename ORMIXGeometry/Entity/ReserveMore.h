#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

/// \file
/// Amortised growth of vectors; not installed.

namespace ormix::geom::detail {

/// Reserves memory for `nbMore` further elements, so that appending these does not allocate. Capacity at least doubles
/// when it grows, so that repeated calls cost amortised constant time an element.
/// \throw std::bad_alloc, std::length_error as std::vector::reserve(); `values` is then unchanged
template <class V>
void reserveMore(std::vector<V>& values, std::size_t nbMore) {
  const std::size_t nbNeeded = values.size() + nbMore;
  if (nbNeeded > values.capacity()) values.reserve(std::max(nbNeeded, 2 * values.capacity()));
}

}  // namespace ormix::geom::detail
