#pragma once

#include <utility>
#include <vector>

/// \file
/// Shapes of regions, in the plane and in space; not installed.

namespace ormix::geom::detail {

/// The results of `make(region)` for each region, in their order; the regions are used up.
template <class Region, class Make>
auto makeShapes(std::vector<Region> regions, Make make) {
  std::vector<decltype(make(std::move(regions[0])))> shapes;
  shapes.reserve(regions.size());
  for (Region& region : regions) shapes.push_back(make(std::move(region)));
  return shapes;
}

}  // namespace ormix::geom::detail
