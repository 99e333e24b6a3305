#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>

namespace ormix::geom {

/// The uniform part of a concrete measure: dispatch to the entity. `Base` is the typed root of the measures of the
/// plane or of space; `Self` states `s_className` and has one `process(const Entity&, Value&) const` for each entity it
/// supports. The bodies are in GeometryMeasure.ipp.
template <class Self, class Base>
class ORMIX_GEOMETRY_API GeometryMeasure : public RegisteredObject<Self, Base> {
 public:
  using Base::measure;
  bool measure(const typename Base::Entity& entity, typename Base::Value& value) const final;

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
