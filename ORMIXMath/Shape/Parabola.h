#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

namespace ormix {

/// Length of the arc of a parabola between two abscissas, the signed distances of its ends from the symmetry axis, in
/// either order: the difference of t/2·√(1 + (t/2f)²) + f·asinh(t/2f) at both, computed without cancellation. With the
/// focal length 0, 0 between equal abscissas and infinite otherwise.
/// \param focalLength f ≥ 0, the distance of focus and vertex
ORMIX_MATH_API omReal64 parabolaArcLength(omReal64 focalLength, omReal64 fromAbscissa, omReal64 toAbscissa);

}  // namespace ormix
