#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

/// \file
/// Disjoint sets of indices; not installed.

namespace ormix::detail {

/// Sets of the indices 0, 1, …, each in one of its own at first. Paths are halved, so that m operations take
/// O(m log m) at most and nearly O(m) mostly (Tarjan1984).
class UnionFind {
 public:
  explicit UnionFind(std::size_t size) : _parent(size) { std::iota(_parent.begin(), _parent.end(), omUInt32{0}); }

  /// The index that stands for the set of this one.
  omUInt32 find(omUInt32 index) {
    while (_parent[index] != index) index = _parent[index] = _parent[_parent[index]];
    return index;
  }
  /// Joins the sets of both; the first one's index stands for it.
  /// \return false when they are one already
  bool unite(omUInt32 a, omUInt32 b) {
    const omUInt32 first = find(a), second = find(b);
    _parent[second] = first;
    return first != second;
  }

 private:
  std::vector<omUInt32> _parent;
};

}  // namespace ormix::detail
