#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>
#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <functional>

namespace ormix::geom {

namespace {

const ScalarRegistrators<Point2d> g_classRegistrator;

/// Sums, differences and products in the coordinate type itself: integers wrap around, by way of unsigned arithmetic.
template <class Operation, class T>
T inCoordinateType(Operation operation, T a, T b) {
  if constexpr (std::is_integral_v<T>)
    return static_cast<T>(operation(static_cast<omUInt32>(a), static_cast<omUInt32>(b)));
  else
    return operation(a, b);
}

/// Integer quotients that would trap: by zero that of the reals, rounded and saturated; lowest by -1 wraps to the
/// lowest again, as the product by -1 does.
template <class T>
T quotient(T a, T b) {
  if constexpr (std::is_integral_v<T>) {
    if (b == 0) return round<T, omReal64>(static_cast<omReal64>(a) / 0.0);
    return static_cast<T>(static_cast<omInt64>(a) / static_cast<omInt64>(b));
  } else {
    return a / b;
  }
}

template <class Operation, class T>
void combine(Point2dData<T>& a, const Point2dData<T>& b, Operation operation) {
  a.setCoords(inCoordinateType(operation, a.getX(), b.getX()), inCoordinateType(operation, a.getY(), b.getY()));
}

/// A component of a vector is rounded to the coordinate type before it is used, and the result again (intended).
template <class Operation, class T>
T withComponent(Operation operation, T coordinate, omReal64 component) {
  const auto rounded = static_cast<omReal64>(round<T, omReal64>(component));
  return round<T, omReal64>(operation(static_cast<omReal64>(coordinate), rounded));
}

template <class Operation, class T>
void combine(Point2dData<T>& point, const Vector2d& vector, Operation operation) {
  point.setCoords(withComponent(operation, point.getX(), vector.getX()),
                  withComponent(operation, point.getY(), vector.getY()));
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
  _ptData.setCoords(quotient(getX(), other.getX()), quotient(getY(), other.getY()));
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
