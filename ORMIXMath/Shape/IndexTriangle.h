#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <array>

namespace ormix {

/// The indices of the corners of a triangle in a sequence of points, counter-clockwise as seen from outside.
using IndexTriangle = std::array<omUInt32, 3>;

}  // namespace ormix
