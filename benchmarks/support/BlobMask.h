#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <vector>

namespace ormix::benchmarks {

constexpr std::size_t blobMaskSide = 4096;  ///< columns and rows of a mask

/// A mask of 4096² pixels with 10⁴ discs and rings at fixed places: about 170,000 runs and 7,000 regions, many of them
/// of several discs, some with holes and islands in these.
template <class T>
std::vector<T> blobMask(unsigned seed = 77) {
  constexpr int side = blobMaskSide;
  std::vector<T> mask(blobMaskSide * blobMaskSide);
  std::mt19937 engine(seed);
  const auto below = [&engine](unsigned bound) { return static_cast<int>(engine() % bound); };
  for (int blob = 0; blob < 10000; ++blob) {
    const int centerX = below(side), centerY = below(side), radius = 3 + below(13);
    const int hole = below(10) < 3 ? radius / 2 : 0;
    for (int y = std::max(0, centerY - radius); y <= std::min(side - 1, centerY + radius); ++y)
      for (int x = std::max(0, centerX - radius); x <= std::min(side - 1, centerX + radius); ++x) {
        const int square = (x - centerX) * (x - centerX) + (y - centerY) * (y - centerY);
        if (square <= radius * radius && square >= hole * hole) mask[static_cast<std::size_t>(y * side + x)] = 255;
      }
  }
  return mask;
}

/// Its pixels.
inline geom::RowIntersections blobRows() {
  const std::vector<omUInt8> mask = blobMask<omUInt8>();
  return toRowIntersections(geom::MaskView<const omUInt8>{mask.data(), blobMaskSide, blobMaskSide, blobMaskSide});
}

}  // namespace ormix::benchmarks
