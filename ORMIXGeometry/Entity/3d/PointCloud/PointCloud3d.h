#pragma once

#include <ORMIXGeometry/Entity/3d/Entity3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>

#include <vector>

namespace ormix::geom {

/// Spatial points in order of insertion; points may coincide.
template <class T>
class ORMIX_GEOMETRY_API PointCloud3d : public Entity3d<PointCloud3d<T>, BaseTypedGeometryEntity3d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::PointCloud3d";  ///< registered name
  static constexpr eEntity3dType s_entity3dType = eE3DT_PointCloud;        ///< family

  using PointColl = std::vector<Point3dData<T>>;  ///< the storage

  /// No points.
  PointCloud3d() = default;
  /// A copy of the points.
  explicit PointCloud3d(const PointColl& points) : _pointColl(points) {}

  /// The number of points.
  std::size_t size() const { return _pointColl.size(); }

  /// The points themselves; they may be changed, added and removed.
  /// @{
  const PointColl& getCollection() const { return _pointColl; }
  PointColl& getCollection() { return _pointColl; }
  /// @}
  /// Replaces all points by a copy of `points`.
  void setCollection(const PointColl& points) { _pointColl = points; }
  /// Appends a point, in amortised constant time.
  void push_back(const Point3dData<T>& point) { _pointColl.push_back(point); }
  /// Removes all points.
  void clear() { _pointColl.clear(); }

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_pointColl", self._pointColl);
  }

  PointColl _pointColl;
};

/// The points: "[[0, 0, 0], [4, 3, 2]]".
template <class T>
std::ostream& operator<<(std::ostream& stream, const PointCloud3d<T>& cloud);

/// Converts each point, see cast() of points.
template <class TOut, class TIn>
PointCloud3d<TOut> cast(const PointCloud3d<TIn>& cloud);
/// The same into an existing cloud, whose memory is reused.
/// \param result may be `cloud` itself
template <class TOut, class TIn>
void cast(const PointCloud3d<TIn>& cloud, PointCloud3d<TOut>& result);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(extern, PointCloud3d)
