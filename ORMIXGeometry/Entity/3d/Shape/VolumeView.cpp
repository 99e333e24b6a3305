#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>
#include <ORMIXGeometry/Entity/3d/Shape/VolumeView.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelRuns.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <limits>
#include <string>

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

/// The slices as masks, copied where they are none.
template <class T>
class Slices {
 public:
  explicit Slices(const VolumeView<const T>& view) : _view(view) {
    const bool isMask = view.columnStride == 1 && view.rowStride >= static_cast<std::ptrdiff_t>(view.width);
    if (!isMask) _copy.resize(view.width * view.height);
  }

  MaskView<const T> at(std::size_t z) {
    const T* const slice = _view.data + static_cast<std::ptrdiff_t>(z) * _view.sliceStride;
    if (_copy.empty()) return {slice, _view.width, _view.height, static_cast<std::size_t>(_view.rowStride)};
    // Along the axis whose voxels are nearer in memory.
    const bool isAlongRows = std::abs(_view.columnStride) <= std::abs(_view.rowStride);
    const std::size_t nbOuter = isAlongRows ? _view.height : _view.width;
    const std::size_t nbInner = isAlongRows ? _view.width : _view.height;
    const std::ptrdiff_t outerStride = isAlongRows ? _view.rowStride : _view.columnStride;
    const std::ptrdiff_t innerStride = isAlongRows ? _view.columnStride : _view.rowStride;
    for (std::size_t outer = 0; outer < nbOuter; ++outer)
      for (std::size_t inner = 0; inner < nbInner; ++inner)
        _copy[isAlongRows ? outer * _view.width + inner : inner * _view.width + outer] =
            slice[static_cast<std::ptrdiff_t>(outer) * outerStride + static_cast<std::ptrdiff_t>(inner) * innerStride];
    return {_copy.data(), _view.width, _view.height, _view.width};
  }

 private:
  VolumeView<const T> _view;
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
