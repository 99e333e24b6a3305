#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>
#include <ORMIXGeometry/Entity/PointArithmetic.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <functional>

namespace ormix::geom {

namespace {

template <class Operation, class T>
void combine(Point2dData<T>& a, const Point2dData<T>& b, Operation operation) {
  a.setCoords(detail::inCoordinateType(operation, a.getX(), b.getX()),
              detail::inCoordinateType(operation, a.getY(), b.getY()));
}

template <class Operation, class T>
void combine(Point2dData<T>& point, const Vector2d& vector, Operation operation) {
  point.setCoords(detail::withComponent(operation, point.getX(), vector.getX()),
                  detail::withComponent(operation, point.getY(), vector.getY()));
}

}  // namespace

template <class T>
omReal64 Point2d<T>::normL2() const {
  return geom::normL2(_ptData);
}

template <class T>
Point2d<T>& Point2d<T>::operator+=(const Point2d& other) {
  combine(_ptData, other._ptData, std::plus<>());
  return *this;
}
template <class T>
Point2d<T>& Point2d<T>::operator-=(const Point2d& other) {
  combine(_ptData, other._ptData, std::minus<>());
  return *this;
}
template <class T>
Point2d<T>& Point2d<T>::operator*=(const Point2d& other) {
  combine(_ptData, other._ptData, std::multiplies<>());
  return *this;
}
template <class T>
Point2d<T>& Point2d<T>::operator/=(const Point2d& other) {
  _ptData.setCoords(detail::quotient(getX(), other.getX()), detail::quotient(getY(), other.getY()));
  return *this;
}

template <class T>
Point2d<T>& Point2d<T>::operator+=(T scalar) {
  return *this += Point2d(scalar, scalar);
}
template <class T>
Point2d<T>& Point2d<T>::operator-=(T scalar) {
  return *this -= Point2d(scalar, scalar);
}
template <class T>
Point2d<T>& Point2d<T>::operator*=(T scalar) {
  return *this *= Point2d(scalar, scalar);
}
template <class T>
Point2d<T>& Point2d<T>::operator/=(T scalar) {
  return *this /= Point2d(scalar, scalar);
}

template <class T>
Point2d<T>& Point2d<T>::operator+=(const Vector2d& vector) {
  combine(_ptData, vector, std::plus<>());
  return *this;
}
template <class T>
Point2d<T>& Point2d<T>::operator-=(const Vector2d& vector) {
  combine(_ptData, vector, std::minus<>());
  return *this;
}
template <class T>
Point2d<T>& Point2d<T>::operator*=(const Vector2d& vector) {
  combine(_ptData, vector, std::multiplies<>());
  return *this;
}
template <class T>
Point2d<T>& Point2d<T>::operator/=(const Vector2d& vector) {
  combine(_ptData, vector, std::divides<>());
  return *this;
}

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(, Point2d)
