#pragma once

#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Estimation/Samples.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>

#include <vector>

/// \file
/// Conversion of entities to samples of estimators, either to a DataSet, with one vector and one allocation for each
/// sample, or to contiguous samples. For large collections the allocations of a DataSet cost many times what the
/// estimation does. T is one of the four scalar types, which are converted to omReal64 exactly.

namespace ormix::geom {

/// A sample (x, y) for each point.
/// @{
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point2d<T>>& points);
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point2dData<T>>& points);
/// @}
/// A sample (theta, rho) for each line.
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Line2d>& lines);
/// A sample (x1, y1, x2, y2) for each index.
/// \throw ORMIXGeometryException, logged first, when the collections have different sizes
/// @{
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point2d<T>>& first, const std::vector<Point2d<T>>& second);
template <class T>
ORMIX_GEOMETRY_API DataSet toDataSet(const std::vector<Point2dData<T>>& first,
                                     const std::vector<Point2dData<T>>& second);
/// @}

/// A sample (x, y) for each point, in one allocation. Point2dData<omReal64> are not copied: the samples refer to their
/// coordinates.
/// \code
/// Circle2dEstimator estimator;
/// estimator.computeEstimation(toSamples(points).view(), params);
/// \endcode
/// @{
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point2d<T>>& points);
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point2dData<T>>& points);
/// @}
/// Not available for temporary points, which would be destroyed before their samples.
Samples toSamples(std::vector<Point2dData<omReal64>>&& points) = delete;
/// A sample (theta, rho) for each line, in one allocation.
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Line2d>& lines);
/// A sample (x1, y1, x2, y2) for each index, in one allocation.
/// \throw ORMIXGeometryException, logged first, when the collections have different sizes
/// @{
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point2d<T>>& first, const std::vector<Point2d<T>>& second);
template <class T>
ORMIX_GEOMETRY_API Samples toSamples(const std::vector<Point2dData<T>>& first,
                                     const std::vector<Point2dData<T>>& second);
/// @}

}  // namespace ormix::geom
