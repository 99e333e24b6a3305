#pragma once

#include <ORMIXGeometry/Entity/2d/PointCloud/BoostPoint2d.h>

#include <boost/geometry/core/closure.hpp>
#include <boost/geometry/core/exterior_ring.hpp>
#include <boost/geometry/core/interior_rings.hpp>
#include <boost/geometry/core/point_order.hpp>
#include <stdexcept>
#include <vector>

namespace ormix::geom {

/// A run of vertices as a closed Boost.Geometry ring that turns as `Order` says.
template <class T, boost::geometry::order_selector Order>
class BoostRing2d : public std::vector<Point2dData<T>> {
 public:
  using std::vector<Point2dData<T>>::vector;
};

/// A run of vertices as a Boost.Geometry polygon without interior rings whose exterior ring is the run itself. It is a
/// vector of points and nothing else, so that the vertices of an entity can be used in place: see `asDirectPolygon` and
/// `asReversePolygon`.
///
/// Boost.Geometry gives wrong hulls, self-turns and centroids on unsigned coordinates and on large integers: copy those
/// to omReal64 first.
template <class T, boost::geometry::order_selector Order>
class BoostPolygon2d : public BoostRing2d<T, Order> {
 public:
  using BoostRing2d<T, Order>::BoostRing2d;
};

/// Counter-clockwise (x to the right, y up), for rings of the role `eP2DT_Exterior`.
template <class T>
using BoostDirectPolygon2d = BoostPolygon2d<T, boost::geometry::counterclockwise>;
/// Clockwise, for rings of the role `eP2DT_Interior`.
template <class T>
using BoostReversePolygon2d = BoostPolygon2d<T, boost::geometry::clockwise>;

/// \name The vertices themselves, seen as the adapter; nothing is copied.
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

/// The interior rings of a polygon that has room for none.
template <class Ring>
class BoostNoInteriorRings {
 public:
  using value_type = Ring;
  using iterator = Ring*;
  using const_iterator = const Ring*;
  using size_type = std::size_t;

  iterator begin() { return nullptr; }
  iterator end() { return nullptr; }
  const_iterator begin() const { return nullptr; }
  const_iterator end() const { return nullptr; }
  size_type size() const { return 0; }
  bool empty() const { return true; }
  void clear() {}

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

template <class T, order_selector Order>
struct tag<ormix::geom::BoostRing2d<T, Order>> {
  using type = ring_tag;
};
// Rings are closed by default.
template <class T, order_selector Order>
struct point_order<ormix::geom::BoostRing2d<T, Order>> {
  static constexpr order_selector value = Order;
};

template <class T, order_selector Order>
struct tag<ormix::geom::BoostPolygon2d<T, Order>> {
  using type = polygon_tag;
};
template <class T, order_selector Order>
struct ring_const_type<ormix::geom::BoostPolygon2d<T, Order>> {
  using type = const ormix::geom::BoostRing2d<T, Order>&;
};
template <class T, order_selector Order>
struct ring_mutable_type<ormix::geom::BoostPolygon2d<T, Order>> {
  using type = ormix::geom::BoostRing2d<T, Order>&;
};
template <class T, order_selector Order>
struct exterior_ring<ormix::geom::BoostPolygon2d<T, Order>> {
  static ormix::geom::BoostRing2d<T, Order>& get(ormix::geom::BoostPolygon2d<T, Order>& polygon) { return polygon; }
  static const ormix::geom::BoostRing2d<T, Order>& get(const ormix::geom::BoostPolygon2d<T, Order>& polygon) {
    return polygon;
  }
};

template <class T, order_selector Order>
struct interior_const_type<ormix::geom::BoostPolygon2d<T, Order>> {
  using type = const ormix::geom::BoostNoInteriorRings<ormix::geom::BoostRing2d<T, Order>>&;
};
template <class T, order_selector Order>
struct interior_mutable_type<ormix::geom::BoostPolygon2d<T, Order>> {
  using type = ormix::geom::BoostNoInteriorRings<ormix::geom::BoostRing2d<T, Order>>&;
};
template <class T, order_selector Order>
struct interior_rings<ormix::geom::BoostPolygon2d<T, Order>> {
  // One for all polygons, as it holds nothing.
  static auto& get(const ormix::geom::BoostPolygon2d<T, Order>&) {
    static ormix::geom::BoostNoInteriorRings<ormix::geom::BoostRing2d<T, Order>> none;
    return none;
  }
};

}  // namespace boost::geometry::traits
