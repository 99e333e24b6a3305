#include <ORMIXMath/Contact/FacingTriangles.h>

#include <array>
#include <cmath>
#include <utility>

namespace ormix::detail {

namespace {

constexpr int s_nbSectors = 54;

/// Corner k, 0 to 3, of a sector on the cube of half size 3: sectors 9 f to 9 f + 8 are those of side f, which are x =
/// 3, x = -3, y = 3 and so on.
constexpr std::array<int, 3> cornerOf(int sector, int k) {
  const int side = sector / 9;
  const int axis = side / 2;
  const int u = 2 * (sector % 9 / 3 + k / 2) - 3;
  const int v = 2 * (sector % 3 + k % 2) - 3;
  const int across = side % 2 == 0 ? 3 : -3;
  if (axis == 0) return {across, u, v};
  if (axis == 1) return {u, across, v};
  return {u, v, across};
}

/// Whether some normals of two sectors oppose: then those of two of their corners do.
constexpr bool canOppose(int sector, int other) {
  for (int k = 0; k < 4; ++k)
    for (int l = 0; l < 4; ++l) {
      const std::array<int, 3> a = cornerOf(sector, k);
      const std::array<int, 3> b = cornerOf(other, l);
      if (a[0] * b[0] + a[1] * b[1] + a[2] * b[2] < 0) return true;
    }
  return false;
}

constexpr std::array<omUInt64, s_nbSectors> s_opposing = opposingTable<s_nbSectors>(canOppose);

unsigned sectorOf(const SpatialPoint& normal) {
  const omReal64 x = std::abs(normal.x), y = std::abs(normal.y), z = std::abs(normal.z);
  // The place on a side of the cube, 0 to 2 along each of its axes.
  const auto cell = [](omReal64 along, omReal64 across) {
    return static_cast<unsigned>(std::min(2.0, 1.5 + 1.5 * (along / across)));
  };
  if (x >= y && x >= z) return (normal.x > 0 ? 0 : 9) + 3 * cell(normal.y, x) + cell(normal.z, x);
  if (y >= z) return (normal.y > 0 ? 18 : 27) + 3 * cell(normal.x, y) + cell(normal.z, y);
  return (normal.z > 0 ? 36 : 45) + 3 * cell(normal.x, z) + cell(normal.y, z);
}

}  // namespace

omUInt64 FacingTriangles::opposingSectors(const SpatialPoint& normal) { return s_opposing[sectorOf(normal)]; }

FacingTriangles::FacingTriangles(std::vector<SurfaceTriangle> triangles)
    : _triangles(std::move(triangles)),
      _tree(
          _triangles, [](const SurfaceTriangle& item) { return sectorOf(item.normal); }, eBO_Curve) {}

}  // namespace ormix::detail
