#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/Enumeration.h>

#include <cstddef>
#include <vector>

namespace ormix {

/// A path or a ring to simplify: `nbPoints` interleaved pairs x0, y0, x1, y1, ..., not owned.
struct PathView {
  const omReal64* xy;    ///< null when there are no points
  std::size_t nbPoints;  ///< a ring's first vertex is not repeated at its end
  bool isRing;           ///< whether an edge leads from the last vertex to the first
};

/// How paths are simplified.
enum ePathSimplification {
  ePS_KeepTopology,  ///< Douglas and Peucker's method, then vertices are taken back where edges would cross
  ePS_EachAlone,     ///< Douglas and Peucker's method for each path by itself; results may cross
  ePS_ByArea         ///< Visvalingam and Whyatt's method, then vertices are taken back where edges would cross
};

/// Texts of ePathSimplification.
template <>
struct EnumerationNames<ePathSimplification> {
  static constexpr std::string_view typeName = "ePathSimplification";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 3> names{"ePS_KeepTopology", "ePS_EachAlone", "ePS_ByArea"};
};

/// Whether paths were simplified, or why not.
enum ePathOutcome {
  ePO_Simplified,
  ePO_NotNumbered,  ///< a coordinate is not finite, or there are 2^32 - 2 vertices or more
  ePO_Crossing      ///< two edges of the input that the result would have cross
};

/// The vertices that are kept, for all paths in their order.
struct SimplifiedPaths {
  ePathOutcome outcome = ePO_Simplified;
  std::vector<omUInt32> kept;     ///< indices of a path's vertices, ascending
  std::vector<std::size_t> ends;  ///< for each path, where its indices end in `kept`
  PlanarPoint crossing{0, 0};     ///< where edges cross, when they do
};

/// Simplifies paths and rings together, to some of their vertices. What was left out of a path lies within the
/// tolerance of the edge that replaces it, up to 2^-50 of that edge's length; with ePS_ByArea, what triangles up to the
/// square of the tolerance allow, see simplifyOpenPathByArea(). Ends of paths are kept, and of each ring the first
/// vertex in order of x, then y, from which rings are simplified: the result depends neither on where a ring begins nor
/// on the order of the paths. A ring keeps at least three vertices unless all of its vertices lie on a line.
///
/// Tolerance 0 leaves out repeated vertices and those exactly between their neighbours, nothing else.
///
/// Unless each path is by itself: where edges of one or of several paths have more in common than ends that they
/// share, or where an edge would pass a kept vertex that its stretch did not pass, the stretches behind those edges are
/// split at their farthest vertices, until there are none. So paths and rings that do not cross before do not after;
/// rings keep their orientation and what they enclose. A border that rings share, vertex by vertex, remains shared, in
/// whatever directions they have it; vertices where such borders meet are kept, as are all at which a path meets itself
/// or another one. Douglas and Peucker's methods change nothing when applied to their result.
///
/// O(n log n) as a rule for n vertices, O(n) memory. A path without vertices keeps none. The work on crossings is
/// bounded by a multiple of n: input that needs more, by very long edges side by side that are neither upright nor
/// level, keeps all of its vertices.
/// \param tolerance finite and not negative, in the unit of the coordinates
ORMIX_MATH_API SimplifiedPaths simplifyPaths(const std::vector<PathView>& paths, omReal64 tolerance,
                                             ePathSimplification method = ePS_KeepTopology);

}  // namespace ormix
