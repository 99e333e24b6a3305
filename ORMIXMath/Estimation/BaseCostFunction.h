#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <cstddef>

namespace ormix {

/// Functions f_i(params), 0 <= i < getNbEquations(), whose sum of squares refineIteratively() minimises.
///
/// init() stores what the equations need of the samples. A derived class implements init(), processEquations(),
/// processJacobian() and clearDerived().
class ORMIX_MATH_API BaseCostFunction {
 public:
  /// Cost functions are used and deleted through this base.
  virtual ~BaseCostFunction();

  /// The number of equations: 0 before a successful init() and after clear().
  std::size_t getNbEquations() const { return _nbEquations; }
  /// The number of values of one sample: 0 before a successful init() and after clear().
  std::size_t getSampleDimension() const { return _sampleDimension; }

  /// Stores what is needed of the samples and calls initBase(). When it fails, the message says why and the state is
  /// that after clear().
  virtual BoolResult init(const DataSet& dataSet) = 0;
  /// Evaluates all equations at `params`; resizes `values` to getNbEquations(). Fails with a message where they cannot
  /// be evaluated.
  virtual BoolResult processEquations(const RealVector& params, RealVector& values) const = 0;
  /// Evaluates the derivatives at `params`: one row for each equation, one column for each parameter; resizes
  /// `jacobian`. Fails as processEquations().
  virtual BoolResult processJacobian(const RealVector& params, RealMatrix& jacobian) const = 0;

  /// Releases the samples and sets both sizes to 0.
  void clear();

 protected:
  /// Both sizes are 0.
  BaseCostFunction() = default;
  BaseCostFunction(const BaseCostFunction&) = default;
  BaseCostFunction(BaseCostFunction&&) = default;
  BaseCostFunction& operator=(const BaseCostFunction&) = default;
  BaseCostFunction& operator=(BaseCostFunction&&) = default;

  /// Sets the number of equations and the number of values of one sample.
  void initBase(std::size_t nbEquations, std::size_t sampleDimension);
  /// Releases what init() of the derived class stored.
  virtual void clearDerived() = 0;

 private:
  std::size_t _nbEquations = 0;
  std::size_t _sampleDimension = 0;
};

}  // namespace ormix
