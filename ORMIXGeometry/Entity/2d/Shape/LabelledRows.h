#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>

#include <vector>

namespace ormix::geom {

/// The pixels of one label.
struct LabelledRows {
  omInt64 label = 0;      ///< as the image has it, never 0
  RowIntersections rows;  ///< the pixels with this label, at least one; they need not be connected
};

/// The pixels of each label of an image but 0, in ascending order of the labels. There may be as many labels as pixels.
/// Linear in the pixels and in the rows of the result: each label has all rows from its first to its last pixel.
/// \throw ORMIXGeometryException, logged, for a view that cannot be one, see MaskView, and if the labels have more than
/// `RowIntersections::s_maxNbRows` rows together, or there are 2³² runs or more
/// @{
ORMIX_GEOMETRY_API std::vector<LabelledRows> labelledRows(const MaskView<const omUInt8>& labels);
ORMIX_GEOMETRY_API std::vector<LabelledRows> labelledRows(const MaskView<const omUInt16>& labels);
ORMIX_GEOMETRY_API std::vector<LabelledRows> labelledRows(const MaskView<const omUInt32>& labels);
ORMIX_GEOMETRY_API std::vector<LabelledRows> labelledRows(const MaskView<const omInt32>& labels);
/// @}

}  // namespace ormix::geom
