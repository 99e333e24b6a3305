#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>

#include <vector>

namespace ormix::geom {

/// A collection of planar points. Their order is that of insertion and has no geometric meaning; equal points may
/// occur.
template <class T>
class ORMIX_GEOMETRY_API PointCloud2d : public Entity2d<PointCloud2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::PointCloud2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_PointCloud;        ///< returned by getEntity2dType()

  using PointColl = std::vector<Point2dData<T>>;  ///< the points, contiguous

  /// No points.
  PointCloud2d() = default;
  /// A copy of the points.
  explicit PointCloud2d(const PointColl& points) : _pointColl(points) {}

  std::size_t size() const { return _pointColl.size(); }  ///< number of points

  /// The stored points; they may be changed in any way through the non-const reference.
  /// @{
  const PointColl& getCollection() const { return _pointColl; }
  PointColl& getCollection() { return _pointColl; }
  /// @}
  /// Replaces all points by a copy of `points`.
  void setCollection(const PointColl& points) { _pointColl = points; }
  /// Appends a point; amortised constant time.
  void push_back(const Point2dData<T>& point) { _pointColl.push_back(point); }
  /// Removes all points; the memory is kept for later ones.
  void clear() { _pointColl.clear(); }

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_pointColl", self._pointColl);
  }

  PointColl _pointColl;
};

/// Prints the points, "[[0, 0], [4, 3]]".
template <class T>
std::ostream& operator<<(std::ostream& stream, const PointCloud2d<T>& cloud);

/// Converts each point, see cast() of Point2dData.
template <class TOut, class TIn>
PointCloud2d<TOut> cast(const PointCloud2d<TIn>& cloud);
/// The same into an existing cloud, whose memory is reused.
/// \param result may be `cloud` itself
template <class TOut, class TIn>
void cast(const PointCloud2d<TIn>& cloud, PointCloud2d<TOut>& result);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, PointCloud2d)
