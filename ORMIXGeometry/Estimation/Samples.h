#pragma once

#include <ORMIXMath/Estimation/Samples.h>

namespace ormix::geom {

/// Samples as toSamples() makes them of entities.
using ormix::Samples;

}  // namespace ormix::geom
