#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXMath/Shape/Ellipse.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <algorithm>
#include <cmath>
#include <ostream>

namespace ormix::geom {

template <class T>
Ellipse2d<T>::Ellipse2d(const Point2dData<T>& center, T majorRadius, T minorRadius, omReal64 theta) {
  setCoords(center, majorRadius, minorRadius, theta);
}

template <class T>
void Ellipse2d<T>::setCoords(const Point2dData<T>& center, T majorRadius, T minorRadius, omReal64 theta) {
  _centerPt = center;
  _majorRadius = majorRadius;
  _minorRadius = minorRadius;
  setTheta(theta);
}

template <class T>
void Ellipse2d<T>::setTheta(omReal64 theta) {
  _theta = theta;
  _cosTheta = std::cos(theta);
  _sinTheta = std::sin(theta);
}

template <class T>
omReal64 Ellipse2d<T>::area() const {
  return ellipseArea(static_cast<omReal64>(_majorRadius), static_cast<omReal64>(_minorRadius));
}

template <class T>
omReal64 Ellipse2d<T>::perimeterLowerBound() const {
  return ellipsePerimeterLowerBound(static_cast<omReal64>(_majorRadius), static_cast<omReal64>(_minorRadius));
}

template <class T>
omReal64 Ellipse2d<T>::perimeterUpperBound() const {
  return ellipsePerimeterUpperBound(static_cast<omReal64>(_majorRadius), static_cast<omReal64>(_minorRadius));
}

template <class T>
omReal64 Ellipse2d<T>::excentricity() const {
  return ellipseExcentricity(static_cast<omReal64>(_majorRadius), static_cast<omReal64>(_minorRadius));
}

template <class T>
omReal64 Ellipse2d<T>::radius(omReal64 angle) const {
  return ellipseRadius(static_cast<omReal64>(_majorRadius), static_cast<omReal64>(_minorRadius), angle);
}

template <class T>
Point2dData<omReal64> Ellipse2d<T>::boundaryPoint(omReal64 angle) const {
  omReal64 x = 0;
  omReal64 y = 0;
  ellipsePoint(static_cast<omReal64>(centerX()), static_cast<omReal64>(centerY()), static_cast<omReal64>(_majorRadius),
               static_cast<omReal64>(_minorRadius), _cosTheta, _sinTheta, angle, x, y);
  return {x, y};
}

template <class T>
omReal64 Ellipse2d<T>::focalLength() const {
  const auto a = static_cast<omReal64>(_majorRadius);
  const auto b = static_cast<omReal64>(_minorRadius);
  // Scaling the radii to at most 1 by a power of two is exact.
  int exponent = 0;
  std::frexp(std::max(std::abs(a), std::abs(b)), &exponent);
  const omReal64 unitA = std::ldexp(a, -exponent);
  const omReal64 unitB = std::ldexp(b, -exponent);
  return std::ldexp(std::sqrt(std::abs((unitA - unitB) * (unitA + unitB))), exponent);
}

template <class T>
Point2dData<omReal64> Ellipse2d<T>::focus1() const {
  return onMajorAxis(focalLength());
}

template <class T>
Point2dData<omReal64> Ellipse2d<T>::focus2() const {
  return onMajorAxis(-focalLength());
}

template <class T>
Point2dData<omReal64> Ellipse2d<T>::onMajorAxis(omReal64 abscissa) const {
  return {static_cast<omReal64>(centerX()) + abscissa * _cosTheta,
          static_cast<omReal64>(centerY()) + abscissa * _sinTheta};
}

template <class T>
BoolResult Ellipse2d<T>::read(BaseIArchive& archive) {
  BoolResult result = Entity2d<Ellipse2d, BaseTypedGeometryEntity2d<T>>::read(archive);
  if (result) setTheta(_theta);
  return result;
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Ellipse2d<T>& ellipse) {
  return stream << "[center=" << ellipse.center() << ", a=" << ellipse.getMajorRadius()
                << ", b=" << ellipse.getMinorRadius() << ", theta=" << ellipse.getTheta() << ']';
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(Ellipse2d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(, Ellipse2d)
