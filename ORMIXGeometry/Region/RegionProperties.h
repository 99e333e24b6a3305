#pragma once

#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/2d/Rectangle/Rectangle2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>
#include <ORMIXGeometry/Measure/2d/HuMoments2dO3.h>
#include <ORMIXGeometry/Measure/2d/Moments2dO3.h>
#include <ORMIXGeometry/Region/PixelSpacing.h>
#include <ORMIXMath/Hull/RotatingCalipers.h>

#include <limits>

namespace ormix::geom {

/// What regionProperties() measures besides size, place, holes and the default perimeter; what is left out stays NaN,
/// or 0 where it counts. All of it takes some 20 times as long as none for a region of 1,000 pixels.
struct RegionOptions {
  bool allPerimeters = true;  ///< the perimeters besides the default one
  bool moments = true;        ///< moments, Hu moments, equivalent ellipse
  bool hull = true;           ///< convex hull and what follows from it: Feret diameters, smallest rectangle
  bool circles = true;        ///< enclosing and inscribed circle
  /// Which pixels of a set belong together; entities say it themselves.
  ePixelConnectivity connectivity = ePC_8;
};

/// What people measure on a region. Lengths are in the unit of the spacing, areas in its square, angles in radians from
/// the x axis towards the y axis. Of a set of pixels, hulls, boxes, circles and Feret diameters are those of the
/// pixels' squares, so that a single pixel has the box 1 × 1 and a Feret diameter of √2; a hull bridges notches and
/// holes, so these do not tell of them. docs/accuracy.md has the errors on digitized disks and squares.
struct RegionProperties {
  static constexpr omReal64 s_none = std::numeric_limits<omReal64>::quiet_NaN();  ///< not measured
  /// A diameter that was not measured.
  static constexpr FeretDiameter noFeretDiameter() { return {s_none, s_none, {s_none, s_none}, {s_none, s_none}}; }

  /// \name Size and place
  /// @{
  omUInt64 nbPixels = 0;  ///< number of pixels; 0 of an entity that has none
  omReal64 area =
      s_none;  ///< of the pixels, which is that of their polygons; of an entity its AreaMsr2d, without holes
  Point2dData<omReal64> centroid;        ///< of the area
  BoundingBox2d<omReal64> box;           ///< with the sides along x and y
  omReal64 extent = s_none;              ///< area / area of the box, at most 1
  omReal64 equivalentDiameter = s_none;  ///< 2 √(area / π): that of the disk of the same area
  /// @}

  /// \name Holes
  /// Counted in the boundary: islands in holes are parts of the region.
  /// @{
  omUInt64 nbParts = 0;        ///< number of exterior rings
  omUInt64 nbHoles = 0;        ///< number of interior rings
  omInt64 eulerNumber = 0;     ///< nbParts − nbHoles
  omReal64 holeArea = s_none;  ///< area within the outermost rings that is not the region's
  /// @}

  /// \name Perimeter, that of holes included
  /// @{
  /// The best guess for a region of any shape: of pixels cornerCountPerimeter(), of an entity its own.
  omReal64 perimeter = s_none;
  omReal64 polygonPerimeter = s_none;        ///< of the polygons; of pixels edgePerimeter()
  omReal64 croftonPerimeter = s_none;        ///< of pixels: croftonPerimeter()
  omReal64 minimumLengthPerimeter = s_none;  ///< of pixels: minimumLengthPerimeter()
  /// 4 π area / perimeter²: 1 for a disk, less for every other shape, with the default perimeter.
  omReal64 circularity = s_none;
  /// @}

  /// \name Moments
  /// @{
  Moments2dO3 moments;      ///< up to the third order
  HuMoments2dO3 huMoments;  ///< invariants of turned, moved and scaled regions
  Ellipse2d<omReal64> equivalentEllipse{
      {s_none, s_none},
      s_none,
      s_none,
      s_none};                     ///< of the same second moments, see equivalentEllipse(): axes and orientation
  omReal64 eccentricity = s_none;  ///< of that ellipse: 0 for a circle, near 1 for a needle
  /// @}

  /// \name Convex hull
  /// @{
  omReal64 convexArea = s_none;  ///< of the hull
  omReal64 convexPerimeter =
      s_none;                   ///< of the hull; of pixels that of their centers, and the perimeter of a pixel's disk
  omReal64 solidity = s_none;   ///< area / convexArea, at most 1
  omReal64 convexity = s_none;  ///< convexPerimeter / perimeter, about 1 for a convex region, else less
  FeretDiameter greatestFeret = noFeretDiameter();  ///< the greatest distance of two points of the region
  FeretDiameter leastFeret =
      noFeretDiameter();  ///< the least distance of two parallel lines around the region, its width
  FeretDiameter feretAcross = noFeretDiameter();  ///< at right angle to the greatest one
  Rectangle2d<omReal64> smallestRectangle{
      {s_none, s_none}, s_none, s_none, s_none};  ///< of the least area around the region, in any direction
  omReal64 roundness = s_none;  ///< 4 area / (π greatestFeret²): 1 for a disk, less the longer a region is
  /// @}

  /// \name Circles
  /// @{
  Circle2d<omReal64> enclosingCircle{{s_none, s_none}, s_none};  ///< the smallest circle around the region
  Circle2d<omReal64> inscribedCircle{{s_none, s_none},
                                     s_none};  ///< a largest circle in it; islands and holes are respected
  /// @}
};

/// Measures a set of pixels. The connectivity of the options says which pixels belong together. Pixels and moments are
/// linear in the runs, the rest in the corners of the boundary times their logarithm.
/// \throw ORMIXGeometryException, logged first, when there are no pixels or the spacing is not positive and finite
ORMIX_GEOMETRY_API RegionProperties regionProperties(const RowIntersections& pixels, const PixelSpacing& spacing = {},
                                                     const RegionOptions& options = {});

/// Measures an entity that has an area: polygons with and without holes, boxes, squares and rectangles by their
/// vertices, circles and ellipses in closed form, and a shape by its pixels where it has some, else by its polygons.
/// Coordinates are multiplied by the spacing. Areas are counted positive: a ring in the direction that is not its own
/// counts as turned.
/// \throw ORMIXGeometryException, logged first, when the class has no area, the area is zero or not finite, or the spacing
/// is not positive and finite
/// @{
ORMIX_GEOMETRY_API RegionProperties regionProperties(const BaseGeometryEntity2d& entity,
                                                     const PixelSpacing& spacing = {},
                                                     const RegionOptions& options = {});
ORMIX_GEOMETRY_API RegionProperties regionProperties(const Shape2d& shape, const PixelSpacing& spacing = {},
                                                     const RegionOptions& options = {});
/// @}

}  // namespace ormix::geom
