#pragma once

#include <ORMIXGeometry/Entity/2d/Parabola/Parabola2d.h>

namespace ormix::geom {

/// The part of a parabola between two abscissas, ends included and in either order, see Parabola2d::getPoint().
struct ParabolaArc2d {
  Parabola2d parabola;       ///< not degenerated
  omReal64 fromAbscissa{0};  ///< in the unit of the parabola
  omReal64 toAbscissa{0};    ///< in the unit of the parabola
};

}  // namespace ormix::geom
