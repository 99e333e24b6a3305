#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <vector>

namespace ormix::benchmarks {

/// The pixels of 10⁴ discs and rings at fixed places of 4096² pixels: about 170,000 runs and 7,000 regions, many of
/// them of several discs, some with holes and islands in these.
inline geom::RowIntersections blobRows() {
  constexpr int side = 4096;
  std::vector<char> mask(static_cast<std::size_t>(side) * side);
  std::mt19937 engine(77);
  const auto below = [&engine](unsigned bound) { return static_cast<int>(engine() % bound); };
  for (int blob = 0; blob < 10000; ++blob) {
    const int centerX = below(side), centerY = below(side), radius = 3 + below(13);
    const int hole = below(10) < 3 ? radius / 2 : 0;
    for (int y = std::max(0, centerY - radius); y <= std::min(side - 1, centerY + radius); ++y)
      for (int x = std::max(0, centerX - radius); x <= std::min(side - 1, centerX + radius); ++x) {
        const int square = (x - centerX) * (x - centerX) + (y - centerY) * (y - centerY);
        if (square <= radius * radius && square >= hole * hole) mask[static_cast<std::size_t>(y * side + x)] = 1;
      }
  }
  geom::RowIntersections rows;
  for (int y = 0; y < side; ++y) {
    const auto row = mask.begin() + static_cast<std::ptrdiff_t>(y) * side;
    for (auto end = row; end != row + side;) {
      const auto begin = std::find(end, row + side, 1);
      end = std::find(begin, row + side, 0);
      if (begin != end)
        (void)rows.addRun(static_cast<omUInt64>(y), static_cast<omUInt32>(begin - row),
                          static_cast<omUInt32>(end - row));
    }
  }
  return rows;
}

}  // namespace ormix::benchmarks
