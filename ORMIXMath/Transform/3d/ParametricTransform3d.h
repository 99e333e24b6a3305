#pragma once

#include <ORMIXMath/Transform/3d/BaseGeometricTransform3d.h>
#include <ORMIXMath/Transform/ParametricTransform.h>

namespace ormix {

/// The uniform part of a spatial transform.
template <class Self, std::size_t NbParams>
using ParametricTransform3d = ParametricTransform<Self, BaseGeometricTransform3d, NbParams>;

}  // namespace ormix
