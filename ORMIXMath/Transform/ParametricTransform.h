#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <array>
#include <cstddef>

namespace ormix {

/// The uniform part of a transform with `NbParams` parameters of the plane or of space: `Base` is the abstract class
/// with its enumeration `Type` of transforms, `Self` states `s_type` and derives what it computes with from the
/// parameters in `refresh()`.
template <class Self, class Base, std::size_t NbParams>
class __attribute__((visibility("default"))) ParametricTransform : public Base {
 public:
  static constexpr std::size_t s_nbParams = NbParams;

  typename Base::Type getType() const final;
  RealVector getParams() const final;
  BoolResult setParams(const RealVector& params) final;

 protected:
  using Params = std::array<omReal64, NbParams>;

  explicit ParametricTransform(const Params& params) : _params(params) {}

  Params _params;
};

}  // namespace ormix
