#include <ORMIXGeometry/Tools/Contact/ContactChecks.h>
#include <ORMIXGeometry/Tools/Contact/ContactLength.h>
#include <ORMIXGeometry/Tools/Contact/OrientedRings.h>
#include <ORMIXMath/Contact/ContactIntervals.h>
#include <ORMIXMath/Shape/CompensatedSum.h>

#include <algorithm>

namespace ormix::geom {

namespace {

using namespace ormix::detail;

/// The parts of the boundary of one region in contact.
struct Side {
  BoundaryEdges boundary;
  std::vector<ContactInterval> intervals;
};

omReal64 lengthOf(const Side& side) {
  omReal64 sum = 0, error = 0;
  for (const ContactInterval& part : side.intervals) addCompensated(part.interval.high - part.interval.low, sum, error);
  return roundedSum(sum, error);
}

/// Joins parts that follow each other to pieces, also across the end of a ring.
std::vector<ContactPiece2d> piecesOf(const Side& side, omReal64 scale) {
  const std::vector<BoundaryEdge>& edges = side.boundary.edges;
  std::vector<ContactPiece2d> pieces;
  auto part = side.intervals.begin();
  std::size_t ringBegin = 0;
  for (const std::size_t ringEnd : side.boundary.ringEnds) {
    const std::size_t firstPiece = pieces.size();
    bool startsAtBegin = false;            // whether the ring's first piece starts where the ring does
    std::size_t continued = edges.size();  // the edge at whose start the last piece goes on
    for (; part != side.intervals.end() && part->edge < ringEnd; ++part) {
      const BoundaryEdge& edge = edges[part->edge];
      const bool isAtStart = part->interval.low <= 0;
      if (pieces.size() == firstPiece) startsAtBegin = isAtStart && part->edge == ringBegin;
      if (pieces.size() == firstPiece || !isAtStart || continued != part->edge) pieces.emplace_back();
      const PlanarPoint from = edge.at(part->interval.low);
      const PlanarPoint to = edge.at(part->interval.high);
      pieces.back().emplace_back(from.x / scale, from.y / scale, to.x / scale, to.y / scale);
      continued = part->interval.high >= edge.length ? part->edge + 1 : edges.size();
    }
    if (startsAtBegin && continued == ringEnd && pieces.size() > firstPiece + 1) {
      ContactPiece2d& last = pieces.back();
      const ContactPiece2d& first = pieces[firstPiece];
      last.insert(last.end(), first.begin(), first.end());
      std::swap(pieces[firstPiece], last);
      pieces.pop_back();
    }
    ringBegin = ringEnd;
  }
  return pieces;
}

/// The parts of both boundaries in contact, in coordinates multiplied by a scale.
struct BothSides {
  Side a;
  Side b;
  omReal64 scale;
};

BothSides bothSides(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b, omReal64 gap) {
  detail::requireNotNegative("gap", gap);
  BoundaryRings rings;
  detail::addRings(rings, a, 0);
  detail::addRings(rings, b, 1);
  detail::requireFinite(rings.prepare());
  const omReal64 scaledGap = rings.scaledGap(gap);
  const auto firstOfB = std::partition_point(rings.rings().begin(), rings.rings().end(),
                                             [](const BoundaryRings::Ring& ring) { return ring.region == 0; });
  const auto nbOfA = static_cast<std::size_t>(firstOfB - rings.rings().begin());
  BothSides sides{{rings.edges(0, nbOfA), {}}, {rings.edges(nbOfA, rings.rings().size()), {}}, rings.scale()};
  FacingIndex indexA(std::move(sides.a.boundary.edges));
  FacingIndex indexB(std::move(sides.b.boundary.edges));
  sides.a.intervals = contactIntervals(indexA.edges(), indexB, scaledGap);
  sides.b.intervals = contactIntervals(indexB.edges(), indexA, scaledGap);
  sides.a.boundary.edges = indexA.takeEdges();
  sides.b.boundary.edges = indexB.takeEdges();
  return sides;
}

/// Halved first, as the sum of two lengths may overflow.
omReal64 meanOf(omReal64 lengthOnA, omReal64 lengthOnB) { return 0.5 * lengthOnA + 0.5 * lengthOnB; }

}  // namespace

omReal64 contactLength(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b, omReal64 gap) {
  const BothSides sides = bothSides(a, b, gap);
  return meanOf(lengthOf(sides.a) / sides.scale, lengthOf(sides.b) / sides.scale);
}

Contact2d contact(const BaseGeometryEntity2d& a, const BaseGeometryEntity2d& b, omReal64 gap) {
  const BothSides sides = bothSides(a, b, gap);
  Contact2d result;
  result.onA = {lengthOf(sides.a) / sides.scale, piecesOf(sides.a, sides.scale)};
  result.onB = {lengthOf(sides.b) / sides.scale, piecesOf(sides.b, sides.scale)};
  result.length = meanOf(result.onA.length, result.onB.length);
  return result;
}

}  // namespace ormix::geom
