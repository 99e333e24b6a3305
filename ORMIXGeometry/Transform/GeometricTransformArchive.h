#pragma once

#include <ORMIXMath/Transform/2d/BaseGeometricTransform2d.h>
#include <ORMIXMath/Transform/3d/BaseGeometricTransform3d.h>
#include <ORMIXSerialization/Archive/ArchiveItem.h>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <string>
#include <type_traits>
#include <vector>

namespace ormix {

namespace detail {
template <class Transform>
inline constexpr bool s_isGeometricTransform =
    std::is_base_of_v<BaseGeometricTransform2d, Transform> || std::is_base_of_v<BaseGeometricTransform3d, Transform>;
}  // namespace detail

/// A transform of the plane or of space is archived as the vector of its parameters. Another number of them is refused,
/// and one that is not finite, under which nothing would have an image.
template <class Transform, std::enable_if_t<detail::s_isGeometricTransform<Transform>, int> = 0>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const Transform& transform) {
  const RealVector params = transform.getParams();
  return writeItem(archive, key, std::vector<omReal64>(params.begin(), params.end()));
}

template <class Transform, std::enable_if_t<detail::s_isGeometricTransform<Transform>, int> = 0>
BoolResult readItem(BaseIArchive& archive, std::string_view key, Transform& transform) {
  std::vector<omReal64> values;
  const BoolResult result = readItem(archive, key, values);
  if (!result) return result;
  const auto refused = [key](const std::string& why) { return failure("Key \"" + std::string(key) + "\": " + why); };
  const auto broken = std::find_if(values.begin(), values.end(), [](omReal64 value) { return !std::isfinite(value); });
  if (broken != values.end())
    return refused("parameter " + std::to_string(broken - values.begin()) + " is not a finite number");
  RealVector params(values.size());
  std::copy(values.begin(), values.end(), params.begin());
  const BoolResult taken = transform.setParams(params);
  return taken ? taken : refused(taken.getMessage());
}

}  // namespace ormix
