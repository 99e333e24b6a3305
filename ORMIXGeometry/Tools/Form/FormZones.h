#pragma once

#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>
#include <ORMIXGeometry/Entity/3d/Cylinder/Cylinder3d.h>
#include <ORMIXGeometry/Entity/3d/Plan/Plan3d.h>
#include <ORMIXGeometry/Entity/3d/Sphere/Sphere3d.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Form/FormDeviation.h>

/// \file
/// What form deviations are measured from, as entities. Samples of points are made by toSamples().
///
/// \code
/// FormDeviation form;
/// if (const EstimationStatus status = roundness(toSamples(points), eFR_MinimumZone, form); !status) return status;
/// const FormZone<Circle2d<omReal64>> zone = zoneOfCircle(form);  // zone.outer holds all points, zone.inner none
/// \endcode

namespace ormix::geom {

/// An element with the limits between which all points lie, parallel to it or about its centre.
template <class Entity>
struct FormZone {
  Entity reference;  ///< the element itself, with the radius of the deviation
  Entity inner;      ///< through the lowest points
  Entity outer;      ///< through the highest points
};

/// The zone of a deviation of the function beside; what it is of others is not specified. Constant time.
/// @{
ORMIX_GEOMETRY_API FormZone<Line2d> zoneOfLine(const FormDeviation& form);                ///< planarStraightness()
ORMIX_GEOMETRY_API FormZone<Plan3d> zoneOfPlane(const FormDeviation& form);               ///< flatness()
ORMIX_GEOMETRY_API FormZone<Circle2d<omReal64>> zoneOfCircle(const FormDeviation& form);  ///< roundness()
ORMIX_GEOMETRY_API FormZone<Sphere3d<omReal64>> zoneOfSphere(const FormDeviation& form);  ///< sphericity()
/// @}

/// The zone of cylindricity() or spatialStraightness() along the axis as far as the measured points go, which the
/// deviation does not have: from the foot of the first on the axis to that of the last; between equal ends without any.
/// Inner and outer cylinder have the same ends. Linear in the points.
/// \param form what these functions answered
/// \param points rows of three finite coordinates, of which only the feet on the axis matter
ORMIX_GEOMETRY_API FormZone<Cylinder3d<omReal64>> zoneOfCylinder(const FormDeviation& form, const SampleView& points);

}  // namespace ormix::geom
