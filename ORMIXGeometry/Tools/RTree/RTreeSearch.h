#pragma once

#include <ORMIXGeometry/Tools/RTree/ChangingIndex.h>
#include <ORMIXGeometry/Tools/RTree/RTreeAccess.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

/// \file
/// The queries of an index; not installed.

namespace ormix::geom::detail {

/// Squares of coordinates up to here, and sums of three of them, do not overflow.
constexpr omReal64 s_largestMagnitude = 0x1p500;

template <std::size_t D>
IndexBox<D> widenedBox(IndexBox<D> box, omReal64 margin) {
  for (std::size_t d = 0; d < D; ++d) {
    box.low[d] -= margin;
    box.high[d] += margin;
  }
  return box;
}

/// The items nearest to a point until now, the farthest of them in front.
class NearestHeap {
 public:
  struct Entry {
    omReal64 square;
    std::size_t index;
    bool operator<(const Entry& other) const {
      return square < other.square || (square == other.square && index < other.index);
    }
  };

  NearestHeap(std::size_t nb, omReal64 squareBound) : _nb(nb), _bound(squareBound) {}

  /// What is not below it is not wanted.
  omReal64 bound() const { return _bound; }
  omReal64 add(std::size_t index, omReal64 square) {
    if (!(square < _bound)) return _bound;
    _entries.push_back({square, index});
    std::push_heap(_entries.begin(), _entries.end());
    if (_entries.size() > _nb) {
      std::pop_heap(_entries.begin(), _entries.end());
      _entries.pop_back();
    }
    if (_entries.size() == _nb) _bound = _entries.front().square;
    return _bound;
  }
  const std::vector<Entry>& entries() const { return _entries; }

 private:
  std::size_t _nb;
  omReal64 _bound;
  std::vector<Entry> _entries;
};

/// The queries of an index, which tell a function of any type.
template <class Item>
class RTreeSearch {
  static constexpr std::size_t D = RTreeItem<Item>::s_dimension;

 public:
  using Box = IndexBox<D>;
  using Point = IndexPoint<D>;
  using Items = std::vector<typename RTreeItem<Item>::Points>;

  /// Of the items that are not removed, with a tree of one kind or none; no coordinate is larger than the magnitude.
  RTreeSearch(const Items& items, const std::vector<bool>& isRemoved, omReal64 magnitude, const BoxTree<D>* packed,
              const ChangingIndex<D>* changing)
      : _items(items), _isRemoved(isRemoved), _magnitude(magnitude), _packed(packed), _changing(changing) {}

  GeometryOf<Item> at(std::size_t index) const { return geometryOf<Item>(_items[index]); }

  template <class Visit>
  bool visitAll(Visit&& visit) const {
    for (std::size_t i = 0; i < _items.size(); ++i)
      if ((_isRemoved.empty() || !_isRemoved[i]) && !at(i).box().empty() && !visit(i)) return false;
    return true;
  }
  /// The items whose boxes meet one.
  template <class Visit>
  bool visitBoxes(const Box& box, Visit&& visit) const {
    if (_packed) return _packed->visitIntersecting(box, visit);
    if (_changing) return _changing->visitIntersecting(box, visit);
    return visitAll([&](std::size_t i) { return !at(i).box().meets(box) || visit(i); });
  }

  template <class Visit>
  bool visitMeeting(const Box& box, Visit&& visit) const {
    if (box.empty()) return true;
    if constexpr (RTreeItem<Item>::s_kind == eRTI_Point || RTreeItem<Item>::s_kind == eRTI_Box)
      return visitBoxes(box, visit);
    else
      return visitBoxes(box, [&](std::size_t i) { return !at(i).meets(box) || visit(i); });
  }

  template <class Visit>
  bool visitWithin(const Point& point, omReal64 distance, Visit&& visit) const {
    const omReal64 magnitude = std::max(_magnitude, magnitudeOf(point));
    if (magnitude > s_largestMagnitude)
      return visitAll([&](std::size_t i) { return !(at(i).distanceTo(point) <= distance) || visit(i); });
    const omReal64 margin = distance + s_quickError * magnitude;
    const auto visitNear = [&](std::size_t i) {
      const GeometryOf<Item> item = at(i);
      // Most are told from the quick square.
      return !(item.squareTo(point) <= margin * margin) || !(item.distanceTo(point) <= distance) || visit(i);
    };
    if (_packed) return _packed->visitWithin(point, distance, visitNear);
    return visitBoxes(widenedBox(Box{point, point}, margin), visitNear);
  }

  template <class Visit>
  bool visitAlong(const Point& start, const Point& end, omReal64 distance, Visit&& visit) const {
    const auto visitNear = [&](std::size_t i) { return !(at(i).distanceTo(start, end) <= distance) || visit(i); };
    const omReal64 magnitude = std::max({_magnitude, magnitudeOf(start), magnitudeOf(end)});
    if (magnitude > s_largestMagnitude) return visitAll(visitNear);
    const omReal64 margin = distance + s_quickError * magnitude;  // more than the rounding of the direction
    const Point direction = minus(end, start);
    if (_packed) return _packed->visitAlong(start, direction, 1, visitNear, margin);
    if (!_changing) return visitAll(visitNear);
    // The boxes of pieces of the segment; an item that meets several of them once.
    constexpr std::size_t s_nbPieces = 32;
    std::vector<std::size_t> found;
    for (std::size_t k = 0; k < s_nbPieces; ++k) {
      Box piece;
      for (const std::size_t end01 : {k, k + 1})
        piece.add(along(start, direction, static_cast<omReal64>(end01) / s_nbPieces));
      _changing->visitIntersecting(widenedBox(piece, margin), [&](std::size_t i) { return found.push_back(i), true; });
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return std::all_of(found.begin(), found.end(), visitNear);
  }

  /// The k nearest items that may be at most this far, in no order; fewer where there are no more.
  NearestHeap nearest(const Point& point, std::size_t nb, omReal64 bound) const {
    const omReal64 magnitude = std::max(_magnitude, magnitudeOf(point));
    if (magnitude > s_largestMagnitude) {
      // By distances in place of squares, which would overflow.
      NearestHeap heap(nb, std::nextafter(bound, std::numeric_limits<omReal64>::infinity()));
      visitAll([&](std::size_t i) { return heap.add(i, at(i).distanceTo(point)), true; });
      return heap;
    }
    // A little farther than asked for, as these squares are quick ones.
    const omReal64 margin = bound + s_quickError * std::max(magnitude, std::numeric_limits<omReal64>::min());
    const omReal64 squareBound = std::max(margin * margin, std::numeric_limits<omReal64>::min());
    NearestHeap heap(nb, squareBound);
    // Points and boxes are their boxes, whose squares are known without looking at the item.
    constexpr bool s_isBox = RTreeItem<Item>::s_kind == eRTI_Point || RTreeItem<Item>::s_kind == eRTI_Box;
    const auto visit = [&](std::size_t i) { return heap.add(i, at(i).squareTo(point)); };
    if (_packed) {
      _packed->visitNearest(point, heap.bound(), [&](std::size_t i, omReal64 boxSquare) {
        return s_isBox ? heap.add(i, boxSquare) : visit(i);
      });
    } else if (_changing) {
      for (std::size_t nbAsked = 4 * std::min(nb, _items.size()) + 12;; nbAsked *= 4) {
        heap = NearestHeap(nb, squareBound);
        const auto found = _changing->nearest(point, nbAsked);
        for (const auto& near : found) visit(near.item);
        if (found.size() < nbAsked || found.back().square >= BoxTree<D>::widened(heap.bound())) break;
      }
    } else {
      visitAll([&](std::size_t i) { return visit(i), true; });
    }
    return heap;
  }

 private:
  const Items& _items;
  const std::vector<bool>& _isRemoved;
  omReal64 _magnitude;
  const BoxTree<D>* _packed;
  const ChangingIndex<D>* _changing;
};

}  // namespace ormix::geom::detail
