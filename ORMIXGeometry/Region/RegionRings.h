#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/ContourRings.h>
#include <ORMIXGeometry/Region/PixelSpacing.h>
#include <ORMIXMath/Enclosing/LargestInscribedCircle.h>

#include <cstddef>
#include <optional>
#include <vector>

// Not installed.
namespace ormix::geom::detail {

/// The boundary of a region as rings, in the unit of the spacing.
struct RegionRings {
  /// One closed ring, whose last vertex repeats the first.
  struct Ring {
    std::size_t begin;  ///< index of its first coordinate
    std::size_t end;    ///< index after its last coordinate
    bool isHole;        ///< whether the region is outside
    bool isOutermost;   ///< whether no other ring encloses it
  };

  std::vector<omReal64> xy;  ///< interleaved coordinates of all rings
  std::vector<Ring> rings;   ///< in the order of their coordinates

  /// All rings, for functions of ORMIXMath; valid until the rings change.
  std::vector<RingView> views() const;
};

/// The rings of contours, x and y multiplied by the spacing.
RegionRings ringsOf(const ContourRings& contours, const PixelSpacing& spacing);

/// The rings of a polygon, with or without holes, a box, a square, a rectangle, or the polygons of a shape, closed
/// where they are not; nothing for entities of other classes. Null polygons and holes are left out.
std::optional<RegionRings> ringsOf(const BaseGeometryEntity2d& entity, const PixelSpacing& spacing);

}  // namespace ormix::geom::detail
