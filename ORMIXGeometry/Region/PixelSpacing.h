#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <string>

namespace ormix::geom {

/// The size of the pixels of an image. Lengths measured on it are in its unit, areas in the square of the unit.
struct PixelSpacing {
  omReal64 x = 1;           ///< width of a pixel, positive and finite
  omReal64 y = 1;           ///< height of a pixel, positive and finite
  std::string unit = "px";  ///< name of the unit, for tables
};

}  // namespace ormix::geom
