#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Simplification/ChainRefinement.h>
#include <ORMIXMath/Simplification/SimplifyPaths.h>
#include <ORMIXMath/Simplification/VisvalingamWhyatt.h>
#include <ORMIXMath/Transform/MagnitudeBound.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormix {

namespace {

using namespace detail;

omInt64 largestOf(const PathView& path) { return largestMagnitude(path.xy, 2 * path.nbPoints); }
#if defined(__x86_64__)
[[gnu::target("avx2")]] omInt64 largestOfAvx2(const PathView& path) {
  return largestMagnitudeInVectors<32>(path.xy, 2 * path.nbPoints);
}
#endif

/// Factor by which squares of the coordinates neither overflow nor lose digits, see safeScale(); NaN when a coordinate
/// is not finite.
omReal64 scaleOf(const std::vector<PathView>& paths) {
  auto* largestOfPath = &largestOf;
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx2")) largestOfPath = &largestOfAvx2;
#endif
  omInt64 largest = 0;
  for (const PathView& path : paths) largest = std::max(largest, largestOfPath(path));
  omReal64 magnitude;
  std::memcpy(&magnitude, &largest, sizeof magnitude);
  if (!std::isfinite(magnitude)) return std::numeric_limits<omReal64>::quiet_NaN();
  if (magnitude > 0x1p+500) return 0x1p-600;
  return magnitude < 0x1p-400 && magnitude > 0 ? 0x1p+700 : 1.0;
}

/// Splits the chord with the farthest vertex until there are three chords with an area between them, where there can
/// be.
/// \param chords of one closed arc, whose points these are
void keepTriangle(const PlanarPoint* points, omReal64 tolerance, std::vector<PathChord>& chords) {
  for (;;) {
    const auto widest = std::max_element(chords.begin(), chords.end(), [](const PathChord& a, const PathChord& b) {
      return a.squaredDistance < b.squaredDistance;
    });
    if (chords.size() > 3 || !(widest->squaredDistance > 0)) return;
    if (chords.size() == 3 && orientation(points[0], points[chords[0].last], points[chords[1].last]) != 0) return;
    std::vector<PathChord> result(chords.begin(), widest);
    splitChord(points, result.empty() ? 0 : result.back().last, *widest, tolerance, result);
    result.insert(result.end(), widest + 1, chords.end());
    chords.swap(result);
  }
}

/// Makes a triangle at least of the last chords, if they are those of a ring.
void keepRing(const PlanarPoint* points, std::size_t nbPoints, omReal64 tolerance, std::size_t begin,
              std::vector<PathChord>& chords) {
  const PlanarPoint& last = points[nbPoints - 1];
  if (chords.size() - begin > 3 || nbPoints < 3 || points[0].x != last.x || points[0].y != last.y) return;
  const auto first = chords.begin() + static_cast<std::ptrdiff_t>(begin);
  std::vector<PathChord> few(first, chords.end());
  keepTriangle(points, tolerance, few);
  chords.erase(first, chords.end());
  chords.insert(chords.end(), few.begin(), few.end());
}

ArcChords chordsOf(const PathArcs& arcs, omReal64 tolerance, ePathSimplification method) {
  ArcChords result;
  for (const Arc& arc : arcs.arcs) {
    const std::size_t begin = result.chords.size();
    const PlanarPoint* points = arcs.points.data() + arc.first;
    if (tolerance == 0)
      straightenOpenPath(points, arc.nbPoints, result.chords);
    else if (method == ePS_ByArea)
      simplifyOpenPathByArea(points, arc.nbPoints, tolerance * tolerance, result.chords);
    else
      simplifyOpenPath(points, arc.nbPoints, tolerance, result.chords);
    if (method == ePS_EachAlone) keepRing(points, arc.nbPoints, tolerance, begin, result.chords);
    result.ends.push_back(result.chords.size());
  }
  return result;
}

/// The indices of a path's kept vertices, from those of its arcs.
class PathResult {
 public:
  PathResult(const PathArcs& arcs, const std::vector<PathView>& paths, SimplifiedPaths& result)
      : _arcs(arcs), _paths(paths), _result(result) {}

  /// \param keptOf calls with an arc and a vector, which it fills with the positions that are kept in it, ascending
  template <class KeptOf>
  void collect(KeptOf&& keptOf) {
    std::size_t use = 0;
    std::vector<omUInt32> positions;
    for (std::size_t path = 0; path < _paths.size(); ++path) {
      const std::size_t begin = _result.kept.size();
      for (; use < _arcs.useEnds[path]; ++use) {
        keptOf(_arcs.uses[use].arc, positions);
        append(path, _arcs.uses[use], positions, use + 1 == _arcs.useEnds[path]);
      }
      const auto first = _result.kept.begin() + static_cast<std::ptrdiff_t>(begin);
      std::rotate(first, std::min_element(first, _result.kept.end()), _result.kept.end());
      _result.ends.push_back(_result.kept.size());
    }
  }

 private:
  void append(std::size_t path, const ArcUse& use, const std::vector<omUInt32>& positions, bool isLast) {
    const std::vector<omUInt32>& numbers = _arcs.numbers[path];
    const std::size_t nbVertices = numbers.empty() ? _paths[path].nbPoints : numbers.size();
    const std::size_t lastPosition = _arcs.arcs[use.arc].nbPoints - 1;
    const bool isEndKept = (isLast && !_paths[path].isRing) || lastPosition == 0;
    const std::size_t nbKept = positions.size() - (isEndKept ? 0 : 1);
    for (std::size_t i = 0; i < nbKept; ++i) {
      const std::size_t along = use.isReversed ? lastPosition - positions[positions.size() - 1 - i] : positions[i];
      std::size_t number = use.start + along;
      if (number >= nbVertices) number -= nbVertices;
      _result.kept.push_back(numbers.empty() ? static_cast<omUInt32>(number) : numbers[number]);
    }
  }

  const PathArcs& _arcs;
  const std::vector<PathView>& _paths;
  SimplifiedPaths& _result;
};

void collectChords(const PathArcs& arcs, const ArcChords& chords, const std::vector<PathView>& paths,
                   SimplifiedPaths& result) {
  PathResult(arcs, paths, result).collect([&](std::size_t arc, std::vector<omUInt32>& positions) {
    positions.assign(1, 0);
    for (std::size_t i = arc == 0 ? 0 : chords.ends[arc - 1]; i < chords.ends[arc]; ++i)
      positions.push_back(chords.chords[i].last);
  });
}

}  // namespace

SimplifiedPaths simplifyPaths(const std::vector<PathView>& paths, omReal64 tolerance, ePathSimplification method) {
  SimplifiedPaths result;
  std::size_t nbPoints = 0;
  for (const PathView& path : paths) nbPoints += path.nbPoints + 1;
  const omReal64 scale = scaleOf(paths);
  if (std::isnan(scale) || nbPoints >= std::numeric_limits<omUInt32>::max()) {
    result.outcome = ePO_NotNumbered;
    return result;
  }
  const bool isEachAlone = method == ePS_EachAlone && tolerance > 0;
  const PathArcs arcs = isEachAlone ? separateArcs(paths, scale) : sharedArcs(paths, scale);
  const ArcChords chords = chordsOf(arcs, tolerance * scale, method);
  if (isEachAlone || tolerance == 0) {
    collectChords(arcs, chords, paths, result);
    return result;
  }
  const omReal64 farthest = method == ePS_ByArea ? std::numeric_limits<omReal64>::infinity() : tolerance * scale;
  ChainRefinement refinement(arcs, chords, farthest);
  if (!refinement.run()) {
    result.outcome = ePO_Crossing;
    result.crossing = {refinement.crossing().x / scale, refinement.crossing().y / scale};
    return result;
  }
  PathResult(arcs, paths, result).collect([&refinement](std::size_t arc, std::vector<omUInt32>& positions) {
    refinement.keptOfArc(arc, positions);
  });
  return result;
}

}  // namespace ormix
