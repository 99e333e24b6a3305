#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Entity/PointArithmetic.h>
#include <ORMIXMath/Scalar/Cast.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>

#include <functional>
#include <ostream>

namespace ormix::geom {

template <class T>
std::ostream& operator<<(std::ostream& stream, const Point2dData<T>& point) {
  return stream << '[' << point.getX() << ", " << point.getY() << ']';
}

template <class T>
omReal64 normL2(const Point2dData<T>& point) {
  if constexpr (std::is_integral_v<T>)
    return detail::wrappedNorm(point.getX(), point.getY());
  else
    return euclideanNorm(omReal64(point.getX()), omReal64(point.getY()));
}

template <class T>
omReal64 distance(const Point2dData<T>& a, const Point2dData<T>& b) {
  if constexpr (std::is_integral_v<T>)
    return detail::wrappedNorm(detail::inCoordinateType(std::minus<>(), b.getX(), a.getX()),
                               detail::inCoordinateType(std::minus<>(), b.getY(), a.getY()));
  else
    return euclideanNorm(omReal64(T(b.getX() - a.getX())), omReal64(T(b.getY() - a.getY())));
}

template <class T>
bool compare(const Point2dData<T>& a, const Point2dData<T>& b, std::common_type_t<T> tolerance) {
  return static_cast<omReal64>(tolerance) >= distance(a, b);
}

template <class T>
omReal64 scalarProduct(const Point2dData<T>& a, const Point2dData<T>& b) {
  return omReal64(a.getX()) * omReal64(b.getX()) + omReal64(a.getY()) * omReal64(b.getY());
}

template <class TOut, class TIn>
Point2dData<TOut> cast(const Point2dData<TIn>& point) {
  return {castScalar<TOut>(point.getX()), castScalar<TOut>(point.getY())};
}

#define ORMIX_GEOMETRY_INSTANTIATE_POINT(T)                                                                      \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Point2dData<T>&);                    \
  template ORMIX_GEOMETRY_API omReal64 normL2(const Point2dData<T>&);                                            \
  template ORMIX_GEOMETRY_API omReal64 distance(const Point2dData<T>&, const Point2dData<T>&);                   \
  template ORMIX_GEOMETRY_API bool compare(const Point2dData<T>&, const Point2dData<T>&, std::common_type_t<T>); \
  template ORMIX_GEOMETRY_API omReal64 scalarProduct(const Point2dData<T>&, const Point2dData<T>&);              \
  template ORMIX_GEOMETRY_API Point2dData<omInt32> cast<omInt32>(const Point2dData<T>&);                         \
  template ORMIX_GEOMETRY_API Point2dData<omUInt32> cast<omUInt32>(const Point2dData<T>&);                       \
  template ORMIX_GEOMETRY_API Point2dData<omReal32> cast<omReal32>(const Point2dData<T>&);                       \
  template ORMIX_GEOMETRY_API Point2dData<omReal64> cast<omReal64>(const Point2dData<T>&);
ORMIX_GEOMETRY_INSTANTIATE_POINT(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_POINT(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_POINT(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_POINT(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_POINT

}  // namespace ormix::geom
