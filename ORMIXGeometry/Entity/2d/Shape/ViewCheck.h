#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <limits>
#include <string>

/// \file
/// What every function that takes a MaskView checks first; not installed.

namespace ormix::geom::detail {

/// \throw ORMIXGeometryException, logged, for views that cannot be one, see MaskView
template <class T>
void checkView(const MaskView<T>& view) {
  if (view.width == 0 || view.height == 0) return;
  const std::string size = std::to_string(view.width) + " columns and " + std::to_string(view.height) + " rows";
  const auto refuse = [&size](const std::string& reason) {
    logAndThrow("Mask of " + size + ": " + reason, __PRETTY_FUNCTION__, __FILE__, __LINE__);
  };
  if (view.data == nullptr) refuse("its pixels are at a null pointer");
  if (view.rowStride < view.width)
    refuse("rows are " + std::to_string(view.rowStride) + " elements apart, less than their columns");
  if (view.width > std::numeric_limits<omUInt32>::max())
    refuse("there can be at most " + std::to_string(std::numeric_limits<omUInt32>::max()) + " columns");
  if (view.height > RowIntersections::s_maxNbRows)
    refuse("there can be at most " + std::to_string(RowIntersections::s_maxNbRows) + " rows");
  const std::size_t nbElements = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(T);
  if (view.width > nbElements || view.height - 1 > (nbElements - view.width) / view.rowStride)
    refuse("rows that are " + std::to_string(view.rowStride) + " elements apart reach beyond all addresses");
}

}  // namespace ormix::geom::detail
