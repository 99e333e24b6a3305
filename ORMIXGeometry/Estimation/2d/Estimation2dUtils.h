#pragma once

#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
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

/// One (x, y) for each point.
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point2d<T>>& points);
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point2dData<T>>& points);
/// One (theta, rho) for each line.
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Line2d>& lines);
/// One (x1, y1, x2, y2) for each index.
/// \throw ORMIXGeometryException, logged first, when the collections have different sizes
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point2d<T>>& first, const std::vector<Point2d<T>>& second);
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point2dData<T>>& first,
                                     const std::vector<Point2dData<T>>& second);
/// @}

/// \name As one run of memory
/// The same samples in one allocation, none at all for Point2dData<omReal64>, whose coordinates are used where they
/// are.
/// \code
/// Circle2dEstimator estimator;
/// estimator.computeEstimation(toSamples(points).view(), params);
/// \endcode
/// @{
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point2d<T>>& points);
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point2dData<T>>& points);
/// The points would not outlive their samples.
Samples toSamples(std::vector<Point2dData<omReal64>>&& points) = delete;
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Line2d>& lines);
/// \throw ORMIXGeometryException, logged first, when the collections have different sizes
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point2d<T>>& first, const std::vector<Point2d<T>>& second);
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point2dData<T>>& first,
                                     const std::vector<Point2dData<T>>& second);
/// @}

}  // namespace ormix::geom
