#pragma once

#include "Arguments.h"

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/LabelledRows.h>

#include <vector>

namespace ormix::python {

/// A region to be measured: pixels, or an entity.
struct MeasuredRegion {
  omInt64 label;
  const geom::RowIntersections* pixels;      ///< null where it is an entity
  const geom::BaseGeometryEntity2d* entity;  ///< null where it is pixels
};

/// Regions, and what they are parts of. It holds objects of Python: release it with the interpreter lock.
struct MeasuredRegions {
  std::vector<MeasuredRegion> regions;
  std::vector<geom::LabelledRows> rows;  ///< made from an image
  std::vector<py::object> owners;        ///< objects that were given
};

/// The regions of a mask of bool, which are its components, numbered from 1, or of an image of labels; one region, sets
/// of pixels or entities; a sequence of them, numbered from 1, or a dictionary from labels.
/// \param connectivity of the pixels of a mask
/// \throw py::type_error for what is no region, as maskArrayOf() for images
MeasuredRegions measuredRegionsOf(const py::object& values, geom::ePixelConnectivity connectivity);

}  // namespace ormix::python
