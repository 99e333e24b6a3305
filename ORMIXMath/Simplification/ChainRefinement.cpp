#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Distance/SegmentsDistance.h>
#include <ORMIXMath/Simplification/ChainRefinement.h>
#include <ORMIXMath/Simplification/FarthestPoint.h>

#include <cmath>

namespace ormix::detail {

namespace {

constexpr omUInt32 s_none = std::numeric_limits<omUInt32>::max();

// Computed distances from a chord are right to 2^-50 of the lengths in them; more than that is added.
constexpr omReal64 s_distanceMargin = 0x1p-46;

// Boxes, chains and vertices that may be looked at, for each vertex and at all. Noisy contours need up to 65 for each,
// combs and spirals of 10^6 vertices up to 140; long edges crosswise in two directions may need more.
constexpr std::size_t s_workPerVertex = 400;
constexpr std::size_t s_leastWork = std::size_t{1} << 24;

bool isSame(const PlanarPoint& a, const PlanarPoint& b) { return a.x == b.x && a.y == b.y; }

bool isInBox(const PlanarPoint& p, const PlanarPoint& a, const PlanarPoint& b) {
  return std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= p.y &&
         p.y <= std::max(a.y, b.y);
}

enum eContact { eC_None, eC_Touch, eC_Crossing };

/// Contact of two segments with the end `a` in common.
eContact contactAtEnd(const PlanarPoint& a, const PlanarPoint& b, const PlanarPoint& c) {
  if (isSame(b, c)) return eC_Touch;
  const bool isFolded = (b.x - a.x) * (c.x - a.x) + (b.y - a.y) * (c.y - a.y) > 0;
  return isFolded && orientation(a, b, c) == 0 ? eC_Touch : eC_None;
}

/// What two segments have in common other than a single end of both.
eContact contact(const PlanarPoint& a, const PlanarPoint& b, const PlanarPoint& c, const PlanarPoint& d) {
  if (isSame(a, c)) return contactAtEnd(a, b, d);
  if (isSame(a, d)) return contactAtEnd(a, b, c);
  if (isSame(b, c)) return contactAtEnd(b, a, d);
  if (isSame(b, d)) return contactAtEnd(b, a, c);
  const int sideC = orientation(a, b, c);
  const int sideD = orientation(a, b, d);
  if (sideC * sideD > 0) return eC_None;
  const int sideA = orientation(c, d, a);
  const int sideB = orientation(c, d, b);
  if (sideA * sideB > 0) return eC_None;
  if (sideC * sideD < 0 && sideA * sideB < 0) return eC_Crossing;
  const bool isTouched = (sideC == 0 && isInBox(c, a, b)) || (sideD == 0 && isInBox(d, a, b)) ||
                         (sideA == 0 && isInBox(a, c, d)) || (sideB == 0 && isInBox(b, c, d));
  return isTouched ? eC_Touch : eC_None;
}

}  // namespace

void splitChord(const PlanarPoint* points, std::size_t first, const PathChord& chord, omReal64 tolerance,
                std::vector<PathChord>& chords) {
  for (const auto& [begin, end] :
       {std::pair<std::size_t, std::size_t>(first, chord.farthest), {chord.farthest, chord.last}}) {
    const std::size_t size = chords.size();
    simplifyOpenPath(points + begin, end - begin + 1, tolerance, chords);
    for (std::size_t i = size; i < chords.size(); ++i) {
      chords[i].last += static_cast<omUInt32>(begin);
      chords[i].farthest += static_cast<omUInt32>(begin);
    }
  }
}

ChainRefinement::ChainRefinement(const PathArcs& arcs, const ArcChords& chords, omReal64 tolerance)
    : _arcs(arcs), _points(arcs.points), _tolerance(tolerance) {
  _chains.reserve(chords.chords.size());
  std::size_t chord = 0;
  for (std::size_t arc = 0; arc < arcs.arcs.size(); ++arc) {
    const std::size_t begin = arcs.arcs[arc].first;
    std::size_t first = begin;
    _firstOfArc.push_back(chord < chords.ends[arc] ? static_cast<omUInt32>(_chains.size()) : s_none);
    for (bool isFirst = true; chord < chords.ends[arc]; ++chord, isFirst = false) {
      _chains.push_back(chainOf(begin, first, chords.chords[chord]));
      _chains.back().isFirstOfArc = isFirst;
      _chains.back().next = static_cast<omUInt32>(_chains.size());
      first = _chains.back().last;
    }
  }
  if (!_chains.empty()) _chains.back().next = s_none;
  turnFrame();
}

ChainRefinement::Chain ChainRefinement::chainOf(std::size_t arcBegin, std::size_t first, const PathChord& chord) const {
  const auto last = static_cast<omUInt32>(arcBegin + chord.last);
  const PlanarPoint& a = _points[first];
  const PlanarPoint& b = _points[last];
  const omReal64 distance = chord.squaredDistance >= 0 ? std::sqrt(chord.squaredDistance) : 0;
  const omReal64 size = distance + std::abs(b.x - a.x) + std::abs(b.y - a.y);
  const omReal64 radius = last - first > 1 ? distance + s_distanceMargin * size : 0;
  return {static_cast<omUInt32>(first),
          last,
          static_cast<omUInt32>(arcBegin + chord.farthest),
          s_none,
          radius,
          _round,
          false,
          false};
}

// Directions are summed as twice their angle, under which both directions of a line are the same.
void ChainRefinement::turnFrame() {
  PlanarPoint sum{0, 0};
  omReal64 reach = 0;
  for (const Chain& chain : _chains) {
    const PlanarPoint d = point(chain.last) - point(chain.first);
    const omReal64 length = std::sqrt(d.x * d.x + d.y * d.y);
    reach = std::max(reach, std::abs(point(chain.last).x) + std::abs(point(chain.last).y));
    if (length > 0) sum = {sum.x + (d.x * d.x - d.y * d.y) / length, sum.y + 2 * d.x * d.y / length};
  }
  const omReal64 angle = 0.5 * std::atan2(sum.y, sum.x);
  _axis = {std::cos(angle), std::sin(angle)};
  _frameMargin = s_distanceMargin * reach;
}

PlanarPoint ChainRefinement::toFrame(const PlanarPoint& p) const {
  return {p.x * _axis.x + p.y * _axis.y, p.y * _axis.x - p.x * _axis.y};
}

PlanarBox ChainRefinement::stretchBox(const Chain& chain) const {
  return boxOf(toFrame(point(chain.first)), toFrame(point(chain.last)), chain.radius + _frameMargin);
}

bool ChainRefinement::run() {
  splitClosedChains();
  _new.clear();
  for (omUInt32 chain = 0; chain < _chains.size(); ++chain) _new.push_back(chain);
  buildBoxes();
  const std::size_t limit = s_workPerVertex * _points.size() + s_leastWork;
  while (!_new.empty()) {
    for (const omUInt32 chain : _new) {
      if (!compareWithOthers(chain)) return false;
      if (_work > limit) {
        restoreAll();
        return true;
      }
    }
    splitMarked();
    if (_chains.size() > 2 * _slots.size()) buildBoxes();
  }
  return true;
}

void ChainRefinement::keptOfArc(std::size_t arc, std::vector<omUInt32>& kept) const {
  const std::size_t begin = _arcs.arcs[arc].first;
  kept.assign(1, 0);
  const omUInt32 first = _firstOfArc[arc];
  for (omUInt32 chain = first; chain != s_none && (chain == first || !_chains[chain].isFirstOfArc);
       chain = _chains[chain].next)
    kept.push_back(static_cast<omUInt32>(_chains[chain].last - begin));
}

// A chord without length has no side, and nothing could conflict with it.
void ChainRefinement::splitClosedChains() {
  for (omUInt32 chain = 0; chain < _chains.size(); ++chain)
    if (canBeSplit(_chains[chain]) && isSame(point(_chains[chain].first), point(_chains[chain].last))) mark(chain);
  splitMarked();
}

void ChainRefinement::buildBoxes() {
  std::vector<PlanarBox> boxes;
  boxes.reserve(_chains.size());
  _slots.clear();
  for (omUInt32 chain = _chains.empty() ? s_none : 0; chain != s_none; chain = _chains[chain].next) {
    _slots.push_back(chain);
    boxes.push_back(stretchBox(_chains[chain]));
  }
  _boxes.build(boxes);
}

bool ChainRefinement::compareWithOthers(omUInt32 chain) {
  const PlanarBox box = stretchBox(_chains[chain]);
  bool isPossible = true;
  _work += _boxes.query(box, [&](std::size_t slot) {
    const omUInt32 end = slot + 1 < _slots.size() ? _slots[slot + 1] : s_none;
    for (omUInt32 other = _slots[slot]; isPossible && other != end; other = _chains[other].next) {
      ++_work;
      if (other == chain || (_chains[other].round == _round && other < chain)) continue;
      if (meet(box, stretchBox(_chains[other]))) isPossible = compare(chain, other);
    }
  });
  return isPossible;
}

bool ChainRefinement::compare(omUInt32 first, omUInt32 second) {
  const Chain& a = _chains[first];
  const Chain& b = _chains[second];
  const bool canSplitA = canBeSplit(a);
  const bool canSplitB = canBeSplit(b);
  if (meet(boxOf(point(a.first), point(a.last), 0), boxOf(point(b.first), point(b.last), 0))) {
    const eContact found = contact(point(a.first), point(a.last), point(b.first), point(b.last));
    if (found == eC_Crossing && !canSplitA && !canSplitB) {
      PlanarPoint onSecond;
      segmentsDistance({point(a.first), point(a.last)}, {point(b.first), point(b.last)}, _crossing, onSecond);
      return false;
    }
    if (found != eC_None) {
      if (canSplitA) mark(first);
      if (canSplitB) mark(second);
    }
  }
  if (canSplitA) markIfPassed(first, b);
  if (canSplitB) markIfPassed(second, a);
  return true;
}

void ChainRefinement::markIfPassed(omUInt32 chain, const Chain& other) {
  if (_chains[chain].isMarked) return;
  if (isPassed(_chains[chain], point(other.last)) ||
      (other.isFirstOfArc && isPassed(_chains[chain], point(other.first))))
    mark(chain);
}

/// Whether the stretch and its chord wind round the point together, or the point is on the stretch.
bool ChainRefinement::isPassed(const Chain& chain, const PlanarPoint& p) {
  const PlanarPoint& a = point(chain.first);
  const PlanarPoint& b = point(chain.last);
  if (isSame(p, a) || isSame(p, b)) return false;
  if (SegmentDistances(a, b).squared(p.x, p.y) > chain.radius * chain.radius * (1 + s_distanceMargin)) return false;
  _work += chain.last - chain.first;
  int winding = 0;
  const auto addEdge = [&](const PlanarPoint& from, const PlanarPoint& to) {
    const bool isFromBelow = from.y <= p.y;
    const bool isToBelow = to.y <= p.y;
    if (isFromBelow == isToBelow) return;
    const int side = orientation(from, to, p);
    if (isFromBelow && side > 0) ++winding;
    if (!isFromBelow && side < 0) --winding;
  };
  for (omUInt32 i = chain.first; i < chain.last; ++i) {
    if (isInBox(p, point(i), point(i + 1)) && orientation(point(i), point(i + 1), p) == 0) return true;
    addEdge(point(i), point(i + 1));
  }
  addEdge(b, a);
  return winding != 0;
}

void ChainRefinement::mark(omUInt32 chain) {
  if (_chains[chain].isMarked) return;
  _chains[chain].isMarked = true;
  _marked.push_back(chain);
}

void ChainRefinement::splitMarked() {
  ++_round;
  _new.clear();
  for (const omUInt32 chain : _marked) split(chain);
  _marked.clear();
}

// The first of the new chains takes the place of the chain.
void ChainRefinement::split(omUInt32 chain) {
  const Chain whole = _chains[chain];
  _work += whole.last - whole.first;
  _chords.clear();
  splitChord(_points.data(), whole.first, {whole.last, whole.farthest, 0}, _tolerance, _chords);
  omUInt32 place = chain;
  std::size_t first = whole.first;
  for (const PathChord& chord : _chords) {
    Chain part = chainOf(0, first, chord);
    part.isFirstOfArc = whole.isFirstOfArc && place == chain;
    first = part.last;
    const bool isFirst = place == chain;
    const bool isLast = part.last == whole.last;
    if (isFirst)
      _chains[chain] = part;
    else
      _chains.push_back(part);
    _chains[place].next = isLast ? whole.next : static_cast<omUInt32>(_chains.size());
    _new.push_back(place);
    place = static_cast<omUInt32>(_chains.size());
  }
}

void ChainRefinement::restoreAll() {
  _chains.clear();
  _firstOfArc.clear();
  for (const Arc& arc : _arcs.arcs) {
    _firstOfArc.push_back(arc.nbPoints > 1 ? static_cast<omUInt32>(_chains.size()) : s_none);
    for (std::size_t i = 0; i + 1 < arc.nbPoints; ++i) {
      const auto first = static_cast<omUInt32>(arc.first + i);
      _chains.push_back({first, first + 1, first, static_cast<omUInt32>(_chains.size() + 1), 0, _round, false, i == 0});
    }
  }
  if (!_chains.empty()) _chains.back().next = s_none;
}

}  // namespace ormix::detail
