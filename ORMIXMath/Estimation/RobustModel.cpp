#include <ORMIXMath/Estimation/RobustModel.h>

namespace ormix {

RobustModel::~RobustModel() = default;

std::size_t RobustModel::getUnitOfCoordinate(std::size_t coordinate, std::size_t dimension) const {
  const bool isPair = dimension > 3 && dimension % 2 == 0;
  return isPair && coordinate >= dimension / 2 ? 1 : 0;
}

bool RobustModel::estimateRoughly(const SampleView&, RealVector&) const { return false; }

bool RobustModel::hasRoughEstimation() const { return false; }

}  // namespace ormix
