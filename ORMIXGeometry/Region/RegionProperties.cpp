#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/2d/MomentsMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PixelMoments.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Region/ContourPerimeters.h>
#include <ORMIXGeometry/Region/PerimeterEstimators.h>
#include <ORMIXGeometry/Region/RegionProperties.h>
#include <ORMIXGeometry/Region/RegionRings.h>
#include <ORMIXGeometry/Tools/Extent/PlanarExtents.h>
#include <ORMIXGeometry/Transform/2d/EnvelopeTransform2d.h>
#include <ORMIXMath/Enclosing/SmallestBall.h>
#include <ORMIXMath/Hull/ConvexHull2d.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ring.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom {

namespace {

using detail::RegionRings;

[[noreturn]] void refuse(const std::string& why) {
  logAndThrow("No region properties: " + why, "regionProperties", __FILE__, __LINE__);
}

void require(const BoolResult& result) {
  if (!result) refuse(result.getMessage());
}

void checkSpacing(const PixelSpacing& spacing) {
  for (const omReal64 side : {spacing.x, spacing.y})
    if (!std::isfinite(side) || side <= 0)
      refuse("the spacing " + std::to_string(side) + " is not positive and finite");
}

Moments2dO3 scaledMoments(const Moments2dO3& moments, const PixelSpacing& spacing) {
  PlanarMoments scaled = moments.getPlanarMoments();
  scaled.originX *= spacing.x;
  scaled.originXRest *= spacing.x;
  scaled.originY *= spacing.y;
  scaled.originYRest *= spacing.y;
  for (omUInt32 p = 0; p <= PlanarMoments::s_maxOrder; ++p)
    for (omUInt32 q = 0; p + q <= PlanarMoments::s_maxOrder; ++q)
      scaled.about[PlanarMoments::index(p, q)] *= std::pow(spacing.x, p + 1) * std::pow(spacing.y, q + 1);
  // A ring that is turned round has the mass of the other sign.
  return Moments2dO3(scaled.about[0] < 0 ? -scaled : scaled);
}

void setSize(omReal64 area, const Point2dData<omReal64>& centroid, RegionProperties& p) {
  if (!(area > 0) || !std::isfinite(area)) refuse("the area is " + std::to_string(area));
  p.area = area;
  p.centroid = centroid;
  p.equivalentDiameter = 2 * std::sqrt(area / s_pi);
}

/// Size of pixels alone: less than half of what their moments take.
void setSize(const RowIntersections& pixels, const PixelSpacing& spacing, RegionProperties& p) {
  // Twice the sums relative to the first pixel; exact up to 2^53, as nearly always.
  const omReal64 x0 = pixels.getRunColl().front().begin;
  omReal64 sumX = 0, sumY = 0;
  for (omUInt64 y = pixels.getStartRow(); y < pixels.getEndRow(); ++y) {
    const omReal64 height = 2 * static_cast<omReal64>(y - pixels.getStartRow()) + 1;
    for (const PixelRun& run : pixels.getRow(y)) {
      const omReal64 begin = run.begin - x0, end = run.end - x0;
      sumX += (end - begin) * (end + begin);
      sumY += (end - begin) * height;
    }
  }
  const auto count = static_cast<omReal64>(p.nbPixels);
  setSize(count * spacing.x * spacing.y,
          {(x0 + 0.5 * sumX / count) * spacing.x,
           (static_cast<omReal64>(pixels.getStartRow()) + 0.5 * sumY / count) * spacing.y},
          p);
}

/// Moments and what follows from them, size among them.
void setMoments(const Moments2dO3& moments, const RegionOptions& options, RegionProperties& p) {
  setSize(moments.getMoment(0, 0), moments.getCentroid().getCoords(), p);
  if (!options.moments) return;
  p.moments = moments;
  p.huMoments = HuMoments2dO3(moments);
  p.equivalentEllipse = equivalentEllipse(moments);
  p.eccentricity = eccentricity(moments);
}

/// What is a quotient of what was measured before.
void setQuotients(RegionProperties& p) {
  p.extent = p.area / ((p.box.getXMax() - p.box.getXMin()) * (p.box.getYMax() - p.box.getYMin()));
  p.circularity = 4 * s_pi * p.area / (p.perimeter * p.perimeter);
  p.solidity = p.area / p.convexArea;
  p.convexity = p.convexPerimeter / p.perimeter;
  if (p.greatestFeret.length > 0) p.roundness = 4 * p.area / (s_pi * p.greatestFeret.length * p.greatestFeret.length);
}

void setBoxAndHoles(const RegionRings& rings, RegionProperties& p) {
  omReal64 xMin = rings.xy[0], xMax = xMin, yMin = rings.xy[1], yMax = yMin;
  for (std::size_t at = 0; at < rings.xy.size(); at += 2) {
    xMin = std::min(xMin, rings.xy[at]);
    xMax = std::max(xMax, rings.xy[at]);
    yMin = std::min(yMin, rings.xy[at + 1]);
    yMax = std::max(yMax, rings.xy[at + 1]);
  }
  p.box = {xMin, yMin, xMax, yMax};
  omReal64 filledArea = 0;
  for (const RegionRings::Ring& ring : rings.rings) {
    ++(ring.isHole ? p.nbHoles : p.nbParts);
    if (ring.isOutermost)
      filledArea += std::abs(ringSignedArea(rings.xy.data() + ring.begin, (ring.end - ring.begin) / 2));
  }
  p.eulerNumber = static_cast<omInt64>(p.nbParts) - static_cast<omInt64>(p.nbHoles);
  p.holeArea = p.nbHoles == 0 ? 0 : filledArea - p.area;
}

omReal64 lengthOf(const RegionRings& rings) {
  omReal64 length = 0;
  for (const RegionRings::Ring& ring : rings.rings)
    length += pathLength(rings.xy.data() + ring.begin, (ring.end - ring.begin) / 2);
  return length;
}

/// The convex hull of interleaved coordinates, closed; fails where one is not finite.
std::vector<omReal64> closedHull(const std::vector<omReal64>& xy) {
  std::vector<omReal64> hull;
  require(convexHull2d(xy.data(), xy.size() / 2, hull));
  hull.insert(hull.end(), {hull[0], hull[1]});
  return hull;
}

void setHull(const std::vector<omReal64>& hull, RegionProperties& p) {
  const std::size_t nbVertices = hull.size() / 2 - 1;
  p.convexArea = ringSignedArea(hull.data(), nbVertices + 1);
  p.convexPerimeter = pathLength(hull.data(), nbVertices + 1);
  p.greatestFeret = ormix::greatestFeretDiameter(hull.data(), nbVertices);
  p.leastFeret = ormix::leastFeretDiameter(hull.data(), nbVertices);
  p.feretAcross = ormix::feretDiameterAt(hull.data(), nbVertices, p.greatestFeret.angle + s_pi / 2);
  const OrientedRectangle rectangle = ormix::smallestRectangle(hull.data(), nbVertices, eRectangleSize::Area);
  p.smallestRectangle = {
      {rectangle.center.x, rectangle.center.y}, rectangle.halfLength, rectangle.halfWidth, rectangle.angle};
}

void setHullAndCircles(const RegionRings& rings, const RegionOptions& options, RegionProperties& p) {
  if (!options.hull && !options.circles) return;
  const std::vector<omReal64> hull = closedHull(rings.xy);
  if (options.hull) setHull(hull, p);
  if (!options.circles) return;
  EnclosingCircle around;
  require(smallestEnclosingCircle(hull.data(), hull.size() / 2 - 1, around));
  p.enclosingCircle = {{around.center[0], around.center[1]}, around.radius};
  InscribedCircle inside;
  require(ormix::largestInscribedCircle(rings.views(), inside));
  p.inscribedCircle = {{inside.center.x, inside.center.y}, inside.radius};
}

/// The perimeter of the hull of the centers of pixels, outset by half a pixel.
omReal64 convexPerimeterOf(const RowIntersections& pixels, const PixelSpacing& spacing) {
  std::vector<omReal64> ends;
  ends.reserve(4 * pixels.getRunColl().size());
  for (omUInt64 y = pixels.getStartRow(); y < pixels.getEndRow(); ++y) {
    const RowIntersections::Row row = pixels.getRow(y);
    if (row.empty()) continue;
    const omReal64 height = (static_cast<omReal64>(y) + 0.5) * spacing.y;
    ends.insert(ends.end(),
                {(row[0].begin + 0.5) * spacing.x, height, (row[row.size() - 1].end - 0.5) * spacing.x, height});
  }
  const std::vector<omReal64> hull = closedHull(ends);
  return pathLength(hull.data(), hull.size() / 2) + detail::pixelDiskPerimeter(spacing);
}

/// An ellipse tells everything itself.
RegionProperties propertiesOf(const Moments2dO3& moments, const RegionOptions& options) {
  RegionProperties p;
  setMoments(moments, options, p);
  const Ellipse2d<omReal64> ellipse = equivalentEllipse(moments);
  const omReal64 a = ellipse.getMajorRadius(), b = ellipse.getMinorRadius();
  p.box = EnvelopeTransform2d::envelope(ellipse);
  p.nbParts = 1;
  p.eulerNumber = 1;
  p.holeArea = 0;
  p.perimeter = p.polygonPerimeter = 4 * a * std::comp_ellint_2(eccentricity(moments));
  if (options.hull) {
    p.convexArea = p.area;
    p.convexPerimeter = p.perimeter;
    p.greatestFeret = greatestFeretDiameter(ellipse);
    p.leastFeret = p.feretAcross = leastFeretDiameter(ellipse);
    p.smallestRectangle = smallestRectangle(ellipse);
  }
  if (options.circles) {
    p.enclosingCircle = {ellipse.center(), a};
    p.inscribedCircle = {ellipse.center(), b};
  }
  setQuotients(p);
  return p;
}

bool isEllipse(const BaseGeometryEntity2d& entity) {
  return detail::callTyped(ScalarClassList<Circle2d, Ellipse2d>(), entity, [](const auto&) { return true; });
}

/// Of entities that have no pixels.
RegionProperties propertiesOfEntity(const BaseGeometryEntity2d& entity, const PixelSpacing& spacing,
                                    const RegionOptions& options) {
  checkSpacing(spacing);
  Moments2dO3 moments;
  const std::optional<RegionRings> rings = detail::ringsOf(entity, spacing);
  if (!rings && !isEllipse(entity)) refuse("a " + entity.getClassName() + " has no area");
  if (!MomentsMsr2d().measure(entity, moments))
    refuse("the moments of the " + entity.getClassName() + " are not finite");
  if (moments.getMoment(0, 0) == 0) refuse("the area of the " + entity.getClassName() + " is 0");
  moments = scaledMoments(moments, spacing);
  if (!rings) return propertiesOf(moments, options);
  RegionProperties p;
  setMoments(moments, options, p);
  setBoxAndHoles(*rings, p);
  p.perimeter = p.polygonPerimeter = lengthOf(*rings);
  setHullAndCircles(*rings, options, p);
  setQuotients(p);
  return p;
}

}  // namespace

RegionProperties regionProperties(const RowIntersections& pixels, const PixelSpacing& spacing,
                                  const RegionOptions& options) {
  checkSpacing(spacing);
  if (pixels.getRunColl().empty()) refuse("there are no pixels");
  RegionProperties p;
  p.nbPixels = pixels.getNbPixels();
  if (options.moments)
    setMoments(scaledMoments(moments(pixels), spacing), options, p);
  else
    setSize(pixels, spacing, p);
  const detail::ContourRings contours = detail::traceRings(pixels, options.connectivity);
  const RegionRings rings = ringsOf(contours, spacing);
  setBoxAndHoles(rings, p);
  p.perimeter = detail::cornerCountPerimeter(contours, spacing);
  if (options.allPerimeters) {
    p.polygonPerimeter = edgePerimeter(pixels, spacing);
    p.croftonPerimeter = croftonPerimeter(pixels, spacing);
    p.minimumLengthPerimeter = detail::minimumLengthPerimeter(contours, spacing);
  }
  setHullAndCircles(rings, options, p);
  if (options.hull) p.convexPerimeter = convexPerimeterOf(pixels, spacing);
  setQuotients(p);
  return p;
}

RegionProperties regionProperties(const Shape2d& shape, const PixelSpacing& spacing, const RegionOptions& options) {
  if (!shape.getRowIntersections().getRunColl().empty())
    return regionProperties(shape.getRowIntersections(), spacing, options);
  return propertiesOfEntity(shape, spacing, options);
}

RegionProperties regionProperties(const BaseGeometryEntity2d& entity, const PixelSpacing& spacing,
                                  const RegionOptions& options) {
  const auto* const shape = dynamic_cast<const Shape2d*>(&entity);
  return shape ? regionProperties(*shape, spacing, options) : propertiesOfEntity(entity, spacing, options);
}

}  // namespace ormix::geom
