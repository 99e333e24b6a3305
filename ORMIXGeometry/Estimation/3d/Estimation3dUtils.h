#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Estimation/Samples.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>

#include <vector>

/// \file
/// From entities to the samples of estimators. T is one of the four scalar types, converted to omReal64 exactly.

namespace ormix::geom {

/// \name As a DataSet
/// One vector a sample: a standard interchange, but an allocation for each, which for large collections costs many
/// times what the estimation does. toSamples() avoids it.
/// @{

/// One (x, y, z) for each point.
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point3d<T>>& points);
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point3dData<T>>& points);
/// One (x1, y1, z1, x2, y2, z2) for each index.
/// \throw ORMIXGeometryException, logged first, when the collections have different sizes
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point3d<T>>& first, const std::vector<Point3d<T>>& second);
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point3dData<T>>& first,
                                     const std::vector<Point3dData<T>>& second);
/// @}

/// \name As one run of memory
/// The same samples in one allocation, none at all for Point3dData<omReal64>, whose coordinates are used where they
/// are. The estimators of translations, rigid motions and similarities also take sources and targets apart:
/// \code
/// RigidTransform3dEstimator estimator;
/// estimator.computeEstimation(toSamples(sources), toSamples(targets), params);
/// \endcode
/// @{
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point3d<T>>& points);
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point3dData<T>>& points);
/// The points would not outlive their samples.
Samples toSamples(std::vector<Point3dData<omReal64>>&& points) = delete;
/// \throw ORMIXGeometryException, logged first, when the collections have different sizes
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point3d<T>>& first, const std::vector<Point3d<T>>& second);
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point3dData<T>>& first,
                                     const std::vector<Point3dData<T>>& second);
/// @}

}  // namespace ormix::geom
