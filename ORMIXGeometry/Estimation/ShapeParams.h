#pragma once

#include <ORMIXGeometry/Message/EstimationMessage.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/EstimationStatus.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <array>
#include <boost/numeric/ublas/vector.hpp>
#include <cstddef>
#include <cstring>
#include <type_traits>
#include <vector>

/// \file
/// Shapes of ORMIXMath/Fitting as parameters of estimators: their numbers, in the order of their members; not
/// installed.

namespace ormix::geom::detail {

/// @{
template <class Shape>
void setParams(const Shape& shape, RealVector& params) {
  static_assert(std::is_trivially_copyable_v<Shape> && sizeof(Shape) % sizeof(omReal64) == 0);
  std::memcpy(params.data().begin(), &shape, sizeof(Shape));
}
template <class Shape>
Shape shapeOf(const RealVector& params) {
  Shape shape;
  std::memcpy(&shape, params.data().begin(), sizeof(Shape));
  return shape;
}
/// @}

/// Shapes as models of a robust loop; see RobustModel::estimateMinimal().
template <class Shape, std::size_t N>
std::size_t setModels(const std::array<Shape, N>& shapes, std::size_t nbShapes, std::size_t nbParams,
                      std::vector<RealVector>& models) {
  if (models.size() < nbShapes) models.resize(nbShapes, RealVector(nbParams));
  for (std::size_t k = 0; k < nbShapes; ++k) setParams(shapes[k], models[k]);
  return nbShapes;
}

/// The failed result of an estimator of shapes.
inline BoolResult shapeFailure(const char* what, const EstimationStatus& status) {
  return failure(formatMessage<eEstimationMessage>(eEstimationMessage::eEsM_NoShape, what, toString(status.code),
                                                   std::string(adviceAgainst(status.code))));
}

}  // namespace ormix::geom::detail
