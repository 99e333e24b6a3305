#include <ORMIXMath/Estimation/BaseCostFunction.h>

namespace ormix {

BaseCostFunction::~BaseCostFunction() = default;

void BaseCostFunction::initBase(std::size_t nbEquations, std::size_t sampleDimension) {
  _nbEquations = nbEquations;
  _sampleDimension = sampleDimension;
}

void BaseCostFunction::clear() {
  initBase(0, 0);
  clearDerived();
}

}  // namespace ormix
