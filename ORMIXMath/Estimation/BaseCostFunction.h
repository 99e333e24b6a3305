#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <cstddef>

namespace ormix {

/// Equations whose sum of squares iterative refinement makes small: f_i(params), i below getNbEquations().
///
/// A cost function keeps what it needs of the samples it was initialised with and states its sizes then.
class ORMIX_MATH_API BaseCostFunction {
 public:
  virtual ~BaseCostFunction();

  /// 0 until init() succeeded, and after clear().
  std::size_t getNbEquations() const { return _nbEquations; }
  /// How many values one sample has.
  std::size_t getSampleDimension() const { return _sampleDimension; }

  /// Takes over the samples and calls initBase(). A failed one says why and leaves the function as clear() does.
  virtual BoolResult init(const DataSet& dataSet) = 0;
  /// One value an equation; `values` is given the length getNbEquations().
  virtual BoolResult processEquations(const RealVector& params, RealVector& values) const = 0;
  /// The derivatives: one row an equation, one column a parameter; `jacobian` is given that size.
  virtual BoolResult processJacobian(const RealVector& params, RealMatrix& jacobian) const = 0;

  /// Releases the samples and forgets the sizes.
  void clear();

 protected:
  BaseCostFunction() = default;
  BaseCostFunction(const BaseCostFunction&) = default;
  BaseCostFunction(BaseCostFunction&&) = default;
  BaseCostFunction& operator=(const BaseCostFunction&) = default;
  BaseCostFunction& operator=(BaseCostFunction&&) = default;

  /// States the sizes: how many equations there are, and how many values one sample has.
  void initBase(std::size_t nbEquations, std::size_t sampleDimension);
  /// Releases what the derived class keeps.
  virtual void clearDerived() = 0;

 private:
  std::size_t _nbEquations = 0;
  std::size_t _sampleDimension = 0;
};

}  // namespace ormix
