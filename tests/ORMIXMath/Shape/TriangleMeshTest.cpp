#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/TriangleMesh.h>

#include <type_traits>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {
namespace {

template <class T>
struct Mesh {
  std::vector<T> xyz;
  std::vector<omUInt32> indices;

  void addTriangle(omUInt32 a, omUInt32 b, omUInt32 c) { indices.insert(indices.end(), {a, b, c}); }
  TriangleMeshView<T> view() const { return {xyz.data(), indices.data(), indices.size() / 3}; }
};

/// The box from (x, y, z), outward.
template <class T>
Mesh<T> box(T x, T y, T z, T dx, T dy, T dz) {
  Mesh<T> mesh;
  for (int k = 0; k < 8; ++k) {
    mesh.xyz.push_back(k & 1 ? x + dx : x);
    mesh.xyz.push_back(k & 2 ? y + dy : y);
    mesh.xyz.push_back(k & 4 ? z + dz : z);
  }
  const omUInt32 quads[][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
  for (const auto& [a, b, c, d] : quads) {
    mesh.addTriangle(a, b, c);
    mesh.addTriangle(a, c, d);
  }
  return mesh;
}

TEST(TriangleMesh, TetrahedronIsPositiveCounterClockwise) {
  EXPECT_EQ(tetrahedronSignedVolume(1, 0, 0, 0, 1, 0, 0, 0, 1), 1.0 / 6);
  EXPECT_EQ(tetrahedronSignedVolume(0, 1, 0, 1, 0, 0, 0, 0, 1), -1.0 / 6);
  EXPECT_EQ(tetrahedronSignedVolume(2, 3, 4, 4, 6, 8, 1, 1, 7), 0);
  EXPECT_TRUE(std::isnan(tetrahedronSignedVolume(1, 0, 0, 0, std::nan(""), 0, 0, 0, 1)));
}

template <class T>
class TriangleMeshOf : public testing::Test {};
TYPED_TEST_SUITE(TriangleMeshOf, support::Scalars);

TYPED_TEST(TriangleMeshOf, BoxesHaveTheirAreaVolumeAndInertia) {
  const Mesh<TypeParam> mesh = box<TypeParam>(10, 20, 30, 2, 4, 6);
  EXPECT_EQ(meshArea(mesh.view()), 88);
  EXPECT_NEAR(meshSignedVolume(mesh.view()), 48, 1e-11);
  EXPECT_EQ(meshLocalVolume(mesh.view()), 48);
  MeshMoments m;
  ASSERT_TRUE(meshMoments(mesh.view(), m));
  for (const omReal64 error :
       {m.volume - 48, m.centroid.x - 11, m.centroid.y - 22, m.centroid.z - 33, m.inertiaXX - 4 * (16 + 36),
        m.inertiaYY - 4 * (4 + 36), m.inertiaZZ - 4 * (4 + 16), m.inertiaXY, m.inertiaYZ})
    EXPECT_NEAR(error, 0, 1e-11);
}

// A single triangle fills no vector, so that this compares widths too.
TYPED_TEST(TriangleMeshOf, SumsAreThoseOfTheirTriangles) {
  support::Random draw(57);
  Mesh<TypeParam> mesh;
  for (int k = 0; k < 300; ++k)
    mesh.xyz.push_back(std::is_signed_v<TypeParam> ? static_cast<TypeParam>(omInt32(draw()) / 3) : TypeParam(draw()));
  const auto vertex = [&draw] { return draw.below(100); };
  for (std::size_t count = 0; count < 40; ++count, mesh.addTriangle(vertex(), vertex(), vertex())) {
    long double area = 0, localVolume = 0;
    omReal64 volume = 0, largest = 0;
    for (std::size_t t = 0; t < count; ++t) {
      const TriangleMeshView<TypeParam> single{mesh.xyz.data(), &mesh.indices[3 * t], 1};
      area += meshArea(single);
      volume += meshSignedVolume(single);
      // With a triangle of no volume before it, which has the common apex.
      const omUInt32 first = mesh.indices[0];
      const omUInt32 withApex[] = {first, first, first, single.indices[0], single.indices[1], single.indices[2]};
      const omReal64 local = meshLocalVolume(TriangleMeshView<TypeParam>{mesh.xyz.data(), withApex, 2});
      localVolume += local;
      largest = std::max(largest, std::abs(local));
    }
    EXPECT_EQ(meshSignedVolume(mesh.view()), volume) << count;
    const auto roundedArea = static_cast<omReal64>(area);
    EXPECT_NEAR(meshArea(mesh.view()), roundedArea, 2.3e-16 * roundedArea) << count;
    EXPECT_NEAR(meshLocalVolume(mesh.view()), static_cast<omReal64>(localVolume), 1e-14 * largest) << count;
  }
}

TEST(TriangleMesh, VolumesLoseNoMoreThanTheDistanceFromTheOrigin) {
  support::Random random(1618);
  for (int i = 0; i < 300; ++i) {
    const omReal64 distance = std::pow(10.0, static_cast<int>(random.below(10)));
    // A box on a grid, so that its corners are stored exactly wherever it stands.
    const auto coordinate = [&] { return std::floor(distance * random.uniform(0.5, 1)) * (random.below(2) ? 1 : -1); };
    const auto side = [&] { return static_cast<omReal64>(1 + random.below(4)); };
    const omReal64 dx = side(), dy = side(), dz = side();
    const Mesh<omReal64> mesh = box<omReal64>(coordinate(), coordinate(), coordinate(), dx, dy, dz);
    EXPECT_LE(std::abs(meshSignedVolume(mesh.view()) - dx * dy * dz), 2e-16 * meshArea(mesh.view()) * distance);
  }
  Mesh<omReal64> tetrahedron{{0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1}, {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3}};
  for (omReal64& coordinate : tetrahedron.xyz) coordinate += 1e8;
  EXPECT_NEAR(meshSignedVolume(tetrahedron.view()), 1.0 / 6, 1e-8);
}

TEST(TriangleMesh, LocalSumsHoldFarFromTheOrigin) {
  for (const omReal64 offset : {1e6, -1e9}) {
    const Mesh<omReal64> mesh = box<omReal64>(offset, offset, -offset, 1, 1, 1);
    EXPECT_NEAR(meshLocalVolume(mesh.view()), 1, 1e-9);
    MeshMoments moments;
    ASSERT_TRUE(meshMoments(mesh.view(), moments));
    EXPECT_NEAR(moments.volume, 1, 1e-9);
    EXPECT_NEAR(moments.centroid.z, 0.5 - offset, 1e-9);
    EXPECT_NEAR(moments.inertiaXX, 1.0 / 6, 1e-9);
  }
  // No 32-bit product wraps.
  EXPECT_EQ(meshLocalVolume(box<omInt32>(-2000000000, 0, 0, 2000000000, 1, 2).view()), 4e9);
  EXPECT_EQ(meshArea(box<omUInt32>(0, 4000000000u, 0, 4000000000u, 1, 1).view()), 2 * (4e9 + 4e9 + 1));
}

TEST(TriangleMesh, MomentsFollowRotationAndIgnoreTheOrientation) {
  // The tetrahedron of the corner at the origin, by its published integrals: volume 1/6, centroid 1/4, the integrals of
  // x² and x·y 1/60 and 1/120 about the corner, so the tensor's entries about the centroid are 1/80 and 1/480.
  const Mesh<omReal64> mesh{{0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1}, {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3}};
  const Mesh<omReal64> turned{mesh.xyz, {0, 1, 2, 0, 3, 1, 0, 2, 3, 1, 3, 2}};
  EXPECT_EQ(meshSignedVolume(turned.view()), -1.0 / 6);
  for (const auto& view : {mesh.view(), turned.view()}) {
    MeshMoments m;
    ASSERT_TRUE(meshMoments(view, m));
    for (const omReal64 error : {m.volume - 1.0 / 6, m.centroid.y - 0.25, m.inertiaYY - 1.0 / 80,
                                 m.inertiaXY - 1.0 / 480, m.inertiaXZ - 1.0 / 480})
      EXPECT_NEAR(error, 0, 1e-16);
  }
}

TEST(TriangleMesh, NothingAndWhatIsNotFinite) {
  const TriangleMeshView<omReal32> none{nullptr, nullptr, 0};
  MeshMoments moments;
  moments.volume = 7;
  EXPECT_EQ(meshArea(none) + meshSignedVolume(none) + meshLocalVolume(none), 0);
  EXPECT_FALSE(meshMoments(none, moments));
  EXPECT_FALSE(meshMoments(box<omReal64>(0, 0, 0, 1, 1, 0).view(), moments));
  Mesh<omReal64> mesh = box<omReal64>(0, 0, 0, 1, 1, 1);
  mesh.xyz[20] = support::s_nan;
  EXPECT_TRUE(std::isnan(meshArea(mesh.view())) && std::isnan(meshSignedVolume(mesh.view())));
  EXPECT_FALSE(meshMoments(mesh.view(), moments));
  EXPECT_EQ(meshArea(box<omReal64>(0, 0, 0, 1e300, 1, 1).view()), support::s_infinity);
  EXPECT_EQ(moments.volume, 7);
}

}  // namespace
}  // namespace ormix
