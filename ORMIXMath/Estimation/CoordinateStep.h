#pragma once

#include <ORMIXMath/Estimation/SampleView.h>

/// \file
/// Rounding of coordinates, as thresholds must respect it; not installed.

namespace ormix::detail {

/// Half the step of coordinates that were rounded to multiples of one, as pixels are; 0 where they were not. Samples of
/// noise lie exactly on lines of such a grid.
omReal64 halfStepOf(const SampleView& samples);

}  // namespace ormix::detail
