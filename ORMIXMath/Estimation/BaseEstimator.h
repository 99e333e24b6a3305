#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Export.h>
#include <ORMIXSerialization/Object/VersionedLevel.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

namespace ormix {

class ORMIX_MATH_API BaseEstimator;
extern template class VersionedLevel<BaseEstimator, BaseSerializationObject>;

/// Root of all estimators: finds the parameters of a model from samples, and says how far samples are from a model.
///
/// A concrete estimator states its three sizes with initBase() in its default constructor and implements
/// processViewEstimation() and processViewResiduals(); the pair on a DataSet flattens it and forwards. Users call
/// computeEstimation() and computeResiduals(), which check everything before and after.
class ORMIX_MATH_API BaseEstimator : public VersionedLevel<BaseEstimator, BaseSerializationObject> {
 public:
  static constexpr const char* s_className = "ormix::BaseEstimator";

  ~BaseEstimator() override;

  /// How many samples determine the model.
  std::size_t getMinimalDataSize() const { return _minimalDataSize; }
  std::size_t getNbParams() const { return _nbParams; }
  /// How many values one sample has.
  std::size_t getSampleDimension() const { return _sampleDimension; }

  /// The parameters that fit the samples best in the estimator's sense.
  ///
  /// Fails with a message that says why, `params` untouched: too few samples (how many were given and needed), samples
  /// of another dimension, whatever the estimator itself refuses, and parameters that came out NaN or infinite. A
  /// success always carries getNbParams() finite values. The samples themselves are not searched for NaN and infinity.
  /// @{
  BoolResult computeEstimation(const DataSet& dataSet, RealVector& params);
  BoolResult computeEstimation(const SampleView& samples, RealVector& params);
  /// @}

  /// One residual a sample, in the samples' order, for the model that the parameters describe.
  ///
  /// Fails with a message, `residuals` untouched: no samples, samples of another dimension, parameters of another
  /// length or not finite. Samples with NaN or infinity have NaN or infinite residuals.
  /// @{
  BoolResult computeResiduals(const DataSet& dataSet, const RealVector& params, RealVector& residuals) const;
  BoolResult computeResiduals(const SampleView& samples, const RealVector& params, RealVector& residuals) const;
  /// @}

  /// \name What an estimator implements
  /// The order of these operations is part of the interface. They are called with at least getMinimalDataSize() samples
  /// (one for residuals) of getSampleDimension() values; what a failed one leaves in its output does not matter.
  /// @{

  /// Estimation from a DataSet; here: flattens it and calls processViewEstimation().
  virtual BoolResult processEstimation(const DataSet& dataSet, RealVector& params);
  /// Residuals of a DataSet; here: flattens it and calls processViewResiduals().
  virtual BoolResult processResiduals(const DataSet& dataSet, const RealVector& params, RealVector& residuals) const;
  /// Estimation from contiguous samples. `params` arrives with getNbParams() elements, to be written in place; nothing
  /// should be allocated for a minimal set of samples, since robust loops call this thousands of times.
  virtual BoolResult processViewEstimation(const SampleView& samples, RealVector& params) = 0;
  /// Residuals of contiguous samples. `residuals` arrives with one element a sample, to be written in place.
  virtual BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                          RealVector& residuals) const = 0;
  /// What the residual of a sample at the distance 1 from the model is, in first order: the number by which residuals
  /// are divided to become distances. 1 unless an estimator's residuals are algebraic (2r for those of a circle);
  /// robust loops compare residuals with a distance by it. Positive, else the model is passed over as degenerate.
  virtual omReal64 getResidualScale(const RealVector& params) const;
  /// @}

 protected:
  BaseEstimator() = default;
  BaseEstimator(const BaseEstimator&) = default;
  BaseEstimator(BaseEstimator&&) = default;
  BaseEstimator& operator=(const BaseEstimator&) = default;
  BaseEstimator& operator=(BaseEstimator&&) = default;

  /// States the sizes, all at least 1; once, in the default constructor.
  void initBase(std::size_t minimalDataSize, std::size_t nbParams, std::size_t sampleDimension);

 private:
  std::size_t _minimalDataSize = 1;
  std::size_t _nbParams = 1;
  std::size_t _sampleDimension = 1;
};

}  // namespace ormix
