#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>
#include <ORMIXGeometry/Entity/3d/Shape/VolumeView.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelRuns.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace ormix::geom {

namespace {

template <class T>
void checkView(const VolumeView<T>& view) {
  const auto refuse = [&view](const std::string& reason) {
    logAndThrow("Volume of " + std::to_string(view.width) + " columns, " + std::to_string(view.height) + " rows and " +
                    std::to_string(view.depth) + " slices: " + reason,
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  };
  if (view.data == nullptr) refuse("its voxels are at a null pointer");
  for (const std::size_t size : {view.width, view.height, view.depth})
    if (size > RowIntersections::s_maxNbRows)
      refuse("there can be at most " + std::to_string(RowIntersections::s_maxNbRows) + " in each direction");
  std::size_t nbLeft = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(T);
  const auto take = [&](std::size_t size, std::ptrdiff_t stride) {
    const std::size_t step = stride < 0 ? ~static_cast<std::size_t>(stride) + 1 : static_cast<std::size_t>(stride);
    if (step != 0 && size - 1 > nbLeft / step) refuse("its strides reach beyond all addresses");
    nbLeft -= (size - 1) * step;
  };
  take(view.width, view.columnStride);
  take(view.height, view.rowStride);
  take(view.depth, view.sliceStride);
}

/// The slices as masks. Where their rows are not contiguous, they are copied: one by one, or as many together as share
/// lines of the cache where the voxels of neighbouring slices are nearest in memory.
template <class T>
class Slices {
 public:
  explicit Slices(const VolumeView<const T>& view) : _view(view) {
    // Steps that are never taken may be anything.
    if (view.width == 1) _view.columnStride = 1;
    if (view.height == 1) _view.rowStride = static_cast<std::ptrdiff_t>(view.width);
    if (view.depth == 1) _view.sliceStride = 0;
    if (_view.columnStride == 1 && _view.rowStride >= static_cast<std::ptrdiff_t>(view.width)) return;
    const auto nearest = std::min(std::abs(_view.columnStride), std::abs(_view.rowStride));
    _nbTogether = std::abs(_view.sliceStride) < nearest ? std::min<std::size_t>(view.depth, 64) : 1;
    // Slices that are apart by a power of two would share few lines of the cache.
    _sliceSize = view.width * view.height + 64;
    _copy.resize(_nbTogether * _sliceSize);
  }

  /// The slice z, of slices that are asked for in ascending order.
  MaskView<const T> at(std::size_t z) {
    if (_copy.empty())
      return {_view.data + static_cast<std::ptrdiff_t>(z) * _view.sliceStride, _view.width, _view.height,
              static_cast<std::size_t>(_view.rowStride)};
    if (z % _nbTogether == 0) copyFrom(z);
    return {_copy.data() + z % _nbTogether * _sliceSize, _view.width, _view.height, _view.width};
  }

 private:
  struct Axis {
    std::size_t size;
    std::ptrdiff_t from;  // stride in the view
    std::size_t to;       // stride in the copy
  };

  /// In the order of the view's memory, but with rows of the copy not outermost.
  void copyFrom(std::size_t z) {
    std::array<Axis, 3> axes{Axis{_view.width, _view.columnStride, 1}, Axis{_view.height, _view.rowStride, _view.width},
                             Axis{std::min(_nbTogether, _view.depth - z), _view.sliceStride, _sliceSize}};
    std::sort(axes.begin(), axes.end(),
              [](const Axis& a, const Axis& b) { return std::abs(a.from) > std::abs(b.from); });
    if (axes[0].to == 1) std::swap(axes[0], axes[1]);
    const T* const first = _view.data + static_cast<std::ptrdiff_t>(z) * _view.sliceStride;
    const auto offset = [&axes](std::size_t axis, std::size_t index) {
      return static_cast<std::ptrdiff_t>(index) * axes[axis].from;
    };
    for (std::size_t i = 0; i < axes[0].size; ++i)
      for (std::size_t j = 0; j < axes[1].size; ++j) {
        const T* const from = first + (offset(0, i) + offset(1, j));
        T* const to = _copy.data() + i * axes[0].to + j * axes[1].to;
        for (std::size_t k = 0; k < axes[2].size; ++k) to[k * axes[2].to] = from[offset(2, k)];
      }
  }

  VolumeView<const T> _view;
  std::size_t _nbTogether = 0;
  std::size_t _sliceSize = 0;
  std::vector<T> _copy;
};

template <class T>
RowIntersections3d voxelsOf(const VolumeView<const T>& volume) {
  RowIntersections3d voxels;
  if (volume.width == 0 || volume.height == 0 || volume.depth == 0) return voxels;
  checkView(volume);
  Slices<T> slices(volume);
  for (std::size_t z = 0; z < volume.depth; ++z) {
    RowIntersections slice = toRowIntersections(slices.at(z));
    if (voxels.rowIntersectionsColl.empty()) {
      if (slice.getNbRows() == 0) continue;
      voxels.zOffset = z;
    }
    voxels.rowIntersectionsColl.push_back(std::move(slice));
  }
  detail::dropEmptySlices(voxels);
  return voxels;
}

}  // namespace

// clang-format off
RowIntersections3d toRowIntersections3d(const VolumeView<const omUInt8>& volume) { return voxelsOf(volume); }
RowIntersections3d toRowIntersections3d(const VolumeView<const omUInt16>& volume) { return voxelsOf(volume); }
RowIntersections3d toRowIntersections3d(const VolumeView<const omUInt32>& volume) { return voxelsOf(volume); }
RowIntersections3d toRowIntersections3d(const VolumeView<const omInt32>& volume) { return voxelsOf(volume); }
// clang-format on

}  // namespace ormix::geom
