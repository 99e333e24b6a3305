#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>

#include <type_traits>

namespace ormix::geom {

/// Implements what is uniform in all concrete measures: the double dispatch to the class of the entity.
///
/// \tparam Self the measure; it defines `s_className`, which entities it supports (`Supports<Entity>::value`, from the
/// table of the plane or of space), and `process(const Entity&, Value&) const` for them
/// \tparam Base base class of the measures of the plane or of space with the same type of value
///
/// The definitions are in GeometryMeasure.ipp.
template <class Self, class Base>
class ORMIX_GEOMETRY_API GeometryMeasure : public RegisteredObject<Self, Base> {
 public:
  using Base::measure;
  /// Measures an entity of any class.
  /// \return false, without a log entry, if the entity is not supported or a part of it is null; `value` is then
  /// unspecified
  bool measure(const typename Base::Entity& entity, typename Base::Value& value) const final;

  /// Measures an entity whose class is known at compile time, with the coordinate type as the template argument:
  /// `process<omReal64>(circle, value)`.
  /// \return as `process(entity, value)` of `Self`
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
  // The hole policy, the only data of a measure, is archived by BaseGeometryMeasure.
  template <class S, class F>
  static bool fields(S&, F&&) {
    return true;
  }
};

}  // namespace ormix::geom

// The explicit instantiations of all base class templates of one measure. Its header declares them before the class,
// with `extern` as `keyword`; its source defines them, with an empty `keyword`.
#define ORMIX_GEOMETRY_MEASURE_LEVELS(keyword, Class, Base)         \
  namespace ormix {                                                 \
  keyword template class VersionedLevel<geom::Class, geom::Base>;   \
  keyword template class RegisteredObject<geom::Class, geom::Base>; \
  }                                                                 \
  namespace ormix::geom {                                           \
  keyword template class GeometryMeasure<Class, Base>;              \
  }
