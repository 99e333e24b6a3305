#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Export.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstddef>
#include <vector>

namespace ormix::geom {

/// Two regions of a collection that touch.
struct RegionContact {
  std::size_t first;        ///< index of a region
  std::size_t second;       ///< index of another one, above first
  omReal64 lengthOnFirst;   ///< of the parts of the first one's boundary that are given to the second one
  omReal64 lengthOnSecond;  ///< the reverse

  /// The mean of both.
  omReal64 length() const { return 0.5 * lengthOnFirst + 0.5 * lengthOnSecond; }
};

/// The boundary of one region of a collection.
struct RegionBorder {
  omReal64 perimeter = 0;   ///< of all rings
  omReal64 freeLength = 0;  ///< of the parts that are not in contact with any other region
};

/// Which regions touch, and for how long: a graph with the regions as nodes (Rosenfeld1974).
struct RegionContacts {
  std::vector<RegionContact> contacts;  ///< the edges, ascending by first and second; their lengths are not both 0
  std::vector<RegionBorder> borders;    ///< one for each region
};

/// All contacts between regions at once: polygons, polygons with holes, or shapes, which need not be of one class, such
/// as the shapes of an image of labels.
///
/// Each point of a boundary within the gap of parts of other regions that face it, as contactLength() says, is given to
/// the nearest one, of equally near regions to that with the lowest index, and never to its own region. So the lengths
/// of a region's contacts and its free length sum to its perimeter. Where a third region lies between two, or there are
/// several within the gap, lengths are less than those of contactLength().
///
/// With gap 0 it is the border that both have in common, decided exactly; between regions that do not overlap it is
/// that of contactLength(). For a partition into pixels that is linear in the border, but for sorting the edges of each
/// row and column of the image. Else about O(n log n) in the edges of all regions; where most edges lie upon others, as
/// where regions overlap, up to O(n^2).
/// \throw ORMIXGeometryException, logged first, as contactLength(), and for a null pointer
/// @{
ORMIX_GEOMETRY_API RegionContacts contacts(const std::vector<const BaseGeometryEntity2d*>& regions, omReal64 gap);
template <class Entity>
RegionContacts contacts(const std::vector<boost::shared_ptr<Entity>>& regions, omReal64 gap) {
  std::vector<const BaseGeometryEntity2d*> pointers;
  for (const auto& region : regions) pointers.push_back(region.get());
  return contacts(pointers, gap);
}
template <class Entity>
RegionContacts contacts(const std::vector<Entity>& regions, omReal64 gap) {
  std::vector<const BaseGeometryEntity2d*> pointers;
  for (const Entity& region : regions) pointers.push_back(&region);
  return contacts(pointers, gap);
}
/// @}

}  // namespace ormix::geom
