#pragma once

#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXMath/Moments/PlanarMoments.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>

#include <array>
#include <iosfwd>

namespace ormix {
extern template class VersionedLevel<geom::Moments2dO3, BaseSerializationObject>;
extern template class RegisteredObject<geom::Moments2dO3, BaseSerializationObject>;
}  // namespace ormix

namespace ormix::geom {

/// The moments of a region of the plane, or of points of mass 1, up to the order 3, in powers of the unit of the
/// coordinates.
///
/// They are held about an origin, the centroid where there is one, and so are right to the last digits however far the
/// region is from (0, 0); moments about (0, 0) are computed from them. The mass m00 is the area of a region as
/// AreaMsr2d has it, so it is negative for a ring in the direction that is not its own, and 0 where areas cancel.
class ORMIX_GEOMETRY_API Moments2dO3 : public RegisteredObject<Moments2dO3, BaseSerializationObject> {
 public:
  static constexpr const char* s_className = "ormix::geom::Moments2dO3";  ///< registered name

  /// Those of the empty set: all 0.
  Moments2dO3() = default;
  /// The same numbers with the origin moved to the centroid where there is one.
  explicit Moments2dO3(const PlanarMoments& moments) : _moments(centredMoments(moments)) {}

  /// The integral of x^p y^q; not finite where it or a part of it overflows, which for third moments is the case from
  /// distances of about 1e100 on.
  /// \throw ORMIXGeometryException, logged first, when p + q > 3
  omReal64 getMoment(omUInt32 p, omUInt32 q) const;
  /// The integral of (x − xc)^p (y − yc)^q with the centroid (xc, yc).
  /// \throw ORMIXGeometryException, logged first, when p + q > 3 or the mass is 0
  omReal64 getCentralMoment(omUInt32 p, omUInt32 q) const;
  /// The central moment, divided by m00^(1 + (p + q)/2): that of the region scaled to the mass 1. Of a negative mass,
  /// that of the same region with a positive one.
  /// \throw ORMIXGeometryException, logged first, when p + q > 3 or the mass is 0
  omReal64 getNormalizedMoment(omUInt32 p, omUInt32 q) const;
  /// All of them, by `PlanarMoments::index`, in the time of one or two.
  /// \throw ORMIXGeometryException, logged first, when the mass is 0
  std::array<omReal64, PlanarMoments::s_nbMoments> getNormalizedMoments() const;
  /// (m10 / m00, m01 / m00).
  /// \throw ORMIXGeometryException, logged first, when the mass is 0
  Point2d<omReal64> getCentroid() const;

  /// The numbers themselves.
  const PlanarMoments& getPlanarMoments() const { return _moments; }

  /// The moments of two sets together, or of the first less the second.
  /// @{
  Moments2dO3& operator+=(const Moments2dO3& other);
  Moments2dO3& operator-=(const Moments2dO3& other);
  friend Moments2dO3 operator+(Moments2dO3 a, const Moments2dO3& b) { return a += b; }
  friend Moments2dO3 operator-(Moments2dO3 a, const Moments2dO3& b) { return a -= b; }
  /// @}

  /// Whether origins and moments are equal, without a tolerance.
  /// @{
  friend bool operator==(const Moments2dO3& a, const Moments2dO3& b) {
    return a._moments.originX == b._moments.originX && a._moments.originY == b._moments.originY &&
           a._moments.originXRest == b._moments.originXRest && a._moments.originYRest == b._moments.originYRest &&
           a._moments.about == b._moments.about;
  }
  friend bool operator!=(const Moments2dO3& a, const Moments2dO3& b) { return !(a == b); }
  /// @}

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    auto& moments = self._moments;
    auto& m = moments.about;
    return item("_originX", moments.originX) && item("_originY", moments.originY) &&
           item("_originXRest", moments.originXRest) && item("_originYRest", moments.originYRest) &&
           item("_m00", m[0]) && item("_m10", m[1]) && item("_m01", m[2]) && item("_m20", m[3]) && item("_m11", m[4]) &&
           item("_m02", m[5]) && item("_m30", m[6]) && item("_m21", m[7]) && item("_m12", m[8]) && item("_m03", m[9]);
  }
  static BoolResult validate(const Moments2dO3& moments);

  PlanarMoments _moments;
};

/// Whether both have mass, their centroids are at most `tolerance` apart, their masses differ by at most `tolerance`
/// times the larger one, and so do their normalized moments, absolutely. Where one has no mass, whether they are equal.
ORMIX_GEOMETRY_API bool compare(const Moments2dO3& a, const Moments2dO3& b, omReal64 tolerance);

/// Prints "[origin=[1, 2], m00=4, m10=0, m01=0, m20=1, m11=0, m02=1, m30=0, m21=0, m12=0, m03=0]": the moments about
/// the origin, which is the centroid where there is one.
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Moments2dO3& moments);

/// The ellipse whose centroid and second moments, per mass, are those of the region: its radii are twice the standard
/// deviations along the principal axes, the larger one first, theta the direction of the larger one in (-pi/2, pi/2], 0
/// where both are equal. Its area is that of the region only where the region is an ellipse.
/// \throw ORMIXGeometryException, logged first, when the mass is 0, or a second moment has the opposite sign, as masses
/// of both signs may have
ORMIX_GEOMETRY_API Ellipse2d<omReal64> equivalentEllipse(const Moments2dO3& moments);

/// The direction of the larger axis of the equivalent ellipse, in (-pi/2, pi/2], radians; fails as it does.
ORMIX_GEOMETRY_API omReal64 principalOrientation(const Moments2dO3& moments);

/// The excentricity of the equivalent ellipse, in [0, 1]; fails as it does.
ORMIX_GEOMETRY_API omReal64 eccentricity(const Moments2dO3& moments);

}  // namespace ormix::geom
