#include <ORMIXGeometry/Measure/2d/Moments2dO3.h>
#include <ORMIXGeometry/Message/MeasureMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXMath/Scalar/DifferenceOfProducts.h>
#include <ORMIXMath/Shape/Ellipse.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <ostream>

namespace ormix {
template class VersionedLevel<geom::Moments2dO3, BaseSerializationObject>;
template class RegisteredObject<geom::Moments2dO3, BaseSerializationObject>;
}  // namespace ormix

namespace ormix::geom {

namespace {

void checkOrder(omUInt32 p, omUInt32 q, const char* function) {
  constexpr omUInt32 most = PlanarMoments::s_maxOrder;
  if (p > most || q > most - p)
    logAndThrow(formatMessage<eMeasureMessage>(eMeasureMessage::eMM_MomentOrder, p, q, most), function, __FILE__,
                __LINE__);
}

void checkMass(const PlanarMoments& moments, const char* function) {
  if (moments.about[0] == 0)
    logAndThrow(formatMessage<eMeasureMessage>(eMeasureMessage::eMM_NoMass), function, __FILE__, __LINE__);
}

using Moments = std::array<omReal64, PlanarMoments::s_nbMoments>;

omReal64 normalized(const Moments& central, omUInt32 p, omUInt32 q) {
  const omReal64 mass = central[0];
  const omReal64 scale = std::abs(mass);
  const omReal64 moment = central[PlanarMoments::index(p, q)];
  // Divided step by step: a power of the mass may overflow where the result does not.
  omReal64 value = (mass < 0 ? -moment : moment) / scale;
  for (omUInt32 order = 0; order + 1 < p + q; order += 2) value /= scale;
  return (p + q) % 2 == 0 ? value : value / std::sqrt(scale);
}

/// The second moments along the principal axes, per mass, and the direction of the larger one.
struct PrincipalAxes {
  omReal64 larger;
  omReal64 smaller;
  omReal64 theta;
};

PrincipalAxes principalAxes(const Moments2dO3& moments, const char* function) {
  const PlanarMoments& planar = moments.getPlanarMoments();
  checkMass(planar, function);
  const auto central = centralMoments(planar);
  const omReal64 mass = central[0];
  const omReal64 xx = central[PlanarMoments::index(2, 0)] / mass;
  const omReal64 xy = central[PlanarMoments::index(1, 1)] / mass;
  const omReal64 yy = central[PlanarMoments::index(0, 2)] / mass;
  const omReal64 mean = (xx + yy) / 2;
  const omReal64 deviation = std::hypot((xx - yy) / 2, xy);
  const omReal64 larger = mean + deviation;
  // The product of both is the determinant: the smaller one from it, where their difference has lost its digits.
  const omReal64 smaller = larger > 0 ? ormix::detail::differenceOfProducts(xx, yy, xy, xy) / larger : mean - deviation;
  // Flat sets have a smaller one of 0 up to rounding, which is far below this.
  constexpr omReal64 rounding = 1e-10;
  if (!(larger >= 0) || smaller < -rounding * larger)
    logAndThrow(formatMessage<eMeasureMessage>(eMeasureMessage::eMM_NoEllipse, mass, mass * larger, mass * smaller),
                function, __FILE__, __LINE__);
  // Adding 0 changes -0 to 0, so that the y axis has the angle pi/2.
  return {larger, std::max(smaller, 0.0), deviation == 0 ? 0 : std::atan2(2 * xy + 0.0, xx - yy) / 2};
}

}  // namespace

omReal64 Moments2dO3::getMoment(omUInt32 p, omUInt32 q) const {
  checkOrder(p, q, __PRETTY_FUNCTION__);
  return rawMoment(_moments, p, q);
}

omReal64 Moments2dO3::getCentralMoment(omUInt32 p, omUInt32 q) const {
  checkOrder(p, q, __PRETTY_FUNCTION__);
  checkMass(_moments, __PRETTY_FUNCTION__);
  return centralMoments(_moments)[PlanarMoments::index(p, q)];
}

omReal64 Moments2dO3::getNormalizedMoment(omUInt32 p, omUInt32 q) const {
  checkOrder(p, q, __PRETTY_FUNCTION__);
  checkMass(_moments, __PRETTY_FUNCTION__);
  return normalized(centralMoments(_moments), p, q);
}

Moments Moments2dO3::getNormalizedMoments() const {
  checkMass(_moments, __PRETTY_FUNCTION__);
  const Moments central = centralMoments(_moments);
  Moments all{};
  for (omUInt32 order = 0; order <= PlanarMoments::s_maxOrder; ++order)
    for (omUInt32 q = 0; q <= order; ++q) all[PlanarMoments::index(order - q, q)] = normalized(central, order - q, q);
  return all;
}

Point2d<omReal64> Moments2dO3::getCentroid() const {
  checkMass(_moments, __PRETTY_FUNCTION__);
  const omReal64 mass = _moments.about[0];
  return {_moments.originX + (_moments.originXRest + _moments.about[PlanarMoments::index(1, 0)] / mass),
          _moments.originY + (_moments.originYRest + _moments.about[PlanarMoments::index(0, 1)] / mass)};
}

Moments2dO3& Moments2dO3::operator+=(const Moments2dO3& other) {
  _moments += other._moments;
  return *this;
}

Moments2dO3& Moments2dO3::operator-=(const Moments2dO3& other) {
  _moments -= other._moments;
  return *this;
}

BoolResult Moments2dO3::validate(const Moments2dO3& moments) {
  return isFinite(moments._moments) ? BoolResult() : failure("Moments are not finite");
}

bool compare(const Moments2dO3& a, const Moments2dO3& b, omReal64 tolerance) {
  const omReal64 massA = a.getMoment(0, 0);
  const omReal64 massB = b.getMoment(0, 0);
  if (massA == 0 || massB == 0) return a == b;
  if (!(std::abs(massA - massB) <= tolerance * std::max(std::abs(massA), std::abs(massB))) ||
      !compare(a.getCentroid(), b.getCentroid(), tolerance))
    return false;
  const Moments ofA = a.getNormalizedMoments();
  const Moments ofB = b.getNormalizedMoments();
  return std::equal(ofA.begin(), ofA.end(), ofB.begin(),
                    [tolerance](omReal64 x, omReal64 y) { return std::abs(x - y) <= tolerance; });
}

std::ostream& operator<<(std::ostream& stream, const Moments2dO3& moments) {
  const PlanarMoments& planar = moments.getPlanarMoments();
  stream << "[origin=[" << planar.originX << ", " << planar.originY << ']';
  for (omUInt32 order = 0; order <= PlanarMoments::s_maxOrder; ++order)
    for (omUInt32 q = 0; q <= order; ++q)
      stream << ", m" << order - q << q << '=' << planar.about[PlanarMoments::index(order - q, q)];
  return stream << ']';
}

Ellipse2d<omReal64> equivalentEllipse(const Moments2dO3& moments) {
  const PrincipalAxes axes = principalAxes(moments, __PRETTY_FUNCTION__);
  return {moments.getCentroid().getCoords(), 2 * std::sqrt(axes.larger), 2 * std::sqrt(axes.smaller), axes.theta};
}

omReal64 principalOrientation(const Moments2dO3& moments) { return principalAxes(moments, __PRETTY_FUNCTION__).theta; }

omReal64 eccentricity(const Moments2dO3& moments) {
  const PrincipalAxes axes = principalAxes(moments, __PRETTY_FUNCTION__);
  return ellipseExcentricity(std::sqrt(axes.larger), std::sqrt(axes.smaller));
}

}  // namespace ormix::geom
