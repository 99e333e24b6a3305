#pragma once

#include <ORMIXMath/Transform/2d/BaseGeometricTransform2d.h>

#include <array>
#include <cstddef>

namespace ormix {

/// The uniform part of a planar transform with `NbParams` parameters: `Self` states `s_type` and derives what it
/// computes with from the parameters in `refresh()`.
template <class Self, std::size_t NbParams>
class __attribute__((visibility("default"))) ParametricTransform2d : public BaseGeometricTransform2d {
 public:
  static constexpr std::size_t s_nbParams = NbParams;

  eGeometricTransform2dType getType() const final;
  RealVector getParams() const final;
  BoolResult setParams(const RealVector& params) final;

 protected:
  using Params = std::array<omReal64, NbParams>;

  explicit ParametricTransform2d(const Params& params) : _params(params) {}

  Params _params;
};

}  // namespace ormix
