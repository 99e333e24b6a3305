#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>

#include <iosfwd>
#include <utility>
#include <vector>

ORMIX_GEOMETRY_ENTITY2D_LEVELS(extern, SkeletonVertex2d, BaseGeometryEntity2d)

namespace ormix::geom {

/// A vertex of a skeleton: a point, its distance to the boundary, and the edges of the skeleton that begin or end
/// there. It is an end point with one edge and a branch point with three or more; an edge that begins and ends there
/// counts twice.
class ORMIX_GEOMETRY_API SkeletonVertex2d : public Entity2d<SkeletonVertex2d, BaseGeometryEntity2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::SkeletonVertex2d";  ///< registered name
  /// Returned by getEntity2dType(): that of the skeletons it is a part of (intended).
  static constexpr eEntity2dType s_entity2dType = eE2DT_Skeleton;

  using EdgeIndexColl = std::vector<omUInt32>;  ///< indices of edges, ascending

  /// The origin, with radius 0 and without edges.
  SkeletonVertex2d() = default;
  /// \param point in the unit of the region
  /// \param radius its distance to the boundary
  /// \param edgeIndexColl indices of its edges in their skeleton
  SkeletonVertex2d(const Point2dData<omReal64>& point, omReal64 radius, EdgeIndexColl edgeIndexColl = {})
      : _edgeIndexColl(std::move(edgeIndexColl)), _point(point), _radius(radius) {}

  const Point2dData<omReal64>& getPoint() const { return _point; }          ///< where it is
  omReal64 getRadius() const { return _radius; }                            ///< distance to the boundary
  const EdgeIndexColl& getEdgeIndexColl() const { return _edgeIndexColl; }  ///< indices of its edges
  std::size_t getNbEdges() const { return _edgeIndexColl.size(); }          ///< ends of edges at this vertex
  bool isEndPoint() const { return getNbEdges() == 1; }                     ///< whether one edge ends here
  bool isBranchPoint() const { return getNbEdges() > 2; }                   ///< whether three or more edges meet here

  /// Sets the fields, as the constructor.
  /// @{
  void setPoint(const Point2dData<omReal64>& point) { _point = point; }
  void setRadius(omReal64 radius) { _radius = radius; }
  void setEdgeIndexColl(EdgeIndexColl edgeIndexColl) { _edgeIndexColl = std::move(edgeIndexColl); }
  void addEdgeIndex(omUInt32 edgeIdx) { _edgeIndexColl.push_back(edgeIdx); }
  /// @}

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_point", self._point) && item("_radius", self._radius) && item("_edgeIndexColl", self._edgeIndexColl);
  }

  EdgeIndexColl _edgeIndexColl;  // first: its assignment can fail
  Point2dData<omReal64> _point;
  omReal64 _radius = 0;
};

/// Prints "[point=[1, 2], radius=0.5, edges=[0, 3]]".
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const SkeletonVertex2d& vertex);

}  // namespace ormix::geom
