#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Message/ToolsMessage.h>
#include <ORMIXGeometry/Tools/Distance/ParabolaArc2d.h>
#include <ORMIXMath/Distance/ConvexArc.h>
#include <ORMIXMath/Distance/PlanarSegment.h>
#include <ORMIXMath/Index/BoxTree.h>
#include <ORMIXMath/Location/PreparedRings.h>
#include <ORMIXMath/Shape/CircularArc.h>

#include <optional>
#include <vector>

/// \file
/// What all planar entities are for distances; not installed.

namespace ormix::geom::detail {

/// The points of an entity: those of segments and points, of a smooth curve, and of the region inside rings or inside
/// an ellipse. All numbers are finite.
struct PlanarFigure {
  std::vector<PlanarSegment> segments;  ///< edges; points are segments without length
  /// Index of the first segment of each connected part: of each ring, or of each point.
  std::vector<std::size_t> partStarts;
  std::vector<omReal64> ringCoordinates;  ///< x0, y0, x1, … of the rings of a region, one after the other
  std::vector<std::size_t> ringEnds;      ///< the number of coordinates up to the end of each ring
  std::optional<ormix::detail::ConvexArc> arc;
  std::optional<CircularArc> circularArc;
  bool isUnbounded = false;  ///< a whole parabola; its arc is without ends as yet
  ormix::detail::eBoxOrder order = ormix::detail::eBO_Given;
  const char* className = "";

  /// Multiplies all lengths by a power of two.
  void scale(omReal64 factor);
  /// The largest magnitude of a coordinate or radius.
  omReal64 magnitude() const;
  /// A point of each connected part.
  std::vector<PlanarPoint> representatives() const;
  /// The rings of the region, for questions of where points are.
  /// \throw ORMIXGeometryException, logged first, when there are 2^28 edges or more
  PreparedRings rings() const;
  /// Finds a point that is in the region or on its boundary.
  /// \return the index of the first, or the number of points
  std::size_t findInside(const std::vector<PlanarPoint>& points) const;
};

/// Logs and throws a message about an object of a class, whose name is given with its namespace.
[[noreturn]] void refuse(eToolsMessage::eId message, const char* className, const char* function, int line);

/// The figure of an entity.
/// \throw ORMIXGeometryException, logged first, for what is not bounded other than a parabola, for what has no points,
/// and where a coordinate or size is not finite
/// @{
PlanarFigure figureOf(const BaseGeometryEntity2d& entity);
PlanarFigure figureOf(const ParabolaArc2d& arc);
/// @}

/// Makes a whole parabola an arc with all of its points that may be nearest to a point of the other figure, which is
/// bounded. A point that is nearest to q is not farther from q than the vertex is from any point of the other figure.
void bound(PlanarFigure& parabola, const PlanarFigure& other);

/// Multiplies the lengths of both figures by the power of two that brings them to where products and quotients stay in
/// range; mostly 1.
/// \return the factor
omReal64 scaleTogether(PlanarFigure& a, PlanarFigure& b);

/// An order of figures that depends on their numbers only, for answers that are the same both ways.
bool isBefore(const PlanarFigure& a, const PlanarFigure& b);

}  // namespace ormix::geom::detail
