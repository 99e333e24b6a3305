#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>
#include <vector>

/// \file
/// Dropping points of the plane that are plainly inside before they are sorted; not installed.

namespace ormix::detail {

/// Cuts the plane into slices across x and knows, of each, an interval of y that is inside a convex polygon all along
/// the slice. All bounds are widened by more than the rounding errors of the tests, so that a point that counts as
/// inside is so.
class HullSlices {
 public:
  /// \param hullXy the vertices of a convex polygon, counter-clockwise from the first of the smallest x; at least three,
  /// no three on a line
  HullSlices(const std::vector<omReal64>& hullXy);

  /// Whether the point is proven to be inside the polygon; false where there is nothing to prove it with.
  bool isInside(omReal64 x, omReal64 y) const {
    const omReal64 place = (x - _left) * _slicesPerUnit;
    if (!(place >= 0 && place < static_cast<omReal64>(s_nbSlices))) return false;
    const Slice& slice = _slices[static_cast<std::size_t>(place)];
    return y > slice.low && y < slice.high;
  }

 private:
  struct Slice {
    omReal64 low;
    omReal64 high;
  };
  static constexpr std::size_t s_nbSlices = 1024;
  using Heights = std::array<omReal64, s_nbSlices + 1>;

  template <class Vertex>
  static void interpolate(std::size_t nbVertices, Vertex vertex, omReal64 left, omReal64 width, Heights& heights);

  omReal64 _left = 0;
  omReal64 _slicesPerUnit = 0;
  std::array<Slice, s_nbSlices> _slices{};
};

}  // namespace ormix::detail
