#include <ORMIXGeometry/Estimation/3d/HomographyTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/HomographyEstimator.ipp>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(, HomographyEstimator, HomographyTransform3dEstimator, 3)
