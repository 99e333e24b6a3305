#pragma once

// Volumes of a few voxels, and what is known about them without runs.

#include <ORMIXGeometry/Entity/3d/Shape/ConnectedVoxels.h>
#include <ORMIXGeometry/Entity/3d/Shape/VolumeView.h>

#include <vector>

#include "support/Random.h"

namespace support {

/// A dense volume; what is outside is background.
struct Volume {
  int width, height, depth;
  std::vector<ormix::omUInt8> voxels = std::vector<ormix::omUInt8>(static_cast<std::size_t>(width * height * depth));

  ormix::omUInt8& at(int x, int y, int z) { return voxels[static_cast<std::size_t>((z * height + y) * width + x)]; }
  bool has(int x, int y, int z) const {
    const bool isInside = x >= 0 && x < width && y >= 0 && y < height && z >= 0 && z < depth;
    return isInside && voxels[static_cast<std::size_t>((z * height + y) * width + x)] != 0;
  }
  ormix::geom::VolumeView<const ormix::omUInt8> view() const {
    return {voxels.data(),
            static_cast<std::size_t>(width),
            static_cast<std::size_t>(height),
            static_cast<std::size_t>(depth),
            width,
            width * height};
  }
  ormix::geom::RowIntersections3d runs() const { return toRowIntersections3d(view()); }

  /// The components of voxels, or of what is around and between them, by flood filling; -1 for the others. The volume
  /// that is labelled has one more voxel at each end, so that what reaches infinity is connected.
  std::vector<int> labels(bool ofVoxels, ormix::geom::eVoxelConnectivity connectivity, int& nbLabels) const {
    const int w = width + 2, h = height + 2, d = depth + 2;
    std::vector<int> result(static_cast<std::size_t>(w * h * d), -1);
    const auto label = [&](int x, int y, int z) -> int& {
      return result[static_cast<std::size_t>((z * h + y) * w + x)];
    };
    const auto isOpen = [&](int x, int y, int z) {
      return x >= 0 && x < w && y >= 0 && y < h && z >= 0 && z < d && has(x - 1, y - 1, z - 1) == ofVoxels &&
             label(x, y, z) < 0;
    };
    nbLabels = 0;
    for (int start = 0; start < w * h * d; ++start) {
      std::vector<std::array<int, 3>> pending{{start % w, start / w % h, start / (w * h)}};
      if (!isOpen(pending[0][0], pending[0][1], pending[0][2])) continue;
      while (!pending.empty()) {
        const auto [x, y, z] = pending.back();
        pending.pop_back();
        if (!isOpen(x, y, z)) continue;
        label(x, y, z) = nbLabels;
        for (int step = 0; step < 27; ++step) {
          const int dx = step % 3 - 1, dy = step / 3 % 3 - 1, dz = step / 9 - 1;
          if (connectivity == ormix::geom::eVC_6 && dx * dx + dy * dy + dz * dz > 1) continue;
          pending.push_back({x + dx, y + dy, z + dz});
        }
      }
      ++nbLabels;
    }
    return result;
  }
};

/// Of random size up to 9 in each direction and random density.
inline Volume randomVolume(Random& random) {
  Volume volume{1 + static_cast<int>(random.below(9)), 1 + static_cast<int>(random.below(9)),
                1 + static_cast<int>(random.below(9))};
  const ormix::omUInt32 density = 1 + random.below(15);
  for (ormix::omUInt8& voxel : volume.voxels) voxel = random.below(16) < density;
  return volume;
}

/// The voxels of the 2 × 2 × 2 block whose bits are set.
inline Volume blockOfEight(unsigned pattern) {
  Volume volume{2, 2, 2};
  for (unsigned bit = 0; bit < 8; ++bit) volume.voxels[bit] = pattern >> bit & 1;
  return volume;
}

}  // namespace support
