#pragma once

#include <ORMIXMath/Transform/2d/ParametricTransform2d.h>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <string>

namespace ormix {

template <class Self, std::size_t NbParams>
eGeometricTransform2dType ParametricTransform2d<Self, NbParams>::getType() const {
  return Self::s_type;
}

template <class Self, std::size_t NbParams>
RealVector ParametricTransform2d<Self, NbParams>::getParams() const {
  RealVector params(NbParams);
  std::copy(_params.begin(), _params.end(), params.begin());
  return params;
}

template <class Self, std::size_t NbParams>
BoolResult ParametricTransform2d<Self, NbParams>::setParams(const RealVector& params) {
  if (params.size() != NbParams)
    return failure(toString(Self::s_type) + " takes " + std::to_string(NbParams) + " parameters, " +
                   std::to_string(params.size()) + " were given");
  std::copy(params.begin(), params.end(), _params.begin());
  static_cast<Self&>(*this).refresh();
  return {};
}

}  // namespace ormix
