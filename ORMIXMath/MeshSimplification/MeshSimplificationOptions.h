#pragma once

#include <ORMIXMath/Estimation/ProgressCallback.h>
#include <ORMIXUtil/Enumeration.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

/// \file
/// What simplification of meshes is told, and what it says.

namespace ormix {

/// Where the vertex is put that an edge becomes.
enum eCollapsePlacement {
  eCP_Best,  ///< Where the quadrics are least, which may be anywhere near the edge.
  eCP_Ends   ///< At an end of the edge, so that all vertices of the result are vertices of the input.
};

/// Why a collapse was refused.
enum eCollapseRefusal {
  eCR_Topology,      ///< It would change the topology: close a hole or tunnel, pinch the surface, or end a component.
  eCR_Locked,        ///< Both ends must stay, or several fans of triangles meet in one of them.
  eCR_Feature,       ///< It would leave or shorten a feature.
  eCR_Valence,       ///< More than 1000 triangles meet in one of the ends.
  eCR_Normal,        ///< A triangle would be turned, or become a needle.
  eCR_Error,         ///< The error would be greater than allowed.
  eCR_Boundary,      ///< The boundary would move by more than its tolerance.
  eCR_Volume,        ///< No placement keeps the volume.
  eCR_Intersection,  ///< The surface would intersect itself where it did not.
};
/// The number of reasons.
inline constexpr std::size_t s_nbCollapseRefusals = 9;

/// Texts of eCollapsePlacement.
template <>
struct EnumerationNames<eCollapsePlacement> {
  static constexpr std::string_view typeName = "eCollapsePlacement";  ///< Name of the type.
  /// Names of the enumerators, in the order of their values.
  static constexpr std::array<std::string_view, 2> names{"eCP_Best", "eCP_Ends"};
};

/// Texts of eCollapseRefusal.
template <>
struct EnumerationNames<eCollapseRefusal> {
  static constexpr std::string_view typeName = "eCollapseRefusal";  ///< Name of the type.
  /// Names of the enumerators, in the order of their values.
  static constexpr std::array<std::string_view, s_nbCollapseRefusals> names{
      "eCR_Topology", "eCR_Locked",   "eCR_Feature", "eCR_Valence",     "eCR_Normal",
      "eCR_Error",    "eCR_Boundary", "eCR_Volume",  "eCR_Intersection"};
};

/// How a mesh is simplified. One of `nbTriangles` and `maxError` must be given, either ends the simplification.
struct MeshSimplificationOptions {
  /// Collapses end when there are at most this many triangles.
  std::optional<std::size_t> nbTriangles{};
  /// Greatest error of a collapse, in the unit of the coordinates, not negative: for each end of the edge, the root of
  /// the mean squared distance of the new vertex from the planes of the triangles that end has come to stand for,
  /// weighted by their areas. It is an estimate; see the distances of the report for what became of it.
  std::optional<omReal64> maxError{};
  eCollapsePlacement placement = eCP_Best;
  /// Whether quadrics are those of the surface as it is now, instead of sums over all that the vertex stands for
  /// (LindstromTurk1999): twice the time, on smooth surfaces a tenth less error, but thin parts suffer.
  bool isMemoryless = false;
  /// Whether each collapse keeps the volume, exactly but for rounding (LindstromTurk1998). Coordinates of types other
  /// than omReal64 are rounded, and what that changes is not made up for. Needs eCP_Best.
  bool keepsVolume = false;
  /// Whether a collapse is refused after which triangles would intersect that did not. Takes several times as long.
  bool avoidsIntersections = false;
  /// How far boundaries may move from where they were, as a bound for the distance both ways along the boundary, in the
  /// unit of the coordinates, not negative; and 2^-40 of the extent more, so that straight boundaries may lose
  /// vertices.
  omReal64 boundaryTolerance = std::numeric_limits<omReal64>::infinity();
  /// Weight of the planes that hold boundaries and features, beside 1 for the surface; not negative.
  omReal64 boundaryWeight = 10;
  /// Edges along which the normals of the triangles differ by more than this, in radians, are features: they are
  /// simplified as lines, and where other than two of them meet, or they meet a boundary, the vertex stays. None where
  /// not given.
  std::optional<omReal64> featureAngle{};
  /// Indices of vertices that stay where they are.
  std::vector<omUInt32> lockedVertices{};
  /// Whether the report has the distances, which may take longer than all the rest.
  bool measuresDistances = true;
  /// Told the progress. What it stops fails, and the mesh stays as it was.
  ProgressCallback progress{};
};

/// Distances of samples of one surface from the nearest point of another.
struct SampledDistance {
  omReal64 greatest = 0;
  omReal64 mean = 0;          ///< Of all samples alike.
  std::size_t nbSamples = 0;  ///< How many samples were measured.
};

/// What simplification did.
struct MeshSimplificationReport {
  std::size_t nbTrianglesBefore = 0;
  std::size_t nbTrianglesAfter = 0;
  std::size_t nbCollapses = 0;
  /// How often an edge, or one of the places for its vertex, was refused for each reason of eCollapseRefusal. An edge
  /// may be refused several times, and collapse in the end.
  std::array<std::size_t, s_nbCollapseRefusals> nbRefusals{};
  omReal64 greatestError = 0;  ///< Of all collapses, see MeshSimplificationOptions::maxError.
  /// Of the vertices, the midpoints of edges and the centroids of triangles of the result from the input, and the other
  /// way round; 0 where not measured. No sample is farther, but points between samples may be: `hausdorff`, of
  /// entities, bounds the distance of all points to a tolerance of the caller. Where the input is such that most
  /// triangles come near most samples, as when all share an edge, only the first samples are measured, so that time
  /// stays in proportion to their number.
  /// @{
  SampledDistance toInput;
  SampledDistance fromInput;
  /// @}
  omReal64 areaBefore = 0;
  omReal64 areaAfter = 0;
  /// Enclosed volumes, with their signs. Without a meaning for meshes that are not closed.
  /// @{
  omReal64 volumeBefore = 0;
  omReal64 volumeAfter = 0;
  /// @}
};

}  // namespace ormix
