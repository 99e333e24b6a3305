#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>

#include <type_traits>

namespace ormix::geom {

/// The uniform part of a concrete measure: dispatch to the entity. `Base` is the typed root of the measures of the
/// plane or of space; `Self` states `s_className`, which entities it supports (`Supports<Entity>::value`, from the
/// table of its space), and `process(const Entity&, Value&) const` for them. The bodies are in GeometryMeasure.ipp.
template <class Self, class Base>
class ORMIX_GEOMETRY_API GeometryMeasure : public RegisteredObject<Self, Base> {
 public:
  using Base::measure;
  bool measure(const typename Base::Entity& entity, typename Base::Value& value) const final;

  /// The value of an entity of a known class, its coordinate type given: `process<omReal64>(circle, value)`.
  /// \return as `process` of `Self`
  template <class T, template <class> class Measured, class Measure = Self,
            std::enable_if_t<Measure::template Supports<Measured<T>>::value, int> = 0>
  bool process(const Measured<T>& entity, typename Base::Value& value) const {
    return static_cast<const Self&>(*this).template process<Measured<T>>(entity, value);
  }

 protected:
  GeometryMeasure() = default;
  GeometryMeasure(const GeometryMeasure&) = default;
  GeometryMeasure(GeometryMeasure&&) = default;
  GeometryMeasure& operator=(const GeometryMeasure&) = default;
  GeometryMeasure& operator=(GeometryMeasure&&) = default;
  ~GeometryMeasure() override = default;

 private:
  friend FieldAccess;
  // A measure's one setting, the hole policy, belongs to the root of all measures.
  template <class S, class F>
  static bool fields(S&, F&&) {
    return true;
  }
};

}  // namespace ormix::geom

// The levels of one measure, declared in its header before its class and instantiated in its source (`keyword` is
// `extern` there, nothing here).
#define ORMIX_GEOMETRY_MEASURE_LEVELS(keyword, Class, Base)         \
  namespace ormix {                                                 \
  keyword template class VersionedLevel<geom::Class, geom::Base>;   \
  keyword template class RegisteredObject<geom::Class, geom::Base>; \
  }                                                                 \
  namespace ormix::geom {                                           \
  keyword template class GeometryMeasure<Class, Base>;              \
  }
