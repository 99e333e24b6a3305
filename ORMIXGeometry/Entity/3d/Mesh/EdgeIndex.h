#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXUtil/Memory/LargePages.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <vector>

/// \file
/// Which triangles share an edge; not installed.

namespace ormix::geom::detail {

/// The sides of triangles, grouped by their undirected edges: however many triangles an edge has and in which
/// directions they run. The one place where edges are found for all triangles at once; `HalfEdgeTable` finds them for
/// triangles that come one by one.
///
/// The sides are put into buckets by the lower of their two vertices (counting sort), and each bucket is sorted when it
/// is visited. There is no hash, so that no indices can be chosen against it. Linear in vertices and sides, whatever
/// the valences.
class EdgeIndex {
 public:
  /// A side as its bucket holds it, whose lower vertex they have in common.
  struct Side {
    omUInt32 higherVertexIdx;  ///< the other vertex
    omUInt32 sideIdx;          ///< its index
  };

  /// \param visitSides called twice with a function `f(sideIdx, start, end)`, which it calls with the different
  ///        vertices, below `nbVertices`, of each side, in ascending order of `sideIdx`
  template <class VisitSides>
  EdgeIndex(std::size_t nbVertices, VisitSides visitSides) : _firstColl(nbVertices + 2) {
    visitSides([this](omUInt32, omUInt32 start, omUInt32 end) { ++_firstColl[std::min(start, end) + std::size_t{2}]; });
    // The beginnings are stored one bucket ahead: filling a bucket advances its beginning to its end, which is the
    // beginning of the next one.
    for (std::size_t bucket = 2; bucket < _firstColl.size(); ++bucket) _firstColl[bucket] += _firstColl[bucket - 1];
    _sideColl.reset(new Side[_firstColl.back()]);
    adviseLargePages(_sideColl.get(), _firstColl.back() * sizeof(Side));
    visitSides([this](omUInt32 sideIdx, omUInt32 start, omUInt32 end) {
      _sideColl[_firstColl[std::min(start, end) + std::size_t{1}]++] = {std::max(start, end), sideIdx};
    });
  }

  /// The sides of triangles but those with equal corners. The side of triangle t from its corner k to the next one has
  /// the index 3 t + k.
  /// \param indices three indices below `nbVertices` a triangle
  EdgeIndex(std::size_t nbVertices, const omUInt32* indices, std::size_t nbTriangles)
      : EdgeIndex(nbVertices, [indices, nbTriangles](auto visit) {
          const omUInt32* corners = indices;
          for (omUInt32 first = 0; first < 3 * nbTriangles; first += 3, corners += 3) {
            if (hasEqualCorners(corners)) continue;
            visit(first, corners[0], corners[1]);
            visit(first + 1, corners[1], corners[2]);
            visit(first + 2, corners[2], corners[0]);
          }
        }) {}

  /// Calls `visit(lower, first, last)` with each edge: its lower vertex and the run of its sides, ascending by index.
  /// Edges come in ascending order of their lower vertex, then of their higher one.
  template <class Visit>
  void visitEdges(Visit visit) {
    visitEdges(visit, [](omUInt32) {});
  }

  /// The same; `announce(sideIdx)` is called with each side some edges before its turn, so that what `visit` looks up
  /// anywhere in memory may be asked for in time.
  template <class Visit, class Announce>
  void visitEdges(Visit visit, Announce announce) {
    constexpr std::size_t nbAhead = 64;
    const std::size_t nbVertices = _firstColl.size() - 2;
    const std::size_t nbSides = _firstColl[nbVertices];
    std::size_t announced = 0;
    for (std::size_t vertex = 0; vertex < nbVertices; ++vertex) {
      for (const std::size_t end = std::min(_firstColl[vertex + 1] + nbAhead, nbSides); announced < end; ++announced)
        announce(_sideColl[announced].sideIdx);
      Side* first = &_sideColl[_firstColl[vertex]];
      Side* const last = &_sideColl[_firstColl[vertex + 1]];
      sortBucket(first, last);
      while (first != last) {
        const Side* const begin = first;
        do ++first;
        while (first != last && first->higherVertexIdx == begin->higherVertexIdx);
        visit(static_cast<omUInt32>(vertex), begin, static_cast<const Side*>(first));
      }
    }
  }

 private:
  // Up to the first size, inserting is faster than std::sort; from the second on, a radix sort is.
  static constexpr std::ptrdiff_t s_maxNbInserted = 24;
  static constexpr std::ptrdiff_t s_minNbDistributed = 2048;

  // Sides enter a bucket in ascending order of their indices, which sorting by insertion and by digits keeps.
  void sortBucket(Side* first, Side* last) {
    if (last - first > s_maxNbInserted) {
      sortLargeBucket(first, last);
      return;
    }
    for (Side* next = first; next < last; ++next) {
      const Side side = *next;
      Side* place = next;
      for (; place != first && place[-1].higherVertexIdx > side.higherVertexIdx; --place) *place = place[-1];
      *place = side;
    }
  }

  void sortLargeBucket(Side* first, Side* last) {
    if (last - first < s_minNbDistributed) {
      std::sort(first, last, [](const Side& a, const Side& b) {
        return a.higherVertexIdx != b.higherVertexIdx ? a.higherVertexIdx < b.higherVertexIdx : a.sideIdx < b.sideIdx;
      });
      return;
    }
    constexpr unsigned digitBits = 11;
    constexpr std::size_t nbDigits = std::size_t{1} << digitBits;
    const std::size_t nbVertices = _firstColl.size() - 2;
    std::vector<Side> scratch(first, last);
    for (unsigned shift = 0; shift < 32 && (nbVertices - 1) >> shift != 0; shift += digitBits) {
      const auto digit = [shift](const Side& side) { return (side.higherVertexIdx >> shift) & (nbDigits - 1); };
      std::array<omUInt32, nbDigits + 1> places{};
      for (const Side& side : scratch) ++places[digit(side) + 1];
      for (std::size_t at = 1; at < nbDigits; ++at) places[at] += places[at - 1];
      for (const Side& side : scratch) first[places[digit(side)]++] = side;
      std::copy(first, last, scratch.begin());
    }
  }

  std::vector<omUInt32> _firstColl;   // beginning of each bucket, by vertex, and the end of the last
  std::unique_ptr<Side[]> _sideColl;  // not a vector, which would initialise every side first
};

}  // namespace ormix::geom::detail
