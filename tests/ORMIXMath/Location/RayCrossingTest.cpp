#include <ORMIXMath/Distance/Orientation3d.h>
#include <ORMIXMath/Hull/ConvexHull3d.h>
#include <ORMIXMath/Location/RayCrossing.h>

#include "support/Random.h"

namespace {

using namespace ormix;

// On a coarse grid most rays run through edges and vertices. The oracle of a convex body is the side of each face.
TEST(RayCrossing, IsOddExactlyInside) {
  support::Random random(1511);
  for (int trial = 0; trial < 300; ++trial) {
    std::vector<omInt32> xyz(3 * (4 + random.below(12)));
    const omUInt32 size = 2 + random.below(5);
    for (omInt32& coordinate : xyz) coordinate = static_cast<omInt32>(random.below(size));
    std::vector<IndexTriangle> triangles;
    if (!convexHull3d(xyz.data(), xyz.size() / 3, triangles)) continue;
    const auto corner = [&xyz](omUInt32 i) { return toSpatialPoint(xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]); };
    for (int probe = 0; probe < 50; ++probe) {
      const SpatialPoint p{0.5 * random.below(2 * size), 0.5 * random.below(2 * size), 0.5 * random.below(2 * size)};
      int nbCrossed = 0;
      bool isInside = true, isOutside = false, touches = false;
      for (const IndexTriangle& t : triangles) {
        const SpatialPoint a = corner(t[0]), b = corner(t[1]), c = corner(t[2]);
        const int side = orientation3d(a, b, c, p);
        isInside = isInside && side < 0;
        isOutside = isOutside || side > 0;
        const auto crossing = detail::rayCrossing(p, a, b, c);
        nbCrossed += crossing == detail::eRC_Crosses ? 1 : 0;
        touches = touches || crossing == detail::eRC_Touches;
        // The other way round it is the same triangle.
        EXPECT_EQ(crossing, detail::rayCrossing(p, c, b, a));
      }
      if (!isInside && !isOutside) {
        EXPECT_TRUE(touches);
      } else if (!touches) {
        EXPECT_EQ(nbCrossed % 2 == 1, isInside);
      } else {
        EXPECT_TRUE(isOutside);  // in the plane of a face
      }
    }
  }
}

}  // namespace
