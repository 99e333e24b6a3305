#pragma once

#include <ORMIXGeometry/Region/RegionProperties.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace ormix::geom {

/// Writes a table for spreadsheets: comma-separated values (RFC 4180), a line of column names and one for each region,
/// numbered from 1. Names of columns end in their unit, "area [mm^2]"; angles are in degrees. Numbers have the digits
/// that give back the same number, and a decimal point whatever the locale; what was not measured is empty.
/// \return a failure where not everything could be written, as on a full disk. An older file is replaced only when the
/// new one is complete
/// @{
ORMIX_GEOMETRY_API BoolResult writeRegionTable(std::ostream& stream, const std::vector<RegionProperties>& regions,
                                               const PixelSpacing& spacing = {});
ORMIX_GEOMETRY_API BoolResult writeRegionTable(const std::string& path, const std::vector<RegionProperties>& regions,
                                               const PixelSpacing& spacing = {});
/// @}

}  // namespace ormix::geom
