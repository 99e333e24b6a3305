#pragma once

#include <ORMIXMath/Shape/CompensatedSum.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace ormix::detail {

/// Edges are distributed round-robin over this many running sums. The number is part of the result's definition, as it
/// fixes its bits.
constexpr std::size_t nbLanes = 8;
/// Coordinates of one block, which has one edge for each lane; the last vertex of an edge is the first one of the next.
constexpr std::size_t blockSize = 2 * nbLanes;

/// Length of a vector; overflows and underflows with the squares.
inline omReal64 length(omReal64 dx, omReal64 dy) { return std::sqrt(dx * dx + dy * dy); }

/// Length of the edge between two consecutive vertices.
template <class T>
omReal64 edgeLength(const T* xy) {
  return length(static_cast<omReal64>(xy[2]) - static_cast<omReal64>(xy[0]),
                static_cast<omReal64>(xy[3]) - static_cast<omReal64>(xy[1]));
}

/// The running sums of edge lengths.
using RingLanes = Lanes<nbLanes>;

/// Prefetches the block 2 KiB ahead. Without it, rings larger than the caches take half as much time again. Addresses
/// past the end are allowed: prefetching does not fault.
template <class T>
void prefetchBlock(const T* xy) {
  constexpr std::uintptr_t bytesAhead = 2048;
  constexpr std::uintptr_t cacheLine = 64;
  const std::uintptr_t first = reinterpret_cast<std::uintptr_t>(xy) + bytesAhead;
  for (std::uintptr_t at = 0; at < blockSize * sizeof(T); at += cacheLine)
    __builtin_prefetch(reinterpret_cast<const void*>(first + at));
}

/// The sum over full blocks, without vector instructions chosen at run time.
struct PortableBlocks {
  /// Adds edge l of each block to lane l; the lanes are overwritten.
  template <class T>
  static void add(const T* xy, std::size_t nbBlocks, RingLanes& result) {
    RingLanes lanes;
    for (; nbBlocks > 0; --nbBlocks, xy += blockSize) {
      prefetchBlock(xy);
      omReal64 lengths[nbLanes];
      for (std::size_t l = 0; l < nbLanes; ++l) lengths[l] = edgeLength(xy + 2 * l);
      for (std::size_t l = 0; l < nbLanes; ++l) addCompensated(lengths[l], lanes.sum[l], lanes.error[l]);
    }
    // Element by element: assigning the structure would keep the sums in memory and so prevent vectorisation.
    for (std::size_t l = 0; l < nbLanes; ++l) {
      result.sum[l] = lanes.sum[l];
      result.error[l] = lanes.error[l];
    }
  }
};

}  // namespace ormix::detail
