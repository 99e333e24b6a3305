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

/// Where a region is nearest to an edge, and the square of its distance there.
struct Piece {
  EdgeInterval range;
  Quadratic square;
  omUInt32 region;

  bool continues(const Piece& before) const {
    return before.range.high == range.low && before.region == region && before.square.a == square.a &&
           before.square.b == square.b && before.square.c == square.c;
  }
};

/// A lower envelope that is appended to others: its pieces begin at a place of a vector, ascend, and are apart.
struct AppendedEnvelope {
  std::vector<Piece>& pieces;
  std::size_t begin;

  /// Appends a part of a piece, as one with the last piece where it goes on.
  void append(const EdgeInterval& range, const Piece& whole) {
    if (range.empty()) return;
    const Piece part{range, whole.square, whole.region};
    if (pieces.size() > begin && part.continues(pieces.back()))
      pieces.back().range.high = range.high;
    else
      pieces.push_back(part);
  }
  void appendLower(const EdgeInterval& range, const Piece& p, const Piece& q);
  void appendBoth(const Piece* p, const Piece* pEnd, const Piece* q, const Piece* qEnd);
};

/// Appends what is lower of two pieces on an interval that both have.
void AppendedEnvelope::appendLower(const EdgeInterval& range, const Piece& p, const Piece& q) {
  const Quadratic difference{q.square.a - p.square.a, q.square.b - p.square.b, q.square.c - p.square.c};
  omReal64 roots[2];
  const int nbRoots = rootsOf(difference, roots);
  omReal64 low = range.low;
  for (int k = 0; k <= nbRoots; ++k) {
    const omReal64 high = k < nbRoots ? std::clamp(roots[k], low, range.high) : range.high;
    const omReal64 sign = difference(0.5 * (low + high));
    const bool isLower = sign < 0 || (sign == 0 && q.region < p.region);
    append({low, high}, isLower ? q : p);
    low = high;
  }
}

/// Appends the lower envelope of two envelopes. Linear.
void AppendedEnvelope::appendBoth(const Piece* p, const Piece* pEnd, const Piece* q, const Piece* qEnd) {
  constexpr omReal64 infinity = std::numeric_limits<omReal64>::infinity();
  omReal64 at = -infinity;  // up to here all is done
  while (p != pEnd || q != qEnd) {
    const omReal64 pLow = p != pEnd ? std::max(at, p->range.low) : infinity;
    const omReal64 qLow = q != qEnd ? std::max(at, q->range.low) : infinity;
    const omReal64 pHigh = p != pEnd ? p->range.high : infinity;
    const omReal64 qHigh = q != qEnd ? q->range.high : infinity;
    if (pLow < qLow) {
      at = std::min(pHigh, qLow);
      append({pLow, at}, *p);
    } else if (qLow < pLow) {
      at = std::min(qHigh, pLow);
      append({qLow, at}, *q);
    } else {
      at = std::min(pHigh, qHigh);
      appendLower({pLow, at}, *p, *q);
    }
    if (at >= pHigh) ++p;
    if (at >= qHigh) ++q;
  }
}

/// The lower envelope of squares of distances along one edge: which region is nearest from where to where. Pieces are
/// collected until there are as many as the envelope has, and then merged with each other in pairs, pairs of these, and
/// so on (Sharir1995): O(n log^2 n) for n pieces.
class Envelope {
 public:
  void start(omReal64 length) {
    _length = length;
    _highest = std::numeric_limits<omReal64>::infinity();
    _pieces.clear();
    _added.clear();
  }

  /// Lets the envelope be no higher than a function on an interval of the edge.
  void lower(const EdgeInterval& range, const Quadratic& square, omUInt32 region) {
    if (range.empty()) return;
    _added.push_back({range, square, region});
    if (_added.size() >= _pieces.size()) merge();
  }

  /// At least the highest square on the whole edge; infinite where there is no piece.
  omReal64 highest() const { return _highest; }
  omReal64 length() const { return _length; }

  /// Ascending and apart.
  const std::vector<Piece>& pieces() {
    merge();
    return _pieces;
  }

 private:
  /// Merges what was added with the envelope.
  void merge() {
    if (_added.empty()) return;
    _ends.clear();
    for (std::size_t i = 1; i <= _added.size(); ++i) _ends.push_back(i);
    while (_ends.size() > 1) mergePairs();
    _merged.clear();
    AppendedEnvelope{_merged, 0}.appendBoth(_pieces.data(), _pieces.data() + _pieces.size(), _added.data(),
                                            _added.data() + _added.size());
    _added.clear();
    std::swap(_pieces, _merged);
    _highest = highestOfPieces();
  }

  /// Merges the first two of the envelopes that were added, the next two, and so on.
  void mergePairs() {
    _merged.clear();
    std::size_t begin = 0, nbMerged = 0;
    for (std::size_t i = 0; i < _ends.size(); i += 2) {
      const Piece* const first = _added.data() + begin;
      const Piece* const second = _added.data() + _ends[i];
      begin = _ends[std::min(i + 1, _ends.size() - 1)];
      AppendedEnvelope{_merged, _merged.size()}.appendBoth(first, second, second, _added.data() + begin);
      _ends[nbMerged++] = _merged.size();
    }
    _ends.resize(nbMerged);
    std::swap(_added, _merged);
  }

  omReal64 highestOfPieces() const {
    omReal64 at = 0, result = 0;
    for (const Piece& piece : _pieces) {
      if (piece.range.low > at) break;
      at = piece.range.high;
      // Convex, so that it is highest at an end.
      result = std::max({result, piece.square(piece.range.low), piece.square(piece.range.high)});
    }
    return at >= _length ? result : std::numeric_limits<omReal64>::infinity();
  }

  omReal64 _length = 0;
  omReal64 _highest = 0;
  std::vector<Piece> _pieces;      // the envelope of all but what was added
  std::vector<Piece> _added;       // envelopes one after the other
  std::vector<std::size_t> _ends;  // of these envelopes, while they are merged
  std::vector<Piece> _merged;
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
void giveAway(Envelope& envelope, omUInt32 region, RegionLengths& lengths) {
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
  for (const Piece& piece : envelope.pieces()) {
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
