#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Estimation/Samples.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>

#include <vector>

/// \file
/// Conversion of entities to samples of estimators, either to a DataSet, with one vector and one allocation for each
/// sample, or to contiguous samples. For large collections the allocations of a DataSet cost many times what the
/// estimation does. T is one of the four scalar types, which are converted to omReal64 exactly.

namespace ormix::geom {

/// A sample (x, y, z) for each point.
/// @{
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point3d<T>>& points);
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point3dData<T>>& points);
/// @}
/// A sample (x1, y1, z1, x2, y2, z2) for each index.
/// \throw ORMIXGeometryException, logged first, when the collections have different sizes
/// @{
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point3d<T>>& first, const std::vector<Point3d<T>>& second);
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point3dData<T>>& first,
                                     const std::vector<Point3dData<T>>& second);
/// @}

/// A sample (x, y, z) for each point, in one allocation. Point3dData<omReal64> are not copied: the samples refer to
/// their coordinates. The estimators of translations, rigid motions and similarities also take sources and targets in
/// separate collections:
/// \code
/// RigidTransform3dEstimator estimator;
/// estimator.computeEstimation(toSamples(sources), toSamples(targets), params);
/// \endcode
/// @{
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point3d<T>>& points);
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point3dData<T>>& points);
/// @}
/// Not available for temporary points, which would be destroyed before their samples.
Samples toSamples(std::vector<Point3dData<omReal64>>&& points) = delete;
/// A sample (x1, y1, z1, x2, y2, z2) for each index, in one allocation.
/// \throw ORMIXGeometryException, logged first, when the collections have different sizes
/// @{
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point3d<T>>& first, const std::vector<Point3d<T>>& second);
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point3dData<T>>& first,
                                     const std::vector<Point3dData<T>>& second);
/// @}

}  // namespace ormix::geom
