#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>

#include <cstddef>
#include <vector>

/// \file
/// Simplification of single paths and rings by Douglas and Peucker's method (DouglasPeucker1973), without recursion.
/// Vertices of a path are numbered by omUInt32.

namespace ormix {

/// A stretch of a path that its chord replaces: from the end of the stretch before it, the path's first vertex for the
/// first one, to `last`.
struct PathChord {
  omUInt32 last;             ///< index of the vertex where the stretch ends
  omUInt32 farthest;         ///< of the vertices between its ends the farthest one from the chord
  omReal64 squaredDistance;  ///< the square of that one's distance from the chord; -1 when there is none between
};

/// Appends the chords of an open path whose ends stay: a stretch is split at its vertex farthest from the chord between
/// the stretch's ends, of equally distant ones the first, as long as that distance exceeds the tolerance. Distances are
/// those from the segment, not from the line, so that no vertex that was left out is farther from the chord than the
/// tolerance, up to 2^-50 of the length of the stretch. Simplifying the result again changes nothing.
///
/// O(n log n) for most paths of n vertices, O(n k) at worst for k vertices kept. Fewer than two vertices have no chord.
/// \param points finite, with magnitudes up to 2^500
/// \param tolerance not negative
ORMIX_MATH_API void simplifyOpenPath(const PlanarPoint* points, std::size_t nbPoints, omReal64 tolerance,
                                     std::vector<PathChord>& chords);

/// Leaves out the vertices of an open path that lie on the segment between the vertex that was kept before them and the
/// next one, exactly, as orientation() decides; repeated ones too. Spikes stay: the tip of one is not between its
/// neighbours. The ends stay. Appends chords as simplifyOpenPath() does, O(n).
ORMIX_MATH_API void straightenOpenPath(const PlanarPoint* points, std::size_t nbPoints, std::vector<PathChord>& chords);

/// The chord between two vertices of a path, with the farthest vertex between them.
ORMIX_MATH_API PathChord chordBetween(const PlanarPoint* points, std::size_t first, std::size_t last);

}  // namespace ormix
