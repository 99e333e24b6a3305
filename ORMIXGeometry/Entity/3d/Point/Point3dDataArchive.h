#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXSerialization/Archive/ArchiveItem.h>

namespace ormix {

/// A vector of points is archived as one numeric array of three columns, one row a point.
template <class T>
struct PackedCoordinates<geom::Point3dData<T>> {
  using Scalar = T;                            ///< type of the numbers
  static constexpr std::size_t nbColumns = 3;  ///< x, y, z
};

namespace geom {

/// Writes or reads a single point: a section with "x", "y" and "z". A point whose reading fails stays unchanged.
/// @{
template <class T>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const Point3dData<T>& point) {
  BoolResult result = archive.beginSection(key);
  if (result) result = ormix::writeItem(archive, "x", point.getX());
  if (result) result = ormix::writeItem(archive, "y", point.getY());
  if (result) result = ormix::writeItem(archive, "z", point.getZ());
  return result ? archive.endSection() : result;
}

template <class T>
BoolResult readItem(BaseIArchive& archive, std::string_view key, Point3dData<T>& point) {
  T x{};
  T y{};
  T z{};
  BoolResult result = archive.beginSection(key);
  if (result) result = ormix::readItem(archive, "x", x);
  if (result) result = ormix::readItem(archive, "y", y);
  if (result) result = ormix::readItem(archive, "z", z);
  if (result) result = archive.endSection();
  if (result) point.setCoords(x, y, z);
  return result;
}
/// @}

}  // namespace geom
}  // namespace ormix
