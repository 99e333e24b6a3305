#include "HullCandidates.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "HullConstruction.h"

namespace ormix::detail {

namespace {

// Fewer points are not worth a test.
constexpr std::size_t s_fewPoints = 1000;

// Points looked at for each direction when a far one is chosen: more would bring it farther out by less than what the
// width of the directions costs.
constexpr std::size_t s_pointsPerCell = 64;

// Boxes whose sides can be divided by and multiplied without overflow and underflow.
constexpr omReal64 s_shortestSide = 0x1p-200;
constexpr omReal64 s_longestSide = 0x1p200;

// Bound of the error of a height above a facet for each unit of its sides: coordinates in the unit box have errors of
// at most 2^-51, so the six triple products of differences (factors of at most 2) are off by less than 150 roundoffs,
// and their rounded sum by 100 more, of the longer side.
constexpr omReal64 s_heightBound = 0x1p-44;

// Facets so near the centre are not relied on; with it, a computed gauge is right to 2^-35.
constexpr omReal64 s_largestGauge = 0x1p12;

// Computed gauges below this are of points inside.
constexpr omReal64 s_insideGauge = 1 - 0x1p-30;

/// The side of the cube around the origin through which a direction goes, and where, in cells.
struct CubePosition {
  std::size_t side;  ///< 0 to 5
  std::size_t column;
  std::size_t row;
  omReal64 right;  ///< within the cell, in [0, 1]
  omReal64 up;
  omReal64 distance;  ///< largest of the coordinates' magnitudes
};

/// A cube around the origin whose sides are cut into cells, by which directions are told apart.
class DirectionCube {
 public:
  explicit DirectionCube(std::size_t cellsPerEdge) : _cells(cellsPerEdge) {}

  std::size_t cellCount() const { return 6 * _cells * _cells; }
  std::size_t cornerCount() const { return 6 * (_cells + 1) * (_cells + 1); }
  std::size_t cell(const CubePosition& at) const { return (at.side * _cells + at.row) * _cells + at.column; }
  /// The lower left corner of a cell; the others are at + 1, + cornersPerRow() and both.
  std::size_t corner(const CubePosition& at) const {
    return (at.side * (_cells + 1) + at.row) * (_cells + 1) + at.column;
  }
  std::size_t cornersPerRow() const { return _cells + 1; }

  /// For a point that is not the origin.
  CubePosition locate(const SpatialPoint& p) const {
    const omReal64 x = std::abs(p.x), y = std::abs(p.y), z = std::abs(p.z);
    if (x >= y && x >= z) return position(p.x < 0 ? 1 : 0, x, p.y, p.z);
    if (y >= z) return position(p.y < 0 ? 3 : 2, y, p.z, p.x);
    return position(p.z < 0 ? 5 : 4, z, p.x, p.y);
  }

  /// The point of the cube at a corner.
  SpatialPoint cornerPoint(std::size_t index) const {
    const std::size_t side = index / ((_cells + 1) * (_cells + 1));
    const omReal64 depth = side % 2 == 1 ? -1 : 1;
    const omReal64 right = fromCells(index % (_cells + 1));
    const omReal64 up = fromCells(index / (_cells + 1) % (_cells + 1));
    if (side < 2) return {depth, right, up};
    if (side < 4) return {up, depth, right};
    return {right, up, depth};
  }

 private:
  omReal64 fromCells(std::size_t i) const { return 2 * static_cast<omReal64>(i) / static_cast<omReal64>(_cells) - 1; }

  CubePosition position(std::size_t side, omReal64 depth, omReal64 right, omReal64 up) const {
    const omReal64 half = 0.5 * static_cast<omReal64>(_cells);
    const omReal64 u = (right / depth + 1) * half;
    const omReal64 v = (up / depth + 1) * half;
    const int column = std::min(static_cast<int>(u), static_cast<int>(_cells) - 1);
    const int row = std::min(static_cast<int>(v), static_cast<int>(_cells) - 1);
    return {side, static_cast<std::size_t>(column), static_cast<std::size_t>(row), u - column, v - row, depth};
  }

  std::size_t _cells;
};

/// Coordinates in which a box has sides of 1 and a given point is the origin.
class UnitFrame {
 public:
  UnitFrame(const SpatialBox& box, const SpatialPoint& origin)
      : _origin(origin),
        _scale{1 / (box.high.x - box.low.x), 1 / (box.high.y - box.low.y), 1 / (box.high.z - box.low.z)} {}

  template <class T>
  SpatialPoint operator()(const T* p) const {
    return {(static_cast<omReal64>(p[0]) - _origin.x) * _scale.x, (static_cast<omReal64>(p[1]) - _origin.y) * _scale.y,
            (static_cast<omReal64>(p[2]) - _origin.z) * _scale.z};
  }

 private:
  SpatialPoint _origin;
  SpatialPoint _scale;
};

omReal64 squaredNorm(const SpatialPoint& p) { return p.x * p.x + p.y * p.y + p.z * p.z; }

/// Proves that points are inside the hull of a few others, by bounds of its gauge: the gauge of a point is the factor
/// by which the polytope, grown about the origin, just reaches it, the largest over the facets of a linear function
/// each. It is convex, so inside a cell of the cube it is at most what is interpolated between the four corners.
class InteriorTest {
 public:
  InteriorTest(const DirectionCube& cube, const HullConstruction& hull) : _cube(cube) {
    std::vector<SpatialPoint> functions;
    for (const HullFacet& facet : hull.facets()) {
      if (!facet.isUsed()) continue;
      const HullPlane& plane = facet.plane;
      const omReal64 uncertainty = s_heightBound * longestSide(facet, hull.points());
      const omReal64 depth = -plane.height({0, 0, 0}) - uncertainty;
      if (!(depth > 0)) return;
      functions.push_back({plane.normal.x / depth, plane.normal.y / depth, plane.normal.z / depth});
      _squaredRadius = std::min(_squaredRadius, s_insideGauge / squaredNorm(functions.back()));
    }
    if (_squaredRadius * s_largestGauge * s_largestGauge < 1) return;
    fillCorners(functions);
  }

  /// False when nothing can be proven.
  bool isUsable() const { return !_corners.empty(); }

  bool isInside(const SpatialPoint& p) const {
    if (squaredNorm(p) < _squaredRadius) return true;
    const CubePosition at = _cube.locate(p);
    const omReal64* lower = _corners.data() + _cube.corner(at);
    const omReal64* upper = lower + _cube.cornersPerRow();
    const omReal64 below = lower[0] + at.right * (lower[1] - lower[0]);
    const omReal64 above = upper[0] + at.right * (upper[1] - upper[0]);
    return at.distance * (below + at.up * (above - below)) < s_insideGauge;
  }

 private:
  static omReal64 longestSide(const HullFacet& facet, const std::vector<SpatialPoint>& points) {
    const SpatialPoint& a = points[facet.vertices[0]];
    omReal64 longest = 0;
    for (const omUInt32 vertex : facet.vertices) {
      const SpatialPoint& b = points[vertex];
      longest = std::max({longest, std::abs(b.x - a.x), std::abs(b.y - a.y), std::abs(b.z - a.z)});
    }
    return 2 * longest;
  }

  void fillCorners(const std::vector<SpatialPoint>& functions) {
    _corners.assign(_cube.cornerCount(), 0);
    for (std::size_t i = 0; i < _corners.size(); ++i) {
      const SpatialPoint p = _cube.cornerPoint(i);
      for (const SpatialPoint& f : functions) _corners[i] = std::max(_corners[i], f.x * p.x + f.y * p.y + f.z * p.z);
    }
  }

  const DirectionCube& _cube;
  omReal64 _squaredRadius = 1;
  std::vector<omReal64> _corners;
};

/// Of every stride-th point the farthest from the frame's origin in each cell of directions.
template <class T>
std::vector<SpatialPoint> farPoints(const T* xyz, std::size_t nbPoints, std::size_t stride, const UnitFrame& frame,
                                    const DirectionCube& cube) {
  std::vector<SpatialPoint> farthest(cube.cellCount(), SpatialPoint{0, 0, 0});
  for (std::size_t i = 0; i < nbPoints; i += stride) {
    const SpatialPoint p = frame(xyz + 3 * i);
    const omReal64 distance = squaredNorm(p);
    if (!(distance > 0)) continue;
    SpatialPoint& best = farthest[cube.cell(cube.locate(p))];
    if (distance > squaredNorm(best)) best = p;
  }
  farthest.erase(
      std::remove_if(farthest.begin(), farthest.end(), [](const SpatialPoint& p) { return !(squaredNorm(p) > 0); }),
      farthest.end());
  return farthest;
}

/// A point near the middle of the points' mass.
template <class T>
SpatialPoint centerOf(const T* xyz, std::size_t nbPoints, std::size_t stride, const SpatialBox& box) {
  SpatialPoint sum{0, 0, 0};
  for (std::size_t i = 0; i < nbPoints; i += stride) {
    sum.x += static_cast<omReal64>(xyz[3 * i]) - box.low.x;
    sum.y += static_cast<omReal64>(xyz[3 * i + 1]) - box.low.y;
    sum.z += static_cast<omReal64>(xyz[3 * i + 2]) - box.low.z;
  }
  const auto count = static_cast<omReal64>((nbPoints - 1) / stride + 1);
  return {box.low.x + sum.x / count, box.low.y + sum.y / count, box.low.z + sum.z / count};
}

bool hasModerateSides(const SpatialBox& box) {
  const SpatialPoint sides{box.high.x - box.low.x, box.high.y - box.low.y, box.high.z - box.low.z};
  return std::min({sides.x, sides.y, sides.z}) >= s_shortestSide &&
         std::max({sides.x, sides.y, sides.z}) <= s_longestSide;
}

std::vector<omUInt32> allIndices(std::size_t nbPoints) {
  std::vector<omUInt32> indices(nbPoints);
  std::iota(indices.begin(), indices.end(), omUInt32{0});
  return indices;
}

/// The points not proven inside, sorted by cells of directions.
template <class T>
std::vector<omUInt32> outerIndices(const T* xyz, std::size_t nbPoints, const UnitFrame& frame,
                                   const DirectionCube& cube, const InteriorTest& test) {
  std::vector<omUInt32> indices;
  std::vector<omUInt32> cells;
  std::vector<omUInt32> starts(cube.cellCount() + 1, 0);
  for (std::size_t i = 0; i < nbPoints; ++i) {
    const SpatialPoint p = frame(xyz + 3 * i);
    if (test.isInside(p)) continue;
    indices.push_back(static_cast<omUInt32>(i));
    cells.push_back(static_cast<omUInt32>(cube.cell(cube.locate(p))));
    ++starts[cells.back() + 1];
  }
  std::partial_sum(starts.begin(), starts.end(), starts.begin());
  std::vector<omUInt32> sorted(indices.size());
  for (std::size_t i = 0; i < indices.size(); ++i) sorted[starts[cells[i]]++] = indices[i];
  return sorted;
}

}  // namespace

template <class T>
std::vector<omUInt32> hullCandidates(const T* xyz, std::size_t nbPoints, const SpatialBox& box) {
  if (nbPoints < s_fewPoints || !hasModerateSides(box)) return allIndices(nbPoints);
  // The hull of more far points fits closer, but costs in proportion to the square of their number.
  const auto cellsPerEdge = static_cast<std::size_t>(0.5 * std::sqrt(std::sqrt(static_cast<omReal64>(nbPoints))));
  const DirectionCube cube(std::clamp<std::size_t>(cellsPerEdge, 3, 24));
  const std::size_t stride = std::max<std::size_t>(nbPoints / (s_pointsPerCell * cube.cellCount()), 1);
  const UnitFrame frame(box, centerOf(xyz, nbPoints, stride, box));
  const std::vector<SpatialPoint> vertices = farPoints(xyz, nbPoints, stride, frame, cube);
  HullConstruction hull(vertices);
  if (hull.run() < 3) return allIndices(nbPoints);
  const InteriorTest test(cube, hull);
  if (!test.isUsable()) return allIndices(nbPoints);
  return outerIndices(xyz, nbPoints, frame, cube, test);
}

// clang-format off
template std::vector<omUInt32> hullCandidates(const omInt32*, std::size_t, const SpatialBox&);
template std::vector<omUInt32> hullCandidates(const omUInt32*, std::size_t, const SpatialBox&);
template std::vector<omUInt32> hullCandidates(const omReal32*, std::size_t, const SpatialBox&);
template std::vector<omUInt32> hullCandidates(const omReal64*, std::size_t, const SpatialBox&);
// clang-format on

}  // namespace ormix::detail
