#include <ORMIXMath/Contact/NearestFacing.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace ormix::detail {

namespace {

/// a x^2 + b x + c: the square of the distance between the place x on an edge and a point, or a line.
struct Quadratic {
  omReal64 a;
  omReal64 b;
  omReal64 c;

  omReal64 operator()(omReal64 x) const { return (a * x + b) * x + c; }
};

Quadratic squareToPoint(const PlanarPoint& point) { return {1, -2 * point.x, point.x * point.x + point.y * point.y}; }
/// Of the line whose distance from x is |offset - slope x|.
Quadratic squareToLine(omReal64 offset, omReal64 slope) {
  return {slope * slope, -2 * slope * offset, offset * offset};
}

/// The roots in ascending order; their number.
int rootsOf(const Quadratic& f, omReal64 (&roots)[2]) {
  if (f.a == 0) {
    roots[0] = -f.c / f.b;
    return f.b != 0;
  }
  const omReal64 discriminant = f.b * f.b - 4 * f.a * f.c;
  if (!(discriminant > 0)) return 0;
  const omReal64 q = -0.5 * (f.b + std::copysign(std::sqrt(discriminant), f.b));
  roots[0] = q / f.a;
  roots[1] = f.c / q;
  if (roots[0] > roots[1]) std::swap(roots[0], roots[1]);
  return 2;
}

/// The lower envelope of squares of distances along one edge: which region is nearest from where to where.
class Envelope {
 public:
  struct Piece {
    EdgeInterval range;
    Quadratic square;
    omUInt32 region;
  };

  void start(omReal64 length) {
    _length = length;
    _pieces.clear();
  }

  /// Lets the envelope be no higher than a function on an interval of the edge.
  void lower(const EdgeInterval& range, const Quadratic& square, omUInt32 region) {
    if (range.empty()) return;
    _next.clear();
    omReal64 at = range.low;  // from here on the function has not been compared
    for (const Piece& piece : _pieces) {
      if (at < range.high && at < piece.range.low) {
        const omReal64 to = std::min(piece.range.low, range.high);
        append({at, to}, square, region);
        at = to;
      }
      const EdgeInterval common{std::max(piece.range.low, at), std::min(piece.range.high, range.high)};
      if (common.empty()) {
        append(piece.range, piece.square, piece.region);
        continue;
      }
      append({piece.range.low, common.low}, piece.square, piece.region);
      appendLower(common, piece, {common, square, region});
      append({common.high, piece.range.high}, piece.square, piece.region);
      at = common.high;
    }
    append({at, range.high}, square, region);
    std::swap(_pieces, _next);
  }

  /// The highest square on the whole edge; infinite where there is no piece.
  omReal64 highest() const {
    omReal64 at = 0, result = 0;
    for (const Piece& piece : _pieces) {
      if (piece.range.low > at) break;
      at = piece.range.high;
      // Convex, so that it is highest at an end.
      result = std::max({result, piece.square(piece.range.low), piece.square(piece.range.high)});
    }
    return at >= _length ? result : std::numeric_limits<omReal64>::infinity();
  }

  omReal64 length() const { return _length; }
  const std::vector<Piece>& pieces() const { return _pieces; }

 private:
  void append(const EdgeInterval& range, const Quadratic& square, omUInt32 region) {
    if (!range.empty()) _next.push_back({range, square, region});
  }

  void appendLower(const EdgeInterval& range, const Piece& old, const Piece& added) {
    const Quadratic difference{added.square.a - old.square.a, added.square.b - old.square.b,
                               added.square.c - old.square.c};
    omReal64 roots[2];
    const int nbRoots = rootsOf(difference, roots);
    omReal64 low = range.low;
    for (int k = 0; k <= nbRoots; ++k) {
      const omReal64 high = k < nbRoots ? std::clamp(roots[k], low, range.high) : range.high;
      const omReal64 sign = difference(0.5 * (low + high));
      const bool isLower = sign < 0 || (sign == 0 && added.region < old.region);
      append({low, high}, isLower ? added.square : old.square, isLower ? added.region : old.region);
      low = high;
    }
  }

  omReal64 _length = 0;
  std::vector<Piece> _pieces;  // ascending and apart
  std::vector<Piece> _next;
};

/// Lowers the envelope by the distance from another edge, where that is within the gap.
void lowerBy(Envelope& envelope, const BoundaryEdge& edge, const BoundaryEdge& other, omReal64 gap, omUInt32 region) {
  if (gap == 0) {
    envelope.lower(facingInterval(edge, other, 0), {0, 0, 0}, region);
    return;
  }
  const EdgeView view(edge, other);
  const EdgeInterval all = facingInterval(edge.length, view, gap);
  if (all.empty()) return;
  const omReal64 atEnd = view.footAtEnd();
  const omReal64 atStart = view.footAtStart();
  envelope.lower({all.low, std::min(all.high, atEnd)}, squareToPoint(view.end), region);
  envelope.lower({std::max(all.low, atEnd), std::min(all.high, atStart)}, squareToLine(view.offset(), view.direction.y),
                 region);
  envelope.lower({std::max(all.low, atStart), all.high}, squareToPoint(view.start), region);
}

/// Gives the pieces of the edge of an envelope to their regions. A sliver, which rounding may have made, goes with the
/// piece before it, so that it makes no neighbours.
void giveAway(const Envelope& envelope, omUInt32 region, RegionLengths& lengths) {
  const omReal64 sliver = 1e-12 * envelope.length();
  omReal64 at = 0;
  omUInt32 last = region;
  const auto give = [&](omUInt32 to, omReal64 length) {
    if (length > sliver) last = to;
    if (last == region)
      lengths.leave(region, length);
    else
      lengths.give(region, last, length);
  };
  for (const Envelope::Piece& piece : envelope.pieces()) {
    if (piece.range.low > at) give(region, piece.range.low - at);
    give(piece.region, piece.range.high - piece.range.low);
    at = piece.range.high;
  }
  if (at < envelope.length()) give(region, envelope.length() - at);
}

}  // namespace

void divideToNearest(std::vector<BoundaryEdge> edges, const std::vector<omUInt32>& regions, omReal64 gap,
                     RegionLengths& lengths) {
  const FacingIndex index(std::move(edges), eBO_Curve);
  Envelope envelope;
  for (std::size_t i = 0; i < regions.size(); ++i) {
    const BoundaryEdge& edge = index.edges()[i];
    const omUInt32 region = regions[i];
    envelope.start(edge.length);
    index.visitFacing(edge, gap * gap, [&](std::size_t other, omReal64 bound) {
      if (regions[other] == region) return bound;
      lowerBy(envelope, edge, index.edges()[other], gap, regions[other]);
      return std::min(bound, envelope.highest());
    });
    giveAway(envelope, region, lengths);
  }
}

}  // namespace ormix::detail
