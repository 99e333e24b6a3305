#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <memory>
#include <vector>

// Not installed.
namespace ormix::geom {

/// The half-edges of a mesh sorted by counting: first by the lower of their two vertices, then those that ascend from
/// it before those that descend to it, then by index. So what runs between the same vertices lies in one bucket, and
/// most buckets have a handful of entries.
class DirectedEdges {
 public:
  /// \param visitEdges called twice with a function `f(halfEdgeIdx, start, end)`, which it calls with the different
  ///        vertices of each half-edge, in ascending order of `halfEdgeIdx`
  template <class VisitEdges>
  DirectedEdges(std::size_t nbVertices, VisitEdges visitEdges) : _firstColl(2 * nbVertices + 2) {
    visitEdges([this](omUInt32, omUInt32 start, omUInt32 end) { ++_firstColl[bucketOf(start, end) + 2]; });
    // Now one bucket ahead: filling a bucket moves its beginning to its end, which is where the next one begins.
    for (std::size_t bucket = 2; bucket < _firstColl.size(); ++bucket) _firstColl[bucket] += _firstColl[bucket - 1];
    _entryColl.reset(new Entry[_firstColl.back()]);
    visitEdges([this](omUInt32 halfEdgeIdx, omUInt32 start, omUInt32 end) {
      _entryColl[_firstColl[bucketOf(start, end) + 1]++] = {start < end ? end : start, halfEdgeIdx};
    });
  }

  /// Calls `onPair(h, o)` for half-edges in opposite directions along the same edge, and `onRepeat(first, again)` for
  /// one that runs as an earlier one does, `first` being the earliest. Linear in vertices and half-edges, whatever the
  /// valences. Where an edge has repeated half-edges, which pairs are reported is left open.
  template <class OnPair, class OnRepeat>
  void match(OnPair onPair, OnRepeat onRepeat) const {
    std::vector<omUInt32> placeColl;  // by vertex, for the large buckets
    const std::size_t nbVertices = _firstColl.size() / 2 - 1;
    for (std::size_t vertex = 0; vertex < nbVertices; ++vertex) {
      const omUInt32 first = _firstColl[2 * vertex];
      const omUInt32 middle = _firstColl[2 * vertex + 1];
      const omUInt32 last = _firstColl[2 * vertex + 2];
      if (last - first <= s_maxNbCompared) {
        matchByComparing(first, middle, last, onPair, onRepeat);
      } else {
        if (placeColl.empty()) placeColl.resize(nbVertices);
        matchByPlace(first, middle, last, placeColl, onPair, onRepeat);
      }
    }
  }

 private:
  struct Entry {
    omUInt32 higherVertexIdx;
    omUInt32 halfEdgeIdx;
  };

  // Below this, comparing all with all is faster than the way through memory by vertex.
  static constexpr omUInt32 s_maxNbCompared = 24;

  static std::size_t bucketOf(omUInt32 start, omUInt32 end) {
    return 2 * std::size_t{start < end ? start : end} + std::size_t{start > end};
  }

  template <class OnRepeat>
  void compareWithEarlier(omUInt32 first, omUInt32 place, OnRepeat& onRepeat) const {
    for (omUInt32 earlier = first; earlier < place; ++earlier)
      if (_entryColl[earlier].higherVertexIdx == _entryColl[place].higherVertexIdx) {
        onRepeat(_entryColl[earlier].halfEdgeIdx, _entryColl[place].halfEdgeIdx);
        return;
      }
  }

  template <class OnPair, class OnRepeat>
  void matchByComparing(omUInt32 first, omUInt32 middle, omUInt32 last, OnPair& onPair, OnRepeat& onRepeat) const {
    for (omUInt32 place = first; place < middle; ++place) compareWithEarlier(first, place, onRepeat);
    for (omUInt32 place = middle; place < last; ++place) {
      compareWithEarlier(middle, place, onRepeat);
      for (omUInt32 other = first; other < middle; ++other)
        if (_entryColl[other].higherVertexIdx == _entryColl[place].higherVertexIdx) {
          onPair(_entryColl[other].halfEdgeIdx, _entryColl[place].halfEdgeIdx);
          break;
        }
    }
  }

  // A place holds good for a vertex when the entry there has that vertex, so that places need no clearing between
  // buckets.
  template <class OnPair, class OnRepeat>
  void matchByPlace(omUInt32 first, omUInt32 middle, omUInt32 last, std::vector<omUInt32>& placeColl, OnPair& onPair,
                    OnRepeat& onRepeat) const {
    const auto isAt = [this](omUInt32 place, omUInt32 from, omUInt32 to, omUInt32 vertex) {
      return place >= from && place < to && _entryColl[place].higherVertexIdx == vertex;
    };
    for (omUInt32 place = first; place < last; ++place) {
      const Entry entry = _entryColl[place];
      omUInt32& known = placeColl[entry.higherVertexIdx];
      if (isAt(known, place < middle ? first : middle, place, entry.higherVertexIdx)) {
        onRepeat(_entryColl[known].halfEdgeIdx, entry.halfEdgeIdx);
        continue;
      }
      if (place >= middle && isAt(known, first, middle, entry.higherVertexIdx))
        onPair(_entryColl[known].halfEdgeIdx, entry.halfEdgeIdx);
      known = place;
    }
  }

  std::vector<omUInt32> _firstColl;     // by bucket, two a vertex, and the end
  std::unique_ptr<Entry[]> _entryColl;  // not a vector, which would write every entry twice
};

}  // namespace ormix::geom
