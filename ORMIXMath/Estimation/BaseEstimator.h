#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/EstimationStatus.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Export.h>
#include <ORMIXSerialization/Object/VersionedLevel.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <string_view>

namespace ormix {

class ORMIX_MATH_API BaseEstimator;
extern template class VersionedLevel<BaseEstimator, BaseSerializationObject>;

/// Base of all estimators, which compute the parameters of a model from samples, and residuals of samples for a model.
///
/// A concrete estimator sets its three sizes by initBase() in its default constructor and implements
/// processViewEstimation() and processViewResiduals(); processEstimation() and processResiduals() copy a DataSet into
/// contiguous memory and call these. Users call computeEstimation() and computeResiduals(), which check sizes,
/// parameters and results.
class ORMIX_MATH_API BaseEstimator : public VersionedLevel<BaseEstimator, BaseSerializationObject> {
 public:
  /// The name under which the class is known to archives.
  static constexpr const char* s_className = "ormix::BaseEstimator";

  ~BaseEstimator() override;

  /// The smallest number of samples that determines a model.
  std::size_t getMinimalDataSize() const { return _minimalDataSize; }
  /// The number of parameters of a model.
  std::size_t getNbParams() const { return _nbParams; }
  /// The number of values of one sample.
  std::size_t getSampleDimension() const { return _sampleDimension; }

  /// \name Estimation
  /// Compute the parameters that fit the samples best by the estimator's criterion, and resize `params` to
  /// getNbParams().
  ///
  /// Fail with a message, `params` untouched, when there are fewer samples than getMinimalDataSize(), when samples have
  /// another dimension than getSampleDimension(), where the estimator fails (degenerate samples), and when a parameter
  /// comes out NaN or infinite; after success all parameters are finite. The samples themselves are not searched for
  /// NaN and infinity.
  /// @{

  /// From one vector for each sample.
  BoolResult computeEstimation(const DataSet& dataSet, RealVector& params);
  /// From contiguous samples, without copying them.
  BoolResult computeEstimation(const SampleView& samples, RealVector& params);
  /// How the last computeEstimation() ended. Samples that are NaN or infinite are to blame before everything else.
  const EstimationStatus& getStatus() const { return _status; }
  /// @}

  /// \name Residuals
  /// Compute one residual for each sample, in their order, with respect to the model of the given parameters. The unit
  /// is the estimator's, see getResidualScale().
  ///
  /// Fail with a message, `residuals` untouched, when there are no samples, when samples have another dimension, and
  /// when the parameters have another length or are not finite. Samples with NaN or infinity have NaN or infinite
  /// residuals.
  /// @{

  /// Of one vector for each sample.
  BoolResult computeResiduals(const DataSet& dataSet, const RealVector& params, RealVector& residuals) const;
  /// Of contiguous samples, without copying them.
  BoolResult computeResiduals(const SampleView& samples, const RealVector& params, RealVector& residuals) const;
  /// @}

  /// \name Virtual functions
  /// Their order is part of the interface. They are called with at least getMinimalDataSize() samples (one for
  /// residuals) of getSampleDimension() values. After a failure the contents of the output are not used.
  /// @{

  /// Estimation from a DataSet. The implementation here checks it, copies it into contiguous memory and calls
  /// processViewEstimation().
  virtual BoolResult processEstimation(const DataSet& dataSet, RealVector& params);
  /// Residuals of a DataSet. The implementation here checks it, copies it into contiguous memory and calls
  /// processViewResiduals().
  virtual BoolResult processResiduals(const DataSet& dataSet, const RealVector& params, RealVector& residuals) const;
  /// Estimation from contiguous samples. `params` has getNbParams() elements on entry, to be overwritten. Should not
  /// allocate for a minimal set of samples, since robustEstimation() calls it thousands of times.
  virtual BoolResult processViewEstimation(const SampleView& samples, RealVector& params) = 0;
  /// Residuals of contiguous samples. `residuals` has one element for each sample on entry, to be overwritten.
  virtual BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                          RealVector& residuals) const = 0;
  /// The number by which residuals are divided to give distances from the model, to first order: 1 for residuals that
  /// are distances, another where they are algebraic (2r for a circle of radius r). robustEstimation() compares
  /// residuals with distances by it and skips a model as degenerate whose scale is not positive or not finite.
  virtual omReal64 getResidualScale(const RealVector& params) const;
  /// @}

 protected:
  /// All sizes are 1 until initBase().
  BaseEstimator() = default;
  BaseEstimator(const BaseEstimator&) = default;
  BaseEstimator(BaseEstimator&&) = default;
  BaseEstimator& operator=(const BaseEstimator&) = default;
  BaseEstimator& operator=(BaseEstimator&&) = default;

  /// Sets the sizes, each at least 1 (asserted). To be called once, in the default constructor.
  void initBase(std::size_t minimalDataSize, std::size_t nbParams, std::size_t sampleDimension);

  /// For processViewEstimation(): notes why it fails, for getStatus(), and returns `prescribed`, a failure. Allocates
  /// nothing once it was called before.
  /// \param quantity  what was compared, in few words; empty where nothing was
  /// \param value     its value
  /// \param threshold the bound that the value misses
  BoolResult fail(eEstimationCode code, std::string_view quantity, omReal64 value, omReal64 threshold,
                  BoolResult prescribed);

 private:
  template <class SampleSet, class Process>
  BoolResult estimate(const SampleSet& samples, RealVector& params, const Process& process);

  std::size_t _minimalDataSize = 1;
  std::size_t _nbParams = 1;
  std::size_t _sampleDimension = 1;
  EstimationStatus _status;
};

}  // namespace ormix
