#pragma once

#include <ORMIXGeometry/Entity/2d/Skeleton/SkeletonVertex2d.h>
#include <ORMIXMath/Skeleton/MedialAxis.h>
#include <ORMIXSerialization/Archive/ArchiveItem.h>

/// \file
/// How the vertices of a skeleton and the parts of its boundary are archived: as numeric arrays; not installed.

namespace ormix {

/// A vertex of a skeleton: x, y and radius. Its edges follow from those of the skeleton.
template <>
struct PackedCoordinates<AxisVertex> {
  using Scalar = omReal64;
  static constexpr std::size_t nbColumns = 3;
};

/// A section with two numeric arrays: the ends, and the indices of ring and vertex together with the kind.
/// @{
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const std::vector<AxisPart>& parts);
BoolResult readItem(BaseIArchive& archive, std::string_view key, std::vector<AxisPart>& parts);
/// @}

}  // namespace ormix

namespace ormix::geom {

/// One numeric array, see PackedCoordinates<AxisVertex>.
/// @{
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const std::vector<SkeletonVertex2d>& vertices);
BoolResult readItem(BaseIArchive& archive, std::string_view key, std::vector<SkeletonVertex2d>& vertices);
/// @}

}  // namespace ormix::geom
