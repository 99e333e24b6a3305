#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

#include <cstddef>
#include <type_traits>

namespace ormix::geom {

/// An image of one channel in memory of the caller: the pixel (x, y) with 0 <= x < width and 0 <= y < height is
/// `data[y * rowStride + x]`. In a mask every value but zero is inside; in a label image each value but zero is the
/// label of a region.
///
/// T is omUInt8, omUInt16, omUInt32 or omInt32, const where pixels are only read. The functions that take a view log
/// and throw ORMIXGeometryException when it cannot be one: pixels at a null pointer, a stride below the width, more
/// columns than 2³² - 1 or more rows than `RowIntersections::s_maxNbRows`, or more bytes than there are addresses. A
/// view without columns or without rows has no pixels, whatever its other fields are.
template <class T>
struct MaskView {
  T* data = nullptr;          ///< the pixel (0, 0)
  std::size_t width = 0;      ///< number of columns
  std::size_t height = 0;     ///< number of rows
  std::size_t rowStride = 0;  ///< elements (not bytes) from one row to the next

  /// The same pixels, only to be read.
  template <class U = T, std::enable_if_t<std::is_same_v<U, T> && !std::is_const_v<U>, int> = 0>
  operator MaskView<const U>() const {
    return {data, width, height, rowStride};
  }
};

/// The pixels of a mask that are not zero; row y of the mask is row y of the result. Linear in the pixels.
/// \throw ORMIXGeometryException, logged, for a view that cannot be one, see MaskView
/// @{
ORMIX_GEOMETRY_API RowIntersections toRowIntersections(const MaskView<const omUInt8>& mask);
ORMIX_GEOMETRY_API RowIntersections toRowIntersections(const MaskView<const omUInt16>& mask);
ORMIX_GEOMETRY_API RowIntersections toRowIntersections(const MaskView<const omUInt32>& mask);
ORMIX_GEOMETRY_API RowIntersections toRowIntersections(const MaskView<const omInt32>& mask);
/// @}

/// Writes all pixels of the view: `inside` where they are in `rows`, otherwise 0. Elements between two rows of the view
/// keep their values. Linear in the pixels of the view.
/// \return a failure, with nothing written, if a pixel of `rows` lies outside the view, or `inside` is 0
/// \throw ORMIXGeometryException, logged, for a view that cannot be one, see MaskView
/// @{
ORMIX_GEOMETRY_API BoolResult toMask(const RowIntersections& rows, const MaskView<omUInt8>& view, omUInt8 inside = 1);
ORMIX_GEOMETRY_API BoolResult toMask(const RowIntersections& rows, const MaskView<omUInt16>& view, omUInt16 inside = 1);
ORMIX_GEOMETRY_API BoolResult toMask(const RowIntersections& rows, const MaskView<omUInt32>& view, omUInt32 inside = 1);
ORMIX_GEOMETRY_API BoolResult toMask(const RowIntersections& rows, const MaskView<omInt32>& view, omInt32 inside = 1);
/// @}

}  // namespace ormix::geom
