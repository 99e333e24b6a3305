#include <ORMIXMath/Estimation/FitOptions.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace ormix {
namespace {

bool isScale(omReal64 value) { return std::isfinite(value) && value >= 0; }

/// Whether a matrix of n rows, 1 to 6, is finite, symmetric and positive definite.
bool isCovariance(const omReal64* matrix, std::size_t n) {
  constexpr omReal64 asymmetry = 1e-12;
  omReal64 root[36];
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j <= i; ++j) {
      const omReal64 a = matrix[i * n + j];
      const omReal64 b = matrix[j * n + i];
      if (!std::isfinite(a) || !(std::abs(a - b) <= asymmetry * std::max(std::abs(a), std::abs(b)))) return false;
      omReal64 rest = a;
      for (std::size_t k = 0; k < j; ++k) rest -= root[i * n + k] * root[j * n + k];
      if (i == j && !(rest > 0)) return false;
      root[i * n + j] = i == j ? std::sqrt(rest) : rest / root[j * n + j];
    }
  return true;
}

/// The failure that names the first weights which `isGood` refuses; success when there is none.
template <class IsGood>
EstimationStatus checkEach(const SampleView& weights, const std::string& what, const IsGood& isGood) {
  std::vector<std::size_t> indices;
  for (std::size_t i = 0; i < weights.nbSamples && indices.size() < EstimationStatus::s_nbMaxIndices; ++i)
    if (!isGood(weights[i])) indices.push_back(i);
  if (indices.empty()) return {};
  EstimationStatus status = failedStatus(eEC_InvalidInput, {}, 0, 0,
                                         "The weight of sample " + std::to_string(indices[0]) + " is not " + what);
  status.indices = std::move(indices);
  return status;
}

}  // namespace

EstimationStatus checkFitOptions(const FitOptions& options, const SampleView& samples) {
  const auto invalid = [](const char* quantity, omReal64 value, omReal64 threshold, const std::string& message) {
    return failedStatus(eEC_InvalidInput, quantity, value, threshold, message);
  };
  if (!isScale(options.sigma)) return invalid("sigma", options.sigma, 0, "sigma is negative or not finite");
  if (!isScale(options.lossScale))
    return invalid("lossScale", options.lossScale, 0, "lossScale is negative or not finite");
  if (options.nbMaxIterations == 0) return invalid("nbMaxIterations", 0, 1, "nbMaxIterations is 0");
  const SampleView& weights = options.weights;
  if (options.method == eFM_Algebraic && (!weights.empty() || options.loss != eLS_Squares))
    return invalid("", 0, 0, "Weights and losses need eFM_Orthogonal: the algebraic estimators know none");
  if (weights.empty()) return {};
  const std::size_t d = samples.dimension;
  if (weights.nbSamples != samples.nbSamples)
    return invalid("number of weights", static_cast<omReal64>(weights.nbSamples),
                   static_cast<omReal64>(samples.nbSamples),
                   std::to_string(weights.nbSamples) + " weights were given for " + std::to_string(samples.nbSamples) +
                       " samples");
  if (weights.dimension == 1)
    return checkEach(weights, "finite, or negative", [](const omReal64* weight) { return isScale(*weight); });
  if (weights.dimension == d * d && d <= 6)
    return checkEach(weights, "a symmetric positive definite covariance",
                     [d](const omReal64* covariance) { return isCovariance(covariance, d); });
  return invalid("dimension of a weight", static_cast<omReal64>(weights.dimension), static_cast<omReal64>(d * d),
                 "Weights of dimension " + std::to_string(weights.dimension) + " while 1 or " + std::to_string(d * d) +
                     " is needed");
}

}  // namespace ormix
