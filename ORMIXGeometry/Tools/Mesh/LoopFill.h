#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>
#include <functional>
#include <vector>

/// \file
/// Triangles over a closed loop in space; not installed.

namespace ormix::geom::detail {

/// Whether two corners of a loop are joined by an edge already; asked for corners that are not neighbours.
using HasEdge = std::function<bool(std::size_t, std::size_t)>;

/// Triangles that fill a loop of n corners, each with the loop's direction along its edges: by ears, the one with the
/// greatest least angle first, up to 12 and from 129 corners; else those of least area together
/// (BarequetSharir1995). Of triangles with the same area small ones are preferred, and flat ones avoided.
///
/// Diagonals along edges are avoided where that costs little: they make surfaces that touch. Ears that face away from
/// the loop as a whole, or over which the loop passes, come last; the latter is looked at for loops of up to 2,048
/// corners.
/// \return n - 2 triangles
std::vector<std::array<std::size_t, 3>> fillLoop(const std::vector<SpatialPoint>& loop, const HasEdge& hasEdge);

}  // namespace ormix::geom::detail
