#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

// Not installed.
namespace ormix::geom {

/// Makes room for some more elements, so that appending them cannot fail; grows by doubling.
template <class V>
void reserveMore(std::vector<V>& values, std::size_t nbMore) {
  const std::size_t nbNeeded = values.size() + nbMore;
  if (nbNeeded > values.capacity()) values.reserve(std::max(nbNeeded, 2 * values.capacity()));
}

}  // namespace ormix::geom
