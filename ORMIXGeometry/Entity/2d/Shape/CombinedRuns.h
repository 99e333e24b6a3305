#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

#include <algorithm>

/// \file
/// Set operations on the runs of one row; not installed.

namespace ormix::geom::detail {

/// The pixels that a set operation keeps: bit (in a) + 2·(in b) tells whether those are in its result. Pixels that are
/// in neither never are.
enum eKeptPixels : unsigned { eKP_Unite = 0b1110, eKP_Intersect = 0b1000, eKP_Subtract = 0b0010, eKP_Exclude = 0b0110 };

static_assert(sizeof(PixelRun) == 2 * sizeof(omUInt32), "begins and ends alternate in memory");

/// The combination of the runs of two rows, in each of which no two are adjacent; nor are they in the result.
/// \param out has room for as many runs as both rows have together
/// \return the end of what was written
///
/// The begins and ends of a row ascend strictly, and behind an odd number of them one is inside. So there is nothing to
/// branch on but the end, of which the processor would guess half wrong.
template <eKeptPixels Kept>
PixelRun* combineRuns(const RowIntersections::Row& a, const RowIntersections::Row& b, PixelRun* out) {
  const omUInt32* const edgesOfA = a.empty() ? nullptr : &a.begin()->begin;
  const omUInt32* const edgesOfB = b.empty() ? nullptr : &b.begin()->begin;
  omUInt32* const edges = &out->begin;
  const std::size_t nbOfA = 2 * a.size();
  const std::size_t nbOfB = 2 * b.size();
  std::size_t i = 0, j = 0, nbEdges = 0;
  while (i < nbOfA && j < nbOfB) {
    const omUInt32 nextOfA = edgesOfA[i];
    const omUInt32 nextOfB = edgesOfB[j];
    i += nextOfA <= nextOfB;
    j += nextOfB <= nextOfA;
    edges[nbEdges] = std::min(nextOfA, nextOfB);
    const std::size_t isKept = Kept >> ((i & 1) | (j & 1) << 1) & 1;
    nbEdges += isKept != (nbEdges & 1);
  }
  if constexpr ((Kept >> 1 & 1) != 0)
    for (; i < nbOfA; ++i) edges[nbEdges++] = edgesOfA[i];
  if constexpr ((Kept >> 2 & 1) != 0)
    for (; j < nbOfB; ++j) edges[nbEdges++] = edgesOfB[j];
  return out + nbEdges / 2;
}

/// The row with adjacent runs joined: itself where there are none, else in `joined`.
inline RowIntersections::Row joinedRuns(const RowIntersections::Row& row, RowIntersections::RunColl& joined) {
  const auto areAdjacent = [](const PixelRun& left, const PixelRun& right) { return left.end == right.begin; };
  if (std::adjacent_find(row.begin(), row.end(), areAdjacent) == row.end()) return row;
  joined.clear();
  for (const PixelRun& run : row)
    if (!joined.empty() && joined.back().end == run.begin)
      joined.back().end = run.end;
    else
      joined.push_back(run);
  return {joined.data(), joined.data() + joined.size()};
}

/// The runs of a row, none where the row is not one of the set's.
inline RowIntersections::Row rowOrNone(const RowIntersections& rows, omUInt64 row) {
  if (row < rows.getStartRow() || row >= rows.getEndRow()) return {nullptr, nullptr};
  return rows.getRow(row);
}

}  // namespace ormix::geom::detail
