#pragma once

#include <ORMIXMath/Transform/ParametricTransform.h>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <string>

namespace ormix {

template <class Self, class Base, std::size_t NbParams>
typename Base::Type ParametricTransform<Self, Base, NbParams>::getType() const {
  return Self::s_type;
}

template <class Self, class Base, std::size_t NbParams>
RealVector ParametricTransform<Self, Base, NbParams>::getParams() const {
  RealVector params(NbParams);
  std::copy(_params.begin(), _params.end(), params.begin());
  return params;
}

template <class Self, class Base, std::size_t NbParams>
BoolResult ParametricTransform<Self, Base, NbParams>::setParams(const RealVector& params) {
  if (params.size() != NbParams)
    return failure(toString(Self::s_type) + " takes " + std::to_string(NbParams) + " parameters, " +
                   std::to_string(params.size()) + " were given");
  std::copy(params.begin(), params.end(), _params.begin());
  static_cast<Self&>(*this).refresh();
  return {};
}

}  // namespace ormix
