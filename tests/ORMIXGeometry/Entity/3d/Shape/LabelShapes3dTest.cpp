#include <ORMIXGeometry/Entity/3d/Shape/Shape3dConstructor.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include "ORMIXGeometry/Entity/3d/Shape/SampleVolumes.h"
#include "support/Checks.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

/// Each voxel has the label of the shape that has it, and the numbers of its component are right.
void expectLabelled(const support::Volume& volume, eVoxelConnectivity connectivity, const Shape3dPtrColl& shapes) {
  int nbLabels = 0;
  const std::vector<int> labels = volume.labels(true, connectivity, nbLabels);
  ASSERT_EQ(shapes.size(), static_cast<std::size_t>(nbLabels));
  const RowIntersections3d voxels = volume.runs();
  const std::vector<VoxelComponent> components = measureComponents(voxels, componentsOf(voxels, connectivity));
  ASSERT_EQ(components.size(), shapes.size());
  for (std::size_t index = 0; index < shapes.size(); ++index) {
    const VoxelComponent& component = components[index];
    const Shape3d& shape = *shapes[index];
    Point3dData<omReal64> sum(0, 0, 0);
    omUInt64 nbVoxels = 0;
    std::array<omUInt64, 6> box{100, 0, 100, 0, 100, 0};
    const omUInt64 firstZ = shape.getRowIntersections().zOffset;
    for (omUInt64 z = firstZ; z < firstZ + shape.getRowIntersections().rowIntersectionsColl.size(); ++z)
      for (omUInt64 y = shape.getStartY(z); y < shape.getEndY(z); ++y)
        for (const PixelRun& run : shape.getRowIntersections(z, y))
          for (omUInt64 x = run.begin; x < run.end; ++x) {
            const std::size_t place =
                ((z + 1) * static_cast<omUInt64>(volume.height + 2) + y + 1) * static_cast<omUInt64>(volume.width + 2) +
                x + 1;
            ASSERT_EQ(labels[place], static_cast<int>(index));
            sum += cast<omReal64>(Point3dData<omUInt32>(static_cast<omUInt32>(x), static_cast<omUInt32>(y),
                                                        static_cast<omUInt32>(z))) +
                   0.5;
            box = {std::min(box[0], x),     std::max(box[1], x + 1), std::min(box[2], y),
                   std::max(box[3], y + 1), std::min(box[4], z),     std::max(box[5], z + 1)};
            ++nbVoxels;
          }
    EXPECT_EQ(component.nbVoxels, nbVoxels);
    EXPECT_EQ(nbVoxels, static_cast<omUInt64>(std::count(labels.begin(), labels.end(), static_cast<int>(index))));
    EXPECT_LE((component.centroid - sum / static_cast<omReal64>(nbVoxels)).normL2(), 1e-13);
    EXPECT_EQ(box, (std::array<omUInt64, 6>{component.xBegin, component.xEnd, component.yBegin, component.yEnd,
                                            component.zBegin, component.zEnd}));
  }
}

void expectEqual(const Shape3dPtrColl& a, const Shape3dPtrColl& b) {
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t index = 0; index < a.size(); ++index) EXPECT_TRUE(compare(*a[index], *b[index], 0));
}

/// Slice by slice, without the empty ones where the round is odd.
Shape3dPtrColl constructed(const RowIntersections3d& voxels, eVoxelConnectivity connectivity, bool withEmptySlices) {
  Shape3dConstructor constructor(connectivity, eSS_VoxelFaces);
  Shape3dPtrColl made;
  for (std::size_t index = 0; index < voxels.rowIntersectionsColl.size(); ++index) {
    const RowIntersections& slice = voxels.rowIntersectionsColl[index];
    if (!withEmptySlices && slice.getNbRows() == 0) continue;
    EXPECT_TRUE(constructor.addSlice(voxels.zOffset + index, slice));
    for (const Shape3dPtr& shape : constructor.takeFinished()) made.push_back(shape);
  }
  for (const Shape3dPtr& shape : constructor.finish()) made.push_back(shape);
  // Regions come as they end; their first voxels tell them apart.
  std::sort(made.begin(), made.end(), [](const Shape3dPtr& a, const Shape3dPtr& b) {
    const auto first = [](const Shape3d& shape) {
      const RowIntersections& slice = shape.getRowIntersections().rowIntersectionsColl[0];
      return std::tuple(shape.getRowIntersections().zOffset, slice.getStartRow(), slice.getRunColl()[0].begin);
    };
    return first(*a) < first(*b);
  });
  return made;
}

TEST(LabelShapes3d, PartVolumesIntoTheirRegions) {
  support::Random random(71);
  for (int round = 0; round < 300; ++round) {
    const support::Volume volume =
        round < 100 ? support::blockOfEight(random.below(256)) : support::randomVolume(random);
    for (const eVoxelConnectivity connectivity : {eVC_6, eVC_26}) {
      const Shape3dPtrColl shapes = labelShapes3d(volume.view(), connectivity, eSS_VoxelFaces);
      expectLabelled(volume, connectivity, shapes);
      for (const Shape3dPtr& shape : shapes)
        EXPECT_NEAR(VolumeMsr3d::measure(*shape), static_cast<omReal64>(shape->getNbVoxels()), 1e-9);
      expectEqual(constructed(volume.runs(), connectivity, round % 2 == 0), shapes);
    }
  }
}

TEST(VolumeView, HasItsAxesInAnyOrder) {
  support::Random random(72);
  support::Volume volume{3, 5, 150};
  for (omUInt8& voxel : volume.voxels) voxel = random.below(2) == 0;
  const RowIntersections3d voxels = volume.runs();
  const std::ptrdiff_t w = volume.width, h = volume.height, d = volume.depth;
  const auto extent = [](std::ptrdiff_t size) { return static_cast<std::size_t>(size); };
  // Strides of x, y and z: first along z, with two elements a voxel, and backwards along x.
  for (const auto& strides : {std::array<std::ptrdiff_t, 3>{h * d, d, 1}, {2, 2 * w, 2 * w * h}, {-1, w, w * h}}) {
    std::vector<omInt32> image(extent(2 * w * h * d));
    const std::ptrdiff_t start = strides[0] < 0 ? w - 1 : 0;
    for (int z = 0; z < d; ++z)
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
          image[extent(start + x * strides[0] + y * strides[1] + z * strides[2])] = volume.has(x, y, z) ? -5 : 0;
    const VolumeView<omInt32> view{image.data() + start, extent(w),  extent(h), extent(d),
                                   strides[1],           strides[2], strides[0]};
    EXPECT_EQ(toRowIntersections3d(view), voxels);
  }
  const omUInt8 voxel = 1;
  constexpr std::ptrdiff_t lowest = std::numeric_limits<std::ptrdiff_t>::min();
  EXPECT_EQ(labelShapes3d(VolumeView<const omUInt8>{&voxel, 1, 1, 1, lowest, lowest, lowest}).size(), 1u);
  EXPECT_TRUE(labelShapes3d(VolumeView<const omUInt8>{nullptr, 5, 0, 7, 0, 0}).empty());
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] {
              measureComponents(voxels, {1, {}});
            }),
            "Components of voxels: their numbers are not those of the runs");
  const auto refused = [](const VolumeView<const omUInt8>& view) {
    return support::thrownBy<ORMIXGeometryException>([&view] { toRowIntersections3d(view); });
  };
  EXPECT_EQ(refused({nullptr, 5, 4, 3, 5, 20}),
            "Volume of 5 columns, 4 rows and 3 slices: its voxels are at a null pointer");
  EXPECT_EQ(refused({&voxel, 5, 4, 3, lowest, 20}),
            "Volume of 5 columns, 4 rows and 3 slices: its strides reach beyond all addresses");
  EXPECT_EQ(refused({&voxel, 5, std::size_t{1} << 40, 3, 0, 0}),
            "Volume of 5 columns, 1099511627776 rows and 3 slices: there can be at most 4294967295 in each direction");
}

TEST(Shape3dConstructor, NeedsMemoryForOpenRegionsOnly) {
  Shape3dConstructor constructor;
  const std::size_t before = mallinfo2().uordblks;
  std::size_t nbShapes = 0, most = 0;
  // Long regions beside dots.
  for (omUInt64 z = 0; z < 100000; ++z) {
    RowIntersections slice;
    ASSERT_TRUE(z % 1000 == 999 || slice.addRun(3, 0, 5));
    ASSERT_TRUE(z % 10 >= 2 || slice.addRun(9, 10, 13));
    ASSERT_TRUE(constructor.addSlice(z, slice));
    nbShapes += constructor.takeFinished().size();
    if (z % 1000 == 500) most = std::max(most, static_cast<std::size_t>(mallinfo2().uordblks));
  }
  nbShapes += constructor.finish().size();
  EXPECT_EQ(nbShapes, 100u + 10000u);
  EXPECT_LT(most, before + 300000);
}

TEST(Shape3dConstructor, RefusesWhatIsOutOfOrder) {
  Shape3dConstructor constructor;
  RowIntersections slice;
  EXPECT_TRUE(slice.addRun(2, 4, 6));
  EXPECT_TRUE(constructor.addSlice(5, slice));
  for (const omUInt64 z : {5, 4})
    EXPECT_EQ(constructor.addSlice(z, slice).getMessage(),
              "Slice " + std::to_string(z) + " cannot be added behind slice 5: slices are added in ascending order");
  EXPECT_EQ(constructor.addSlice(~omUInt64{0}, slice).getMessage(),
            "Slice 18446744073709551615 cannot be added: there is no number behind it");
  EXPECT_TRUE(constructor.addSlice(~omUInt64{0} - 1, slice));
  ASSERT_EQ(constructor.finish().size(), 2u);
  const std::string text = "Shape 3d constructor has not been initialized";
  EXPECT_EQ(constructor.addSlice(7, slice).getMessage(), text);
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { constructor.takeFinished(); }), text);
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { constructor.finish(); }), text);
}

}  // namespace
