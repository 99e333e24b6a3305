#pragma once

#include <ORMIXMath/Simplification/DouglasPeucker.h>

namespace ormix {

/// Appends the chords of an open path whose ends stay, by Visvalingam and Whyatt's method (VisvalingamWhyatt1993): as
/// long as there is a vertex whose triangle with the vertices kept beside it has at most this area, the one with the
/// smallest is left out, of equal ones the first in order of x, then y. The area of a triangle counts as no smaller
/// than those that were left out beside it before. No distance is bounded. O(n log n).
/// \param points as for simplifyOpenPath()
/// \param area not negative
ORMIX_MATH_API void simplifyOpenPathByArea(const PlanarPoint* points, std::size_t nbPoints, omReal64 area,
                                           std::vector<PathChord>& chords);

}  // namespace ormix
