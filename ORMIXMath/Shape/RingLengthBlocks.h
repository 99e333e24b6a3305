#pragma once

#include <ORMIXMath/Shape/CompensatedSum.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace ormix::detail {

/// Edges are dealt in turn to this many running sums; part of the result's definition, as it fixes its bits.
constexpr std::size_t nbLanes = 8;
/// Coordinates from the start of one block, an edge a lane, to the start of the next.
constexpr std::size_t blockSize = 2 * nbLanes;

inline omReal64 length(omReal64 dx, omReal64 dy) { return std::sqrt(dx * dx + dy * dy); }

template <class T>
omReal64 edgeLength(const T* xy) {
  return length(static_cast<omReal64>(xy[2]) - static_cast<omReal64>(xy[0]),
                static_cast<omReal64>(xy[3]) - static_cast<omReal64>(xy[1]));
}

using RingLanes = Lanes<nbLanes>;

/// Asks for the block that will be read 2 KiB from now. Without it rings beyond the caches cost half as much again; an
/// address past the end is ignored by the processor.
template <class T>
void prefetchBlock(const T* xy) {
  constexpr std::uintptr_t bytesAhead = 2048;
  constexpr std::uintptr_t cacheLine = 64;
  const std::uintptr_t first = reinterpret_cast<std::uintptr_t>(xy) + bytesAhead;
  for (std::uintptr_t at = 0; at < blockSize * sizeof(T); at += cacheLine)
    __builtin_prefetch(reinterpret_cast<const void*>(first + at));
}

/// Adds edge l of each of the blocks to lane l.
struct PortableBlocks {
  template <class T>
  static void add(const T* xy, std::size_t nbBlocks, RingLanes& result) {
    RingLanes lanes;
    for (; nbBlocks > 0; --nbBlocks, xy += blockSize) {
      prefetchBlock(xy);
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

}  // namespace ormix::detail
