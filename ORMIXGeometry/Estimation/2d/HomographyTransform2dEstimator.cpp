#include <ORMIXGeometry/Estimation/2d/HomographyTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/HomographyEstimator.ipp>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(, HomographyEstimator, HomographyTransform2dEstimator, 2)
