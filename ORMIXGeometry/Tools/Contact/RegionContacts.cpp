#include <ORMIXGeometry/Tools/Contact/ContactChecks.h>
#include <ORMIXGeometry/Tools/Contact/OrientedRings.h>
#include <ORMIXGeometry/Tools/Contact/RegionContacts.h>
#include <ORMIXMath/Contact/NearestFacing.h>
#include <ORMIXMath/Contact/SharedLines.h>

#include <cmath>
#include <utility>

namespace ormix::geom {

namespace {

using namespace ormix::detail;

/// Edges on one line have one direction, so that those along an axis share borders among themselves only.
void divideSharedBorders(const BoundaryRings& rings, std::vector<RegionBorder>& borders, RegionLengths& lengths) {
  SharedLines upright(rings.points().size() / 2), level(rings.points().size() / 2);
  std::vector<BoundaryEdge> oblique;
  std::vector<omUInt32> regionsOfOblique;
  for (const BoundaryRings::Ring& ring : rings.rings()) {
    omReal64& perimeter = borders[ring.region].perimeter;
    PlanarPoint from = rings.points()[ring.end - 1];
    for (std::size_t i = ring.begin; i < ring.end; ++i) {
      const PlanarPoint to = rings.points()[i];
      if (from.x == to.x) {
        upright.add(to.x, from.y, to.y, ring.region);
        perimeter += std::abs(to.y - from.y);
      } else if (from.y == to.y) {
        level.add(to.y, from.x, to.x, ring.region);
        perimeter += std::abs(to.x - from.x);
      } else {
        oblique.push_back(makeEdge(from, to));
        regionsOfOblique.push_back(ring.region);
        perimeter += oblique.back().length;
      }
      from = to;
    }
  }
  upright.divide(lengths);
  level.divide(lengths);
  divideToNearest(std::move(oblique), regionsOfOblique, 0, lengths);
}

void divideBorders(const BoundaryRings& rings, omReal64 gap, std::vector<RegionBorder>& borders,
                   RegionLengths& lengths) {
  BoundaryEdges all = rings.edges(0, rings.rings().size());
  std::vector<omUInt32> regions;
  regions.reserve(all.edges.size());
  for (std::size_t r = 0; r < all.ringEnds.size(); ++r)
    for (std::size_t i = regions.size(); i < all.ringEnds[r]; ++i) {
      regions.push_back(rings.rings()[r].region);
      borders[regions.back()].perimeter += all.edges[i].length;
    }
  divideToNearest(std::move(all.edges), regions, gap, lengths);
}

}  // namespace

RegionContacts contacts(const std::vector<const BaseGeometryEntity2d*>& regions, omReal64 gap) {
  detail::requireNotNegative("gap", gap);
  if (regions.size() > SharedLines::s_maxNbRegions)
    logAndThrow("There are too many regions for contacts: " + std::to_string(regions.size()), __PRETTY_FUNCTION__,
                __FILE__, __LINE__);
  BoundaryRings rings;
  for (std::size_t i = 0; i < regions.size(); ++i) {
    if (!regions[i])
      logAndThrow(formatMessage<eToolsMessage>(eToolsMessage::eTM_NullRegion, i, regions.size()), __PRETTY_FUNCTION__,
                  __FILE__, __LINE__);
    detail::addRings(rings, *regions[i], static_cast<omUInt32>(i));
  }
  detail::requireFinite(rings.prepare());
  const omReal64 scaledGap = rings.scaledGap(gap);
  RegionContacts result;
  result.borders.resize(regions.size());
  RegionLengths lengths(regions.size());
  if (gap == 0)
    divideSharedBorders(rings, result.borders, lengths);
  else
    divideBorders(rings, scaledGap, result.borders, lengths);
  const omReal64 scale = rings.scale();
  for (std::size_t i = 0; i < regions.size(); ++i)
    result.borders[i] = {result.borders[i].perimeter / scale, lengths.free()[i] / scale};
  for (const RegionLengths::Pair& pair : lengths.pairs())
    result.contacts.push_back({pair.first, pair.second, pair.onFirst / scale, pair.onSecond / scale});
  return result;
}

}  // namespace ormix::geom
