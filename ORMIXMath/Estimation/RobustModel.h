#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Export.h>

#include <cstddef>
#include <vector>

namespace ormix {

/// What an estimator may tell eRM_Acontrario besides; one that derives from this, too, is asked. Results of the other
/// methods do not depend on it.
class ORMIX_MATH_API RobustModel {
 public:
  virtual ~RobustModel();

  /// Coordinates of a sample with the same number are lengths in one unit, which samples by accident are spread over
  /// alike. Here all of a sample of up to three or of an odd number of values, and the halves of others, which are
  /// pairs of points.
  virtual std::size_t getUnitOfCoordinate(std::size_t coordinate, std::size_t dimension) const;

  /// A model for samples, at least as many as determine one, that need not be the best: it is scored or improved. False
  /// where there is none; `params` has the estimator's number of elements and may be changed then. Here always false.
  virtual bool estimateRoughly(const SampleView& samples, RealVector& params) const;

  /// Whether estimateRoughly() is to be used in place of processViewEstimation(). Here false.
  virtual bool hasRoughEstimation() const;

  /// The models through as few samples as determine one, of which there may be several: sets the first elements of
  /// `models`, which grows as needed, and returns their number. Here what estimateRoughly() finds.
  /// \param nbParams  the estimator's number of parameters
  virtual std::size_t estimateMinimal(const SampleView& samples, std::size_t nbParams,
                                      std::vector<RealVector>& models) const;

  /// Fits a model that is near to samples, more than determine one. False where there is none; `params` may be changed
  /// then. Here estimateRoughly().
  virtual bool refineRoughly(const SampleView& samples, RealVector& params) const;

  /// Whether refineRoughly() gives what processViewEstimation() does. Here false.
  virtual bool isRefinedFully() const;

  /// Whether half of the minimal sets are to be of samples that lie near each other, where samples of a surface are
  /// denser than outliers: worth it where many are needed, and a part of the surface determines it well enough. Here
  /// false.
  virtual bool isLocal() const;
};

}  // namespace ormix
