#pragma once

#include <ORMIXGeometry/Measure/2d/BaseTypedGeometryMeasure2d.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>

namespace ormix::geom {

/// The uniform part of a concrete planar measure: dispatch to the entity and the kind. `Self` states `s_className` and
/// `s_measure2dType` and has one `process(const Entity&, DataType&) const` for each entity it supports. The bodies are
/// in Measure2d.ipp.
template <class Self, class DataType>
class ORMIX_GEOMETRY_API Measure2d : public RegisteredObject<Self, BaseTypedGeometryMeasure2d<DataType>> {
 public:
  using BaseTypedGeometryMeasure2d<DataType>::measure;
  bool measure(const BaseGeometryEntity2d& entity, DataType& value) const final;
  eMeasure2dType getMeasure2dType() const final;

 protected:
  Measure2d() = default;
  Measure2d(const Measure2d&) = default;
  Measure2d(Measure2d&&) = default;
  Measure2d& operator=(const Measure2d&) = default;
  Measure2d& operator=(Measure2d&&) = default;
  ~Measure2d() override = default;

 private:
  friend FieldAccess;
  // A measure's one setting, the hole policy, belongs to the root of all measures.
  template <class S, class F>
  static bool fields(S&, F&&) {
    return true;
  }
};

}  // namespace ormix::geom
