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

namespace detail {

/// A default-constructed measure: one for all calls, and never destroyed, so that it is there until a program has
/// ended.
template <class Measure>
const Measure& sharedMeasure() {
  alignas(Measure) static unsigned char place[sizeof(Measure)];
  static const Measure& measure = *new (place) Measure;
  return measure;
}

template <class Measure>
[[noreturn, gnu::cold, gnu::noinline]] void throwNotMeasured(const typename Measure::Entity& entity,
                                                             const char* function, const char* file, int line) {
  const Measure& measure = sharedMeasure<Measure>();
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

}  // namespace detail

/// Measures with a default-constructed `Measure`, whose hole policy is eHMP_ProcessHoles. Inlined, as saving the place
/// of the caller in registers takes as long as the area of a small ring.
/// \param function,file,line the place of the caller, for the exception
/// \throw ORMIXGeometryException, logged first, when the entity is not supported or a part of it is null
template <class Measure>
[[gnu::always_inline]] inline typename Measure::Value measureOrThrow(const typename Measure::Entity& entity,
                                                                     const char* function, const char* file, int line) {
  typename Measure::Value value{};
  if (!entity.visit(detail::sharedMeasure<Measure>(), value))
    detail::throwNotMeasured<Measure>(entity, function, file, line);
  return value;
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
