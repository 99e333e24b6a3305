#pragma once

#include <ORMIXGeometry/Entity/3d/Shape/RowIntersections3d.h>

#include <cstddef>
#include <type_traits>

namespace ormix::geom {

/// A volume of one channel in memory of the caller: the voxel (x, y, z) with 0 <= x < width, 0 <= y < height and 0 <= z
/// < depth is `data[x * columnStride + y * rowStride + z * sliceStride]`. Every value but zero is inside. Strides are
/// of any size and sign, so that any order of the axes, a part of a volume and a mirrored one are views without a copy.
///
/// T is omUInt8, omUInt16, omUInt32 or omInt32, const where voxels are only read. The functions that take a view log
/// and throw ORMIXGeometryException when it cannot be one: voxels at a null pointer, more columns than 2³² - 1, more
/// rows or slices than `RowIntersections::s_maxNbRows`, or more bytes than there are addresses. A view without columns,
/// rows or slices has no voxels, whatever its other fields are.
template <class T>
struct VolumeView {
  T* data = nullptr;                ///< the voxel (0, 0, 0)
  std::size_t width = 0;            ///< number of columns
  std::size_t height = 0;           ///< number of rows
  std::size_t depth = 0;            ///< number of slices
  std::ptrdiff_t rowStride = 0;     ///< elements (not bytes) from one row to the next
  std::ptrdiff_t sliceStride = 0;   ///< elements from one slice to the next
  std::ptrdiff_t columnStride = 1;  ///< elements from one voxel of a row to the next

  /// The same voxels, only to be read.
  template <class U = T, std::enable_if_t<std::is_same_v<U, T> && !std::is_const_v<U>, int> = 0>
  operator VolumeView<const U>() const {
    return {data, width, height, depth, rowStride, sliceStride, columnStride};
  }
};

/// The voxels of a volume that are not zero, without slices before the first and after the last of them. Linear in the
/// voxels of the view; where the rows of slices are not contiguous, up to 64 slices are copied at a time.
/// \throw ORMIXGeometryException, logged, for a view that cannot be one, see VolumeView
/// @{
ORMIX_GEOMETRY_API RowIntersections3d toRowIntersections3d(const VolumeView<const omUInt8>& volume);
ORMIX_GEOMETRY_API RowIntersections3d toRowIntersections3d(const VolumeView<const omUInt16>& volume);
ORMIX_GEOMETRY_API RowIntersections3d toRowIntersections3d(const VolumeView<const omUInt32>& volume);
ORMIX_GEOMETRY_API RowIntersections3d toRowIntersections3d(const VolumeView<const omInt32>& volume);
/// @}

}  // namespace ormix::geom
