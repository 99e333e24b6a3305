#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>
#include <ORMIXGeometry/Entity/PointArithmetic.h>
#include <ORMIXMath/Scalar/Cast.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>

#include <cmath>
#include <functional>
#include <ostream>

namespace ormix::geom {

namespace {

template <class Operation, class T>
void combine(Point3dData<T>& a, const Point3dData<T>& b, Operation operation) {
  a.setCoords(detail::inCoordinateType(operation, a.getX(), b.getX()),
              detail::inCoordinateType(operation, a.getY(), b.getY()),
              detail::inCoordinateType(operation, a.getZ(), b.getZ()));
}

template <class Operation, class T>
void combine(Point3dData<T>& point, const Vector3d& vector, Operation operation) {
  point.setCoords(detail::withComponent(operation, point.getX(), vector.getX()),
                  detail::withComponent(operation, point.getY(), vector.getY()),
                  detail::withComponent(operation, point.getZ(), vector.getZ()));
}

}  // namespace

template <class T>
Point3dData<T>& Point3dData<T>::operator+=(const Point3dData& other) {
  combine(*this, other, std::plus<>());
  return *this;
}
template <class T>
Point3dData<T>& Point3dData<T>::operator-=(const Point3dData& other) {
  combine(*this, other, std::minus<>());
  return *this;
}
template <class T>
Point3dData<T>& Point3dData<T>::operator*=(const Point3dData& other) {
  combine(*this, other, std::multiplies<>());
  return *this;
}
template <class T>
Point3dData<T>& Point3dData<T>::operator/=(const Point3dData& other) {
  setCoords(detail::quotient(_x, other._x), detail::quotient(_y, other._y), detail::quotient(_z, other._z));
  return *this;
}

template <class T>
Point3dData<T>& Point3dData<T>::operator+=(T scalar) {
  return *this += Point3dData(scalar, scalar, scalar);
}
template <class T>
Point3dData<T>& Point3dData<T>::operator-=(T scalar) {
  return *this -= Point3dData(scalar, scalar, scalar);
}
template <class T>
Point3dData<T>& Point3dData<T>::operator*=(T scalar) {
  return *this *= Point3dData(scalar, scalar, scalar);
}
template <class T>
Point3dData<T>& Point3dData<T>::operator/=(T scalar) {
  return *this /= Point3dData(scalar, scalar, scalar);
}

template <class T>
Point3dData<T>& Point3dData<T>::operator+=(const Vector3d& vector) {
  combine(*this, vector, std::plus<>());
  return *this;
}
template <class T>
Point3dData<T>& Point3dData<T>::operator-=(const Vector3d& vector) {
  combine(*this, vector, std::minus<>());
  return *this;
}
template <class T>
Point3dData<T>& Point3dData<T>::operator*=(const Vector3d& vector) {
  combine(*this, vector, std::multiplies<>());
  return *this;
}
template <class T>
Point3dData<T>& Point3dData<T>::operator/=(const Vector3d& vector) {
  combine(*this, vector, std::divides<>());
  return *this;
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Point3dData<T>& point) {
  return stream << '[' << point.getX() << ", " << point.getY() << ", " << point.getZ() << ']';
}

template <class T>
omReal64 normL2(const Point3dData<T>& point) {
  if constexpr (std::is_integral_v<T>)
    return detail::wrappedNorm(point.getX(), point.getY(), point.getZ());
  else
    return euclideanNorm(omReal64(point.getX()), omReal64(point.getY()), omReal64(point.getZ()));
}

template <class T>
omReal64 distance(const Point3dData<T>& a, const Point3dData<T>& b) {
  if constexpr (std::is_integral_v<T>)
    return detail::wrappedNorm(detail::inCoordinateType(std::minus<>(), b.getX(), a.getX()),
                               detail::inCoordinateType(std::minus<>(), b.getY(), a.getY()),
                               detail::inCoordinateType(std::minus<>(), b.getZ(), a.getZ()));
  else
    return euclideanNorm(omReal64(T(b.getX() - a.getX())), omReal64(T(b.getY() - a.getY())),
                         omReal64(T(b.getZ() - a.getZ())));
}

template <class T>
bool compare(const Point3dData<T>& a, const Point3dData<T>& b, std::common_type_t<T> tolerance) {
  return static_cast<omReal64>(tolerance) >= distance(a, b);
}

template <class T>
Point3dData<T> crossProduct(const Point3dData<T>& a, const Point3dData<T>& b) {
  const auto component = [](T a0, T a1, T b0, T b1) {
    return detail::inCoordinateType(std::minus<>(), detail::inCoordinateType(std::multiplies<>(), a0, b1),
                                    detail::inCoordinateType(std::multiplies<>(), a1, b0));
  };
  return {component(a.getY(), a.getZ(), b.getY(), b.getZ()), component(a.getZ(), a.getX(), b.getZ(), b.getX()),
          component(a.getX(), a.getY(), b.getX(), b.getY())};
}

template <class TOut, class TIn>
Point3dData<TOut> cast(const Point3dData<TIn>& point) {
  return {castScalar<TOut>(point.getX()), castScalar<TOut>(point.getY()), castScalar<TOut>(point.getZ())};
}

#define ORMIX_GEOMETRY_INSTANTIATE_POINT(T)                                                                      \
  template class Point3dData<T>;                                                                                 \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Point3dData<T>&);                    \
  template ORMIX_GEOMETRY_API omReal64 normL2(const Point3dData<T>&);                                            \
  template ORMIX_GEOMETRY_API omReal64 distance(const Point3dData<T>&, const Point3dData<T>&);                   \
  template ORMIX_GEOMETRY_API bool compare(const Point3dData<T>&, const Point3dData<T>&, std::common_type_t<T>); \
  template ORMIX_GEOMETRY_API Point3dData<T> crossProduct(const Point3dData<T>&, const Point3dData<T>&);         \
  template ORMIX_GEOMETRY_API Point3dData<omInt32> cast<omInt32>(const Point3dData<T>&);                         \
  template ORMIX_GEOMETRY_API Point3dData<omUInt32> cast<omUInt32>(const Point3dData<T>&);                       \
  template ORMIX_GEOMETRY_API Point3dData<omReal32> cast<omReal32>(const Point3dData<T>&);                       \
  template ORMIX_GEOMETRY_API Point3dData<omReal64> cast<omReal64>(const Point3dData<T>&);
ORMIX_GEOMETRY_INSTANTIATE_POINT(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_POINT(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_POINT(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_POINT(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_POINT

}  // namespace ormix::geom
