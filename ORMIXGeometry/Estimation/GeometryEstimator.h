#pragma once

#include <ORMIXGeometry/Estimation/EstimatorClasses.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Estimation/BaseEstimator.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>

namespace ormix::geom {

/// What is the same in every concrete estimator of the plane or of space: registration, copies and the sizes. `Self`
/// declares `s_className`, the number of samples that determine a model `s_minimalDataSize`, the number of parameters
/// `s_nbParams` and the number of values of a sample `s_sampleDimension`. Estimation from samples that are NaN or
/// infinite always fails. The bodies are in GeometryEstimator.ipp.
template <class Self>
class ORMIX_GEOMETRY_API GeometryEstimator : public RegisteredObject<Self, BaseEstimator> {
 protected:
  /// Sets the sizes that `Self` declares.
  GeometryEstimator();
  GeometryEstimator(const GeometryEstimator&) = default;
  GeometryEstimator(GeometryEstimator&&) = default;
  GeometryEstimator& operator=(const GeometryEstimator&) = default;
  GeometryEstimator& operator=(GeometryEstimator&&) = default;
  ~GeometryEstimator() override = default;

  /// Fails as fail(), of points, with what they have in common or, where that is nothing, with the code given.
  BoolResult failOf(const SampleView& points, eEstimationCode otherwise, BoolResult prescribed);

 private:
  friend FieldAccess;
  // An estimator has no state.
  template <class S, class F>
  static bool fields(S&, F&&) {
    return true;
  }
};

}  // namespace ormix::geom

// The levels of one estimator, declared in its header before its class and instantiated in its source (`keyword` is
// `extern` there, nothing here).
#define ORMIX_GEOMETRY_ESTIMATOR_LEVELS(keyword, Class)                \
  namespace ormix {                                                    \
  keyword template class VersionedLevel<geom::Class, BaseEstimator>;   \
  keyword template class RegisteredObject<geom::Class, BaseEstimator>; \
  }                                                                    \
  namespace ormix::geom {                                              \
  keyword template class GeometryEstimator<Class>;                     \
  }

// The same for an estimator from pairs of points of D coordinates; `Frame` is PairEstimator or HomographyEstimator.
#define ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(keyword, Frame, Class, D) \
  ORMIX_GEOMETRY_ESTIMATOR_LEVELS(keyword, Class)                      \
  namespace ormix::geom {                                              \
  keyword template class Frame<Class, D>;                              \
  }
