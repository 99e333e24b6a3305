#pragma once

#include <ORMIXGeometry/Measure/GeometryMeasure.h>
#include <ORMIXGeometry/Message/MeasureMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXUtil/Object/DynamicRegistrator.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <string_view>

namespace ormix::geom {

template <class Self, class Base>
bool GeometryMeasure<Self, Base>::measure(const typename Base::Entity& entity, typename Base::Value& value) const {
  return entity.visit(static_cast<const Self&>(*this), value);
}

/// Measures with a fresh `Measure`, and so with the default policy.
/// \param kind,entityType the names of the measure and of the entity in the message
/// \throw ORMIXGeometryException, logged first, when the entity is not supported; `function`, `file` and `line` say who
template <class Measure>
typename Measure::Value measureOrThrow(const typename Measure::Entity& entity, std::string_view kind,
                                       std::string_view entityType, const char* function, const char* file, int line) {
  typename Measure::Value value{};
  if (Measure().measure(entity, value)) return value;
  logAndThrow(formatMessage<eMeasureMessage>(eMeasureMessage::eMM_MeasureFailed, kind, entityType), function, file,
              line);
}

}  // namespace ormix::geom
