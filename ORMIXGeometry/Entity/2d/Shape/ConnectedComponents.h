#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

#include <vector>

namespace ormix::geom {

/// The connected components of a set of pixels: to which one each run belongs.
struct RunComponents {
  std::size_t nbComponents = 0;          ///< components are numbered from 0, in order of their first pixel, row by row
  std::vector<omUInt32> componentOfRun;  ///< for each run, in the order of `RowIntersections::getRunColl()`
};

/// The components of the pixels. Nearly linear in the runs and linear in the rows, by union and find over runs.
/// \throw ORMIXGeometryException, logged, if there are 2³² - 1 runs or more
ORMIX_GEOMETRY_API RunComponents componentsOf(const RowIntersections& rows, ePixelConnectivity connectivity);

/// Each component as a set of its own, in order of their first pixel, row by row. Together they have as many rows as
/// `rows` has runs at most. Linear as componentsOf().
/// \throw as componentsOf()
ORMIX_GEOMETRY_API std::vector<RowIntersections> connectedComponents(const RowIntersections& rows,
                                                                     ePixelConnectivity connectivity);

}  // namespace ormix::geom
