#pragma once

#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"
#include "../Frame/EntityArgument.h"
#include "../Frame/Errors.h"

#include <ORMIXGeometry/Measure/2d/BaseTypedGeometryMeasure2d.h>
#include <ORMIXGeometry/Measure/2d/HuMoments2dO3.h>
#include <ORMIXGeometry/Measure/2d/Moments2dO3.h>
#include <ORMIXGeometry/Measure/3d/BaseTypedGeometryMeasure3d.h>
#include <ORMIXGeometry/Message/MeasureMessage.h>

#include <algorithm>
#include <string>
#include <vector>

/// \file
/// A measure of one entity or of many in one call.

namespace ormix::python {

/// Measures with the same type of value, of entities of the plane and of space; null where there is none.
template <class Value>
struct MeasureOfAny {
  const geom::BaseTypedGeometryMeasure2d<Value>* planar;
  const geom::BaseTypedGeometryMeasure3d<omReal64>* spatial = nullptr;

  /// \return false for what is not supported
  bool measure(const geom::BaseGeometryEntity& entity, Value& value) const {
    if (entity.getCoordinateDimension() == geom::eCD_2d)
      return planar != nullptr && planar->measure(static_cast<const geom::BaseGeometryEntity2d&>(entity), value);
    if constexpr (std::is_same_v<Value, omReal64>)
      return spatial != nullptr && spatial->measure(static_cast<const geom::BaseGeometryEntity3d&>(entity), value);
    return false;
  }

  /// The library's message for an entity without this measure, and its class.
  std::string failureText(const geom::BaseGeometryEntity& entity) const {
    const bool isPlanar = entity.getCoordinateDimension() == geom::eCD_2d;
    const bool isPlanarMeasure = planar != nullptr && (isPlanar || spatial == nullptr);
    const std::string kind =
        isPlanarMeasure ? toString(planar->getMeasure2dType()) : toString(spatial->getMeasure3dType());
    const std::string type = isPlanar
                                 ? toString(static_cast<const geom::BaseGeometryEntity2d&>(entity).getEntity2dType())
                                 : toString(static_cast<const geom::BaseGeometryEntity3d&>(entity).getEntity3dType());
    return formatMessage<geom::eMeasureMessage>(geom::eMeasureMessage::eMM_MeasureFailed, kind, type) + " (" +
           entity.getClassName() + ')';
  }
};

/// The values of many entities as Python has them: numbers as an array, others as a list.
/// @{
inline py::object valuesToPython(const std::vector<omReal64>& values) { return copyOf(values); }
inline py::object valuesToPython(const std::vector<geom::Moments2dO3>& values) {
  py::list list;
  for (const geom::Moments2dO3& value : values) list.append(value);
  return std::move(list);
}
inline py::object valuesToPython(const std::vector<geom::HuMoments2dO3>& values) {
  constexpr py::ssize_t nbValues = geom::HuMoments2dO3::s_nbValues;
  py::array_t<omReal64> array({static_cast<py::ssize_t>(values.size()), nbValues});
  omReal64* to = array.mutable_data();
  for (const geom::HuMoments2dO3& value : values) to = std::copy_n(value.getValues().begin(), nbValues, to);
  return std::move(array);
}
/// @}

/// The value of one entity, or the values of all in one loop without the interpreter lock.
/// \throw Error for the first that is not supported, with its class and, of many, its index
template <class Value>
py::object measureEntities(const MeasureOfAny<Value>& measure, const py::object& argument) {
  const EntityArgument entities(argument);
  std::vector<Value> values(entities.size());
  std::size_t nbMeasured = 0;
  {
    const Reading reading;
    while (nbMeasured < values.size() && measure.measure(entities[nbMeasured], values[nbMeasured])) ++nbMeasured;
  }
  if (nbMeasured < values.size()) {
    const geom::BaseGeometryEntity& failed = entities[nbMeasured];
    raiseError(entities.place(nbMeasured) + measure.failureText(failed), failed.getClassName());
  }
  return entities.isOne() ? py::cast(values[0]) : valuesToPython(values);
}

}  // namespace ormix::python
