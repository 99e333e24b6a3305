#pragma once

#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXSerialization/Archive/ArchiveItem.h>

namespace ormix {

/// A vector of points is archived as one numeric array of two columns.
template <class T>
struct PackedCoordinates<geom::Point2dData<T>> {
  using Scalar = T;                            ///< type of the coordinates
  static constexpr std::size_t nbColumns = 2;  ///< x and y
};

namespace geom {

/// Writes or reads a single point as a section with the entries "x" and "y". A failed read leaves the point unchanged.
/// @{
template <class T>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const Point2dData<T>& point) {
  BoolResult result = archive.beginSection(key);
  if (result) result = ormix::writeItem(archive, "x", point.getX());
  if (result) result = ormix::writeItem(archive, "y", point.getY());
  return result ? archive.endSection() : result;
}

template <class T>
BoolResult readItem(BaseIArchive& archive, std::string_view key, Point2dData<T>& point) {
  T x{};
  T y{};
  BoolResult result = archive.beginSection(key);
  if (result) result = ormix::readItem(archive, "x", x);
  if (result) result = ormix::readItem(archive, "y", y);
  if (result) result = archive.endSection();
  if (result) point.setCoords(x, y);
  return result;
}
/// @}

}  // namespace geom
}  // namespace ormix
