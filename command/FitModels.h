#pragma once

#include <ORMIXGeometry/Estimation/FitReport.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/BaseEstimator.h>
#include <ORMIXSerialization/Object/ObjectArchive.h>

#include <memory>
#include <string_view>
#include <vector>

namespace ormix::command {

/// What can be fitted to points or pairs of points.
struct FitModel {
  std::string_view name;                     ///< of the model, the first operand of "ormix fit"
  std::size_t dimension;                     ///< numbers of a point, or of a pair
  std::vector<std::string_view> paramNames;  ///< names of the parameters
  bool isAlgebraic;                          ///< whether residuals are d² + 2 r d for a distance d, r the last one
  std::unique_ptr<BaseEstimator> (*estimator)();  ///< null where only the fit with a report finds the whole model
  SerializationObjectPtr (*entity)(const RealVector& params);  ///< the entity or transform; null in the same case
  /// The fit that answers a report.
  BoolResult (*report)(const SampleView& samples, const FitOptions& options, SerializationObjectPtr& entity,
                       geom::FitReport& report);

  /// The distance of a point from the model; NaN where the residual is.
  omReal64 distance(omReal64 residual, const RealVector& params) const;
};

/// All of them. Models of the plane and of space that have one name differ in the dimension.
const std::vector<FitModel>& fitModels();

}  // namespace ormix::command
