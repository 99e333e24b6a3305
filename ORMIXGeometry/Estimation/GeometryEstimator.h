#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Estimation/BaseEstimator.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>

namespace ormix::geom {

/// The uniform part of a concrete estimator of the plane or of space: it is registered, can be copied, and declares its
/// sizes. `Self` states `s_className` and, in the order in which they are declared, `s_minimalDataSize`, `s_nbParams`
/// and `s_sampleDimension`. Samples that are NaN or infinite never lead to a success. The bodies are in
/// GeometryEstimator.ipp.
template <class Self>
class ORMIX_GEOMETRY_API GeometryEstimator : public RegisteredObject<Self, BaseEstimator> {
 protected:
  GeometryEstimator();
  GeometryEstimator(const GeometryEstimator&) = default;
  GeometryEstimator(GeometryEstimator&&) = default;
  GeometryEstimator& operator=(const GeometryEstimator&) = default;
  GeometryEstimator& operator=(GeometryEstimator&&) = default;
  ~GeometryEstimator() override = default;

 private:
  friend FieldAccess;
  // An estimator keeps nothing between two estimations.
  template <class S, class F>
  static bool fields(S&, F&&) {
    return true;
  }
};

}  // namespace ormix::geom
