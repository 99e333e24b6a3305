#pragma once

namespace ormix::geom {

/// What a distance to an entity with an area or a volume is measured to. Holes and cavities are outside in both cases.
enum eInteriorPolicy {
  eIP_Filled = 0,   ///< to all of its points: the distance is 0 inside
  eIP_Boundary = 1  ///< to its boundary only
};

}  // namespace ormix::geom
