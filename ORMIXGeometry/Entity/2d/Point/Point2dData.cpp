#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXMath/Scalar/Cast.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>

#include <cmath>
#include <ostream>

namespace ormix::geom {

namespace {

/// b - a as the type itself computes it; integers wrap.
template <class T>
Point2dData<T> wrappedDifference(const Point2dData<T>& a, const Point2dData<T>& b) {
  return {static_cast<T>(static_cast<omUInt32>(b.getX()) - static_cast<omUInt32>(a.getX())),
          static_cast<T>(static_cast<omUInt32>(b.getY()) - static_cast<omUInt32>(a.getY()))};
}

}  // namespace

template <class T>
std::ostream& operator<<(std::ostream& stream, const Point2dData<T>& point) {
  return stream << '[' << point.getX() << ", " << point.getY() << ']';
}

template <class T>
omReal64 normL2(const Point2dData<T>& point) {
  if constexpr (std::is_integral_v<T>) {
    const auto x = static_cast<omUInt32>(point.getX());
    const auto y = static_cast<omUInt32>(point.getY());
    return std::sqrt(static_cast<omReal64>(static_cast<T>(x * x + y * y)));
  } else {
    return euclideanNorm(static_cast<omReal64>(point.getX()), static_cast<omReal64>(point.getY()));
  }
}

template <class T>
omReal64 distance(const Point2dData<T>& a, const Point2dData<T>& b) {
  if constexpr (std::is_integral_v<T>)
    return normL2(wrappedDifference(a, b));
  else
    return euclideanNorm(omReal64(b.getX()) - omReal64(a.getX()), omReal64(b.getY()) - omReal64(a.getY()));
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
