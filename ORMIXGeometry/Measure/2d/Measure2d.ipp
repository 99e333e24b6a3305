#pragma once

#include <ORMIXGeometry/Measure/2d/Measure2d.h>
#include <ORMIXGeometry/Message/MeasureMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

namespace ormix::geom {

template <class Self, class DataType>
bool Measure2d<Self, DataType>::measure(const BaseGeometryEntity2d& entity, DataType& value) const {
  return entity.visit(static_cast<const Self&>(*this), value);
}

template <class Self, class DataType>
eMeasure2dType Measure2d<Self, DataType>::getMeasure2dType() const {
  return Self::s_measure2dType;
}

/// Measures with a fresh measure of the default policy.
/// \throw ORMIXGeometryException, logged first, when the entity is not supported; `function`, `file` and `line` say who
template <class DataType, class Measure>
DataType measureOrThrow(const Measure& measure, const BaseGeometryEntity2d& entity, const char* function,
                        const char* file, int line) {
  DataType value{};
  if (measure.measure(entity, value)) return value;
  logAndThrow(formatMessage<eMeasureMessage>(eMeasureMessage::eMM_MeasureFailed, toString(measure.getMeasure2dType()),
                                             toString(entity.getEntity2dType())),
              function, file, line);
}

}  // namespace ormix::geom
