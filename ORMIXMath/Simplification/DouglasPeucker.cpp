#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Simplification/DouglasPeucker.h>
#include <ORMIXMath/Simplification/FarthestPoint.h>

#include <cmath>
#include <utility>

namespace ormix {

namespace {

using detail::FarthestPoint;

/// A stretch of a path, by its ends.
struct Stretch {
  omUInt32 first;
  omUInt32 last;
};

// The stretch that comes first along the path is the one to go on with, so that chords come in order.
[[gnu::always_inline]] inline void splitWhileFarther(const PlanarPoint* points, Stretch stretch,
                                                     omReal64 squaredTolerance, std::vector<PathChord>& chords) {
  std::vector<omUInt32> pendingEnds{stretch.last};
  while (!pendingEnds.empty()) {
    const omUInt32 last = pendingEnds.back();
    const FarthestPoint farthest = detail::farthestFromChord(points, stretch.first, last);
    if (farthest.squaredDistance > squaredTolerance) {
      pendingEnds.push_back(static_cast<omUInt32>(farthest.index));
      continue;
    }
    chords.push_back({last, static_cast<omUInt32>(farthest.index), farthest.squaredDistance});
    stretch.first = last;
    pendingEnds.pop_back();
  }
}

[[gnu::always_inline]] inline PathChord chordOf(const PlanarPoint* points, std::size_t first, std::size_t last) {
  const FarthestPoint farthest = detail::farthestFromChord(points, first, last);
  return {static_cast<omUInt32>(last), static_cast<omUInt32>(farthest.index), farthest.squaredDistance};
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void splitWhileFartherAvx2(const PlanarPoint* points, Stretch stretch,
                                                   omReal64 squaredTolerance, std::vector<PathChord>& chords) {
  splitWhileFarther(points, stretch, squaredTolerance, chords);
}
[[gnu::target("avx2")]] PathChord chordOfAvx2(const PlanarPoint* points, std::size_t first, std::size_t last) {
  return chordOf(points, first, last);
}
#endif

bool isBetween(omReal64 value, omReal64 end0, omReal64 end1) {
  return (end0 <= value && value <= end1) || (end1 <= value && value <= end0);
}

/// Whether p lies on the segment from a to b, exactly.
bool isOnSegment(const PlanarPoint& p, const PlanarPoint& a, const PlanarPoint& b) {
  return isBetween(p.x, a.x, b.x) && isBetween(p.y, a.y, b.y) && orientation(a, b, p) == 0;
}

}  // namespace

void simplifyOpenPath(const PlanarPoint* points, std::size_t nbPoints, omReal64 tolerance,
                      std::vector<PathChord>& chords) {
  if (nbPoints < 2) return;
  const Stretch whole{0, static_cast<omUInt32>(nbPoints - 1)};
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx2")) {
    splitWhileFartherAvx2(points, whole, tolerance * tolerance, chords);
    return;
  }
#endif
  splitWhileFarther(points, whole, tolerance * tolerance, chords);
}

PathChord chordBetween(const PlanarPoint* points, std::size_t first, std::size_t last) {
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx2")) return chordOfAvx2(points, first, last);
#endif
  return chordOf(points, first, last);
}

void straightenOpenPath(const PlanarPoint* points, std::size_t nbPoints, std::vector<PathChord>& chords) {
  std::size_t kept = 0;
  for (std::size_t i = 1; i < nbPoints; ++i) {
    if (i + 1 < nbPoints && isOnSegment(points[i], points[kept], points[i + 1])) continue;
    chords.push_back({static_cast<omUInt32>(i), static_cast<omUInt32>(kept + 1), i - kept > 1 ? 0.0 : -1.0});
    kept = i;
  }
}

}  // namespace ormix
