#pragma once

#include <ORMIXMath/Transform/2d/BaseGeometricTransform2d.h>
#include <ORMIXMath/Transform/ParametricTransform.h>

namespace ormix {

/// The uniform part of a planar transform.
template <class Self, std::size_t NbParams>
using ParametricTransform2d = ParametricTransform<Self, BaseGeometricTransform2d, NbParams>;

}  // namespace ormix
