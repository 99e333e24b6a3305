#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.h>
#include <ORMIXGeometry/Message/MeasureMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <new>
#include <string>
#include <tuple>
#include <type_traits>

namespace ormix::geom {

template <class Self, class Base>
bool GeometryMeasure<Self, Base>::measure(const typename Base::Entity& entity, typename Base::Value& value) const {
  static_assert(isListed<Self>(JoinedLists<PlanarMeasureList, SpatialMeasureList>()),
                "a measure is missing in PlanarMeasureList or SpatialMeasureList: add it in Entity/2d/PlanarClasses.h "
                "or Entity/3d/SpatialClasses.h");
  return entity.visit(static_cast<const Self&>(*this), value);
}

/// Measures with a default-constructed `Measure`, whose hole policy is eHMP_ProcessHoles.
/// \param function,file,line the place of the caller, for the exception
/// \throw ORMIXGeometryException, logged first, when the entity is not supported or a part of it is null
template <class Measure>
typename Measure::Value measureOrThrow(const typename Measure::Entity& entity, const char* function, const char* file,
                                       int line) {
  // One for all calls, and never destroyed, so that it is there until a program has ended.
  alignas(Measure) static unsigned char place[sizeof(Measure)];
  static const Measure& measure = *new (place) Measure;
  typename Measure::Value value{};
  if (entity.visit(measure, value)) return value;
  std::string kind, type;
  if constexpr (std::is_same_v<typename Measure::Entity, BaseGeometryEntity2d>) {
    kind = toString(measure.getMeasure2dType());
    type = toString(entity.getEntity2dType());
  } else {
    kind = toString(measure.getMeasure3dType());
    type = toString(entity.getEntity3dType());
  }
  logAndThrow(formatMessage<eMeasureMessage>(eMeasureMessage::eMM_MeasureFailed, kind, type), function, file, line);
}

namespace detail {

/// Pointer to `process` for one entity; null where the measure does not support it.
template <class Measure, class Entity>
constexpr auto processOf() {
  using Process = bool (Measure::*)(const Entity&, typename Measure::Value&) const;
  if constexpr (Measure::template Supports<Entity>::value)
    return static_cast<Process>(&Measure::template process<Entity>);
  else
    return nullptr;
}

/// Pointers to `process` for every entity that a measure supports. A constant with this value that is marked as used
/// makes the compiler instantiate these functions in the source of the measure; the visits in the sources of the
/// entities call them.
template <class Measure, class... Entity>
constexpr auto processOfAll(ClassList<Entity...>) {
  return std::make_tuple(processOf<Measure, Entity>()...);
}

}  // namespace detail

}  // namespace ormix::geom
