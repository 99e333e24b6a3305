#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Estimation/EstimatorClasses.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <cstddef>

namespace ormix::geom {

/// The region in which two fitted parameters, as the coordinates of a centre, lie with some probability: an ellipse
/// about them, along the axes of their joint covariance.
///
/// \code
/// Ellipse2d<omReal64> region;
/// const BoolResult result = errorEllipse(report, 0, 1, 0.95, region);  // the centre of a circle
/// \endcode
/// Both errors are taken as normally distributed with that covariance, so that the squared radii are its eigenvalues
/// times -2 log(1 - probability), the quantile of chi-square with two degrees of freedom: 5.99 at 95 %. Where sigma0
/// comes from few residuals the ellipse covers less than that.
/// \param i, j parameters of the report: the first is x and the second y of the ellipse
/// \param probability in (0, 1)
/// \return fails, `ellipse` unchanged, when there are no two such parameters, when the probability is out of range, and
///   when the covariance is unknown (NaN)
ORMIX_GEOMETRY_API BoolResult errorEllipse(const FitReport& report, std::size_t i, std::size_t j, omReal64 probability,
                                           Ellipse2d<omReal64>& ellipse);

}  // namespace ormix::geom
