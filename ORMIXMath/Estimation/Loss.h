#pragma once

#include <ORMIXMath/Estimation/FitOptions.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

/// \file
/// The losses of M-estimators as weights of least squares. u is the length of a residual over the scale of the loss,
/// and the weight of a sample is what turns its loss into a square (Huber1981).

namespace ormix {

/// The weight at u >= 0, between 0 and 1.
ORMIX_MATH_API omReal64 lossWeight(eLoss loss, omReal64 u);
/// u times the derivative of the weight, 0 or less.
ORMIX_MATH_API omReal64 lossWeightSlope(eLoss loss, omReal64 u);
/// The loss in units of the squared scale: twice the integral of u times the weight, so u² for squares.
ORMIX_MATH_API omReal64 lossValue(eLoss loss, omReal64 u);

/// The scale of a loss, in standard deviations of one coordinate, at which a fit to distances of `dimension` (1 to 3,
/// asserted) normal coordinates has 95 % of the efficiency of least squares; infinite for squares.
ORMIX_MATH_API omReal64 efficientLossScale(eLoss loss, std::size_t dimension);
/// The median length of a vector of `dimension` (1 to 3, asserted) normal coordinates of standard deviation 1.
ORMIX_MATH_API omReal64 medianLength(std::size_t dimension);

}  // namespace ormix
