#pragma once

#include <ORMIXGeometry/Entity/2d/Parabola/Parabola2d.h>
#include <ORMIXGeometry/Entity/2d/Skeleton/SkeletonVertex2d.h>
#include <ORMIXMath/Skeleton/AxisCurve.h>
#include <ORMIXSerialization/Archive/PackedCoordinates.h>

#include <iosfwd>
#include <vector>

ORMIX_GEOMETRY_ENTITY2D_LEVELS(extern, Skeleton2d, BaseGeometryEntity2d)

namespace ormix {

/// A vector of edges is archived as one numeric array of four columns: both vertices, both parts.
template <>
struct PackedCoordinates<AxisEdge> {
  using Scalar = omUInt32;                     ///< type of the numbers
  static constexpr std::size_t nbColumns = 4;  ///< two vertices, two parts
};

}  // namespace ormix

namespace ormix::geom {

/// The skeleton of a region, its medial axis: the points inside whose distance to the boundary is taken at two or more
/// places, as a graph of vertices and edges. Each edge is a segment or an arc of a parabola between two vertices and
/// knows the two parts of the boundary that its points are equally far from. A skeleton is connected as its region is
/// and has a cycle around each hole. `computeSkeleton` makes one; measures and transforms do not take it.
class ORMIX_GEOMETRY_API Skeleton2d : public Entity2d<Skeleton2d, BaseGeometryEntity2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::Skeleton2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_Skeleton;        ///< returned by getEntity2dType()

  using VertexColl = std::vector<SkeletonVertex2d>;  ///< vertices in order of their indices
  using EdgeColl = std::vector<AxisEdge>;            ///< edges in order of their indices
  using PartColl = std::vector<AxisPart>;            ///< parts of the boundary in order of their rings and vertices

  /// An empty skeleton.
  Skeleton2d() = default;
  /// The same vertices, edges and parts. Linear.
  /// \throw ORMIXGeometryException, logged, for an index out of range and for a radius that is negative or not finite
  explicit Skeleton2d(const MedialAxis& axis);
  Skeleton2d(const Skeleton2d&) = default;
  Skeleton2d(Skeleton2d&&) noexcept = default;
  /// When allocation fails, the skeleton stays unchanged.
  Skeleton2d& operator=(const Skeleton2d& other);
  Skeleton2d& operator=(Skeleton2d&&) noexcept = default;
  ~Skeleton2d() override = default;

  bool isEmpty() const { return _vertexColl.empty(); }              ///< whether it has no vertices
  std::size_t getNbVertices() const { return _vertexColl.size(); }  ///< in constant time
  std::size_t getNbEdges() const { return _edgeColl.size(); }       ///< in constant time
  const VertexColl& getVertexColl() const { return _vertexColl; }   ///< all vertices
  const EdgeColl& getEdgeColl() const { return _edgeColl; }         ///< all edges
  const PartColl& getPartColl() const { return _partColl; }         ///< the parts of the boundary that edges refer to

  /// One vertex, one edge, or the curve of an edge, with a check of the index.
  /// \throw ORMIXGeometryException, logged, for an index out of range
  /// @{
  const SkeletonVertex2d& getVertex(std::size_t vertexIdx) const;
  const AxisEdge& getEdge(std::size_t edgeIdx) const;
  AxisCurve getCurve(std::size_t edgeIdx) const;
  /// @}

  /// The parabola of the edge that leads from one vertex to another, in either direction; the first one where several
  /// do. It is given by its focus, a vertex of the boundary, and its directrix, the line of an edge of the boundary.
  /// \throw ORMIXGeometryException, logged, where no edge between these vertices is an arc of a parabola
  Parabola2d getParabola(std::size_t startVertexIdx, std::size_t endVertexIdx) const;

  /// The indices of the parts of the boundary that are nearest to a vertex, two or more, ascending.
  /// \throw ORMIXGeometryException, logged, for an index out of range
  std::vector<omUInt32> getNearestParts(std::size_t vertexIdx) const;

  /// Points, radii and indices without what can be derived.
  MedialAxis toMedialAxis() const;

  /// Removes everything.
  void clear() noexcept;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_vertexColl", self._vertexColl) && item("_edgeColl", self._edgeColl) &&
           item("_partColl", self._partColl);
  }
  static BoolResult validate(const Skeleton2d& skeleton);
  static void complete(Skeleton2d& read) { read.linkVertices(); }
  void linkVertices();

  VertexColl _vertexColl;
  EdgeColl _edgeColl;
  PartColl _partColl;
};

/// Vertices and edges: "[vertices=[[point=[0, 0], radius=0, edges=[0]], …], edges=[[0, 1]]]".
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Skeleton2d& skeleton);

}  // namespace ormix::geom
