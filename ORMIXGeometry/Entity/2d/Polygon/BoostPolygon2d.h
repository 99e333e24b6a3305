#pragma once

#include <ORMIXGeometry/Entity/2d/PointCloud/BoostPoint2d.h>

#include <boost/geometry/core/closure.hpp>
#include <boost/geometry/core/exterior_ring.hpp>
#include <boost/geometry/core/interior_rings.hpp>
#include <boost/geometry/core/point_order.hpp>
#include <stdexcept>
#include <vector>

namespace ormix::geom {

/// A vector of vertices that is a closed ring of Boost.Geometry with the orientation `Order`.
template <class T, boost::geometry::order_selector Order>
class BoostRing2d : public std::vector<Point2dData<T>> {
 public:
  using std::vector<Point2dData<T>>::vector;
};

/// A vector of vertices that is a polygon of Boost.Geometry without interior rings; the vector is the exterior ring. It
/// adds no data, so that the vertices of an entity can be used without a copy: see asDirectPolygon() and
/// asReversePolygon().
///
/// Boost.Geometry computes wrong hulls, self-intersections and centroids for unsigned and for large integer
/// coordinates: cast them to omReal64 first.
template <class T, boost::geometry::order_selector Order>
class BoostPolygon2d : public BoostRing2d<T, Order> {
 public:
  using BoostRing2d<T, Order>::BoostRing2d;
};

/// Oriented counter-clockwise (x to the right, y up), for rings in the role eP2DT_Exterior.
template <class T>
using BoostDirectPolygon2d = BoostPolygon2d<T, boost::geometry::counterclockwise>;
/// Oriented clockwise, for rings in the role eP2DT_Interior.
template <class T>
using BoostReversePolygon2d = BoostPolygon2d<T, boost::geometry::clockwise>;

/// The same vector as a polygon of the orientation assumed, valid as long as the vector; nothing is copied or checked.
/// @{
template <class T>
BoostDirectPolygon2d<T>& asDirectPolygon(std::vector<Point2dData<T>>& points) {
  static_assert(sizeof(BoostDirectPolygon2d<T>) == sizeof(std::vector<Point2dData<T>>));
  return static_cast<BoostDirectPolygon2d<T>&>(points);
}
template <class T>
const BoostDirectPolygon2d<T>& asDirectPolygon(const std::vector<Point2dData<T>>& points) {
  return static_cast<const BoostDirectPolygon2d<T>&>(points);
}
template <class T>
BoostReversePolygon2d<T>& asReversePolygon(std::vector<Point2dData<T>>& points) {
  static_assert(sizeof(BoostReversePolygon2d<T>) == sizeof(std::vector<Point2dData<T>>));
  return static_cast<BoostReversePolygon2d<T>&>(points);
}
template <class T>
const BoostReversePolygon2d<T>& asReversePolygon(const std::vector<Point2dData<T>>& points) {
  return static_cast<const BoostReversePolygon2d<T>&>(points);
}
/// @}

/// The always empty range of interior rings of a BoostPolygon2d.
template <class Ring>
class BoostNoInteriorRings {
 public:
  /// Types that a range of Boost requires.
  /// @{
  using value_type = Ring;
  using iterator = Ring*;
  using const_iterator = const Ring*;
  using size_type = std::size_t;
  /// @}

  /// As for any empty range; null iterators.
  /// @{
  iterator begin() { return nullptr; }
  iterator end() { return nullptr; }
  const_iterator begin() const { return nullptr; }
  const_iterator end() const { return nullptr; }
  size_type size() const { return 0; }
  bool empty() const { return true; }
  void clear() {}
  /// @}

  /// \throw std::length_error always
  void push_back(const Ring&) { refuse(); }
  /// \throw std::length_error unless `nbRings` is 0
  void resize(size_type nbRings) {
    if (nbRings != 0) refuse();
  }

 private:
  [[noreturn]] static void refuse() { throw std::length_error("This polygon has no room for interior rings"); }
};

}  // namespace ormix::geom

namespace boost::geometry::traits {

/// Kind of geometry.
template <class T, order_selector Order>
struct tag<ormix::geom::BoostRing2d<T, Order>> {
  using type = ring_tag;  ///< a ring, closed by default
};
/// Orientation of the ring.
template <class T, order_selector Order>
struct point_order<ormix::geom::BoostRing2d<T, Order>> {
  static constexpr order_selector value = Order;  ///< that of the class
};

/// Kind of geometry.
template <class T, order_selector Order>
struct tag<ormix::geom::BoostPolygon2d<T, Order>> {
  using type = polygon_tag;  ///< a polygon
};
/// Type of the rings of a const polygon.
template <class T, order_selector Order>
struct ring_const_type<ormix::geom::BoostPolygon2d<T, Order>> {
  using type = const ormix::geom::BoostRing2d<T, Order>&;  ///< by reference
};
/// Type of the rings of a polygon.
template <class T, order_selector Order>
struct ring_mutable_type<ormix::geom::BoostPolygon2d<T, Order>> {
  using type = ormix::geom::BoostRing2d<T, Order>&;  ///< by reference
};
/// Access to the exterior ring.
template <class T, order_selector Order>
struct exterior_ring<ormix::geom::BoostPolygon2d<T, Order>> {
  /// The polygon itself.
  /// @{
  static ormix::geom::BoostRing2d<T, Order>& get(ormix::geom::BoostPolygon2d<T, Order>& polygon) { return polygon; }
  static const ormix::geom::BoostRing2d<T, Order>& get(const ormix::geom::BoostPolygon2d<T, Order>& polygon) {
    return polygon;
  }
  /// @}
};

/// Type of the interior rings of a const polygon.
template <class T, order_selector Order>
struct interior_const_type<ormix::geom::BoostPolygon2d<T, Order>> {
  using type = const ormix::geom::BoostNoInteriorRings<ormix::geom::BoostRing2d<T, Order>>&;  ///< by reference
};
/// Type of the interior rings of a polygon.
template <class T, order_selector Order>
struct interior_mutable_type<ormix::geom::BoostPolygon2d<T, Order>> {
  using type = ormix::geom::BoostNoInteriorRings<ormix::geom::BoostRing2d<T, Order>>&;  ///< by reference
};
/// Access to the interior rings.
template <class T, order_selector Order>
struct interior_rings<ormix::geom::BoostPolygon2d<T, Order>> {
  /// One empty range, shared by all polygons since it has no state.
  static auto& get(const ormix::geom::BoostPolygon2d<T, Order>&) {
    static ormix::geom::BoostNoInteriorRings<ormix::geom::BoostRing2d<T, Order>> none;
    return none;
  }
};

}  // namespace boost::geometry::traits
