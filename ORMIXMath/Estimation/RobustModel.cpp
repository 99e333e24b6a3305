#include <ORMIXMath/Estimation/RobustModel.h>

#include <boost/numeric/ublas/vector.hpp>

namespace ormix {

RobustModel::~RobustModel() = default;

std::size_t RobustModel::getUnitOfCoordinate(std::size_t coordinate, std::size_t dimension) const {
  const bool isPair = dimension > 3 && dimension % 2 == 0;
  return isPair && coordinate >= dimension / 2 ? 1 : 0;
}

bool RobustModel::estimateRoughly(const SampleView&, RealVector&) const { return false; }

bool RobustModel::hasRoughEstimation() const { return false; }

std::size_t RobustModel::estimateMinimal(const SampleView& samples, std::size_t nbParams,
                                         std::vector<RealVector>& models) const {
  if (models.empty()) models.resize(1, RealVector(nbParams));
  return estimateRoughly(samples, models.front()) ? 1 : 0;
}

bool RobustModel::refineRoughly(const SampleView& samples, RealVector& params) const {
  return estimateRoughly(samples, params);
}

bool RobustModel::isRefinedFully() const { return false; }

bool RobustModel::isLocal() const { return false; }

}  // namespace ormix
