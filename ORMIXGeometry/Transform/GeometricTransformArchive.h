#pragma once

#include <ORMIXMath/Transform/2d/BaseGeometricTransform2d.h>
#include <ORMIXSerialization/Archive/ArchiveItem.h>

#include <boost/numeric/ublas/vector.hpp>
#include <vector>

namespace ormix {

/// The owned transform of the plane is archived as the vector of its parameters.
inline BoolResult writeItem(BaseOArchive& archive, std::string_view key, const BaseGeometricTransform2d& transform) {
  const RealVector params = transform.getParams();
  return writeItem(archive, key, std::vector<omReal64>(params.begin(), params.end()));
}

inline BoolResult readItem(BaseIArchive& archive, std::string_view key, BaseGeometricTransform2d& transform) {
  std::vector<omReal64> values;
  const BoolResult result = readItem(archive, key, values);
  if (!result) return result;
  RealVector params(values.size());
  std::copy(values.begin(), values.end(), params.begin());
  return transform.setParams(params);
}

}  // namespace ormix
