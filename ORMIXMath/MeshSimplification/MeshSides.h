#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <limits>

namespace ormix {

/// In place of the index of a side where there is none.
inline constexpr omUInt32 s_noSide = std::numeric_limits<omUInt32>::max();

/// A side of a triangle of a mesh. Side 3 t + k is the k-th one of triangle t and runs from its corner k to the next.
struct MeshSide {
  omUInt32 start;     ///< the vertex where it starts
  omUInt32 opposite;  ///< the only other side of the same edge, which runs the other way, or s_noSide
};

}  // namespace ormix
