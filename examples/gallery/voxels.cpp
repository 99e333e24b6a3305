// A volume of voxels: its exact boundary (left) and a smooth one within half a voxel of it (right), both closed.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>

int main() {
  using namespace ormix;
  using namespace ormix::geom;

  // Two balls that have grown together, and a tunnel through one of them.
  constexpr int width = 15, height = 9, depth = 9;
  std::vector<omUInt8> volume(width * height * depth);
  for (int z = 0; z < depth; ++z)
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) {
        const double dx = x - 4, dy = y - 4, dz = z - 4;
        const bool isInside = std::hypot(dx, dy, dz) < 4.2 || std::hypot(dx - 6.5, dy, dz + 1) < 3.2;
        volume[static_cast<std::size_t>((z * height + y) * width + x)] = isInside && std::hypot(dx, dz) > 1.5;
      }
  const RowIntersections3d voxels =
      toRowIntersections3d(VolumeView<const omUInt8>{volume.data(), width, height, depth, width, width * height});

  SvgWriter picture(1000);
  Mesh3d<double> smooth = surfaceNets<double>(voxels, eVC_26).front()->getExteriorMesh();
  drawMesh(picture, voxelSurfaces<double>(voxels, eVC_26).front()->getExteriorMesh(), {{3, -2, 2}});
  TranslationTransform3d(7, 12, 0).applyInSitu(smooth);  // to the right, as it is looked at from (3, -2, 2)
  drawMesh(picture, smooth, {{3, -2, 2}});
  return picture.write("voxels.svg") ? 0 : 1;
}
