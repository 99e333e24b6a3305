#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>

/// \file
/// Disjoint sets of indices, for what is connected; not installed.

namespace ormix::detail {

/// Sets of the numbers from 0 on, which grow together: union-find with path halving
/// (Tarjan1984). The lowest number of a set stands
/// for it, so that the outcome does not depend on the order of the unions. O(log n) a union, amortised.
class DisjointSets {
 public:
  /// Each number a set of its own.
  explicit DisjointSets(std::size_t nbElements) : _parents(nbElements) {
    std::iota(_parents.begin(), _parents.end(), omUInt32(0));
  }

  /// Unites the sets of two numbers; true when they were different.
  bool unite(omUInt32 a, omUInt32 b) {
    a = lowest(a);
    b = lowest(b);
    _parents[std::max(a, b)] = std::min(a, b);
    return a != b;
  }

  /// Adds sets of one number each, up to that many numbers in total; answers how many.
  std::size_t grow(std::size_t nbElements) {
    const std::size_t nbBefore = _parents.size();
    _parents.resize(std::max(nbBefore, nbElements));
    std::iota(_parents.begin() + static_cast<std::ptrdiff_t>(nbBefore), _parents.end(),
              static_cast<omUInt32>(nbBefore));
    return _parents.size() - nbBefore;
  }

  /// The lowest number of a set.
  omUInt32 lowest(omUInt32 element) {
    // Mostly the parent is it, and nothing is to be written.
    for (omUInt32 parent = _parents[element];; parent = _parents[element]) {
      const omUInt32 above = _parents[parent];
      if (above == parent) return parent;
      _parents[element] = above;
      element = above;
    }
  }

  /// Numbers the sets from 0 in order of their lowest numbers.
  /// \param labels set to the number of the set of each element
  /// \return the number of sets
  std::size_t number(std::vector<omUInt32>& labels) {
    labels.resize(_parents.size());
    omUInt32 nbSets = 0;
    for (omUInt32 element = 0; element < _parents.size(); ++element) {
      // A parent is lower than its children, and so has a number already.
      const omUInt32 parent = _parents[element];
      labels[element] = parent == element ? nbSets++ : labels[parent];
    }
    return nbSets;
  }

 private:
  std::vector<omUInt32> _parents;
};

}  // namespace ormix::detail
