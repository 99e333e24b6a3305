#pragma once

#include <ORMIXGeometry/Estimation/EstimatorClasses.h>
#include <ORMIXMath/Estimation/FitResult.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace ormix {
extern template class VersionedLevel<geom::FitReport, BaseSerializationObject>;
extern template class RegisteredObject<geom::FitReport, BaseSerializationObject>;
}  // namespace ormix

namespace ormix::geom {

/// What a fit found, how sure it is and how it came about: the numbers of FitResult with the names of their model and
/// parameters. Lengths are in the unit of the samples, angles in radians.
class ORMIX_GEOMETRY_API FitReport : public RegisteredObject<FitReport, BaseSerializationObject>, public FitResult {
 public:
  static constexpr const char* s_className = "ormix::geom::FitReport";  ///< registered name

  /// No parameters, and success.
  FitReport() = default;
  /// A report on the model of that name, with these parameters.
  FitReport(std::string modelName, std::vector<std::string> namesOfParameters, FitResult result);
  FitReport(const FitReport&) = default;
  FitReport(FitReport&&) = default;
  /// All or nothing, also when memory runs out.
  FitReport& operator=(const FitReport& other);
  FitReport& operator=(FitReport&&) = default;
  ~FitReport() override = default;

  std::string model;                        ///< The class that was fitted, as "Circle2d".
  std::vector<std::string> parameterNames;  ///< One for each parameter, as "center x".

  /// Index of the parameter of this name.
  /// \throw ORMIXGeometryException, logged first, when no parameter has it
  std::size_t indexOf(const std::string& name) const;
  /// Standard deviation of parameter i: the root of its variance, NaN where that is unknown.
  /// \throw ORMIXGeometryException, logged first, when there is no such parameter, as in the following functions
  omReal64 standardUncertainty(std::size_t i) const;
  /// Correlation of two parameters, in [-1, 1]; NaN where a variance is 0 or unknown.
  omReal64 correlation(std::size_t i, std::size_t j) const;
  /// The covariance of some of the parameters, row-major, in the order of the indices.
  std::vector<omReal64> marginal(const std::vector<std::size_t>& indices) const;

  /// Whether everything is equal; NaN equals NaN.
  /// @{
  friend ORMIX_GEOMETRY_API bool operator==(const FitReport& a, const FitReport& b);
  friend bool operator!=(const FitReport& a, const FitReport& b) { return !(a == b); }
  /// @}

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    auto& status = self.status;
    return item("_model", self.model) && item("_method", self.method) && item("_parameterNames", self.parameterNames) &&
           item("_params", self.params) && item("_covariance", self.covariance) && item("_sigma0", self.sigma0) &&
           item("_degreesOfFreedom", self.degreesOfFreedom) && item("_residuals", self.residuals) &&
           item("_weights", self.weights) && item("_conditionNumber", self.conditionNumber) &&
           item("_rank", self.rank) && item("_rankThreshold", self.rankThreshold) &&
           item("_nbIterations", self.nbIterations) && item("_inliers", self.inliers) && item("_code", status.code) &&
           item("_quantity", status.quantity) && item("_value", status.value) && item("_threshold", status.threshold) &&
           item("_indices", status.indices) && item("_advice", status.advice) && item("_message", status.message);
  }
  static BoolResult validate(const FitReport& report);
};

/// "4.109 ± 0.031 (k = 2)": the value and k standard deviations, these to two significant digits and the value to the
/// same place. "4.1093 ± unknown" where the standard deviation is NaN or negative. Far from 1 with a common power of
/// ten, as "(4.109 ± 0.031)e-12 (k = 2)". The same in every locale.
ORMIX_GEOMETRY_API std::string withUncertainty(omReal64 value, omReal64 standardUncertainty, unsigned int k = 2);

/// Prints the report: a line with model, method and the number of residuals where there are any, one for each parameter
/// as withUncertainty() has it, one with sigma0 and the degrees of freedom, and one with the status where the fit
/// failed.
/// @{
ORMIX_GEOMETRY_API std::string toString(const FitReport& report);
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const FitReport& report);
/// @}

}  // namespace ormix::geom
