#include <ORMIXMath/Estimation/Samples.h>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <string>

namespace ormix {

BoolResult Samples::assign(const DataSet& dataSet) {
  const std::size_t dimension = dataSet.empty() ? 0 : dataSet.front().size();
  for (std::size_t i = 0; i < dataSet.size(); ++i)
    if (dataSet[i].size() != dimension)
      return failure("Sample " + std::to_string(i) + " has " + std::to_string(dataSet[i].size()) +
                     " values while the first one has " + std::to_string(dimension));
  _values.resize(dataSet.size() * dimension);
  auto target = _values.begin();
  for (const RealVector& sample : dataSet) target = std::copy(sample.begin(), sample.end(), target);
  _borrowed = nullptr;
  _nbSamples = dataSet.size();
  _dimension = dimension;
  return {};
}

}  // namespace ormix
