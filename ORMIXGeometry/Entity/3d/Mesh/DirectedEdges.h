#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <vector>

// Not installed.
namespace ormix::geom::detail {

/// The half-edges of a mesh in buckets (counting sort): one bucket for each vertex, with the half-edges of which it is
/// the lower of the two vertices, in ascending order of their indices. Half-edges between the same two vertices are
/// therefore in one bucket, and most buckets have a handful of entries.
class DirectedEdges {
 public:
  /// \param visitEdges called twice with a function `f(halfEdgeIdx, start, end)`, which it calls with the different
  ///        vertices of each half-edge, in ascending order of `halfEdgeIdx`
  template <class VisitEdges>
  DirectedEdges(std::size_t nbVertices, VisitEdges visitEdges) : _firstColl(nbVertices + 2) {
    visitEdges([this](omUInt32, omUInt32 start, omUInt32 end) { ++_firstColl[lowerOf(start, end) + 2]; });
    // The beginnings are stored one bucket ahead: filling a bucket advances its beginning to its end, which is the
    // beginning of the next one.
    for (std::size_t bucket = 2; bucket < _firstColl.size(); ++bucket) _firstColl[bucket] += _firstColl[bucket - 1];
    _entryColl.reset(new Entry[_firstColl.back()]);
    visitEdges([this](omUInt32 halfEdgeIdx, omUInt32 start, omUInt32 end) {
      _entryColl[_firstColl[lowerOf(start, end) + 1]++] = {start < end ? end : start, halfEdgeIdx};
    });
  }

  /// Calls `onPair(h, o)` for half-edges in opposite directions along the same edge, and `onRepeat(first, again)` for a
  /// half-edge with the same start and end as an earlier one, `first` being the earliest of them. Linear in vertices
  /// and half-edges, whatever the valences. For an edge with repeated half-edges it is unspecified which pairs are
  /// reported.
  /// \param startOf returns the start vertex of a half-edge
  template <class StartOf, class OnPair, class OnRepeat>
  void match(StartOf startOf, OnPair onPair, OnRepeat onRepeat) const {
    std::vector<omUInt32> placeColl;  // used for large buckets only
    const std::size_t nbVertices = _firstColl.size() - 2;
    for (std::size_t vertex = 0; vertex < nbVertices; ++vertex) {
      const omUInt32 first = _firstColl[vertex];
      const omUInt32 last = _firstColl[vertex + 1];
      if (last - first <= s_maxNbCompared) {
        matchByComparing(first, last, startOf, onPair, onRepeat);
      } else {
        if (placeColl.empty()) placeColl.assign(2 * nbVertices, s_noPlace);
        const auto ascends = [&startOf, vertex](omUInt32 halfEdgeIdx) { return startOf(halfEdgeIdx) == vertex; };
        matchByPlace(first, last, placeColl, ascends, onPair, onRepeat);
      }
    }
  }

 private:
  struct Entry {
    omUInt32 higherVertexIdx;  ///< the other vertex of the half-edge
    omUInt32 halfEdgeIdx;      ///< its index
  };

  // Up to this size of a bucket, comparing all pairs of entries is faster than a table indexed by vertex.
  static constexpr omUInt32 s_maxNbCompared = 24;
  static constexpr omUInt32 s_noPlace = std::numeric_limits<omUInt32>::max();

  static std::size_t lowerOf(omUInt32 start, omUInt32 end) { return start < end ? start : end; }

  // The direction is looked up only for entries with the same vertices, whose half-edges are then linked anyway.
  template <class StartOf, class OnPair, class OnRepeat>
  void matchByComparing(omUInt32 first, omUInt32 last, StartOf& startOf, OnPair& onPair, OnRepeat& onRepeat) const {
    for (omUInt32 place = first; place < last; ++place) {
      const Entry entry = _entryColl[place];
      for (omUInt32 earlier = first; earlier < place; ++earlier) {
        const Entry other = _entryColl[earlier];
        if (other.higherVertexIdx != entry.higherVertexIdx) continue;
        if (startOf(other.halfEdgeIdx) != startOf(entry.halfEdgeIdx)) {
          onPair(other.halfEdgeIdx, entry.halfEdgeIdx);
        } else {
          onRepeat(other.halfEdgeIdx, entry.halfEdgeIdx);
          break;
        }
      }
    }
  }

  // `placeColl` has for each vertex and direction the place of the first entry. A place left by an earlier bucket is
  // less than `first`, so that the table is not cleared between buckets.
  template <class Ascends, class OnPair, class OnRepeat>
  void matchByPlace(omUInt32 first, omUInt32 last, std::vector<omUInt32>& placeColl, Ascends& ascends, OnPair& onPair,
                    OnRepeat& onRepeat) const {
    const auto isKnown = [first](omUInt32 place) { return place != s_noPlace && place >= first; };
    for (omUInt32 place = first; place < last; ++place) {
      const Entry entry = _entryColl[place];
      omUInt32* places = &placeColl[2 * std::size_t{entry.higherVertexIdx}];
      const bool isAscending = ascends(entry.halfEdgeIdx);
      omUInt32& same = places[isAscending ? 0 : 1];
      const omUInt32 opposite = places[isAscending ? 1 : 0];
      if (isKnown(same)) {
        onRepeat(_entryColl[same].halfEdgeIdx, entry.halfEdgeIdx);
        continue;
      }
      if (isKnown(opposite)) onPair(_entryColl[opposite].halfEdgeIdx, entry.halfEdgeIdx);
      same = place;
    }
  }

  std::vector<omUInt32> _firstColl;     // beginning of each bucket, by vertex, and the end of the last
  std::unique_ptr<Entry[]> _entryColl;  // not a vector, which would initialise every entry first
};

}  // namespace ormix::geom::detail
