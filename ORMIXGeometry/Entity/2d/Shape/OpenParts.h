#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace ormix::geom::detail {

/// Components of runs that arrive layer by layer, rows of the plane or slices of space. Held are the open ones, with
/// pixels in the last layer, and the closed ones until they are taken. A part is known by an index, which is used again
/// when the part is closed or was joined to another one.
/// \param PlacedRun a run and its place, with `layer()` and the order `<` of the first pixels; sets are made of them by
///        makeSet(runs in order)
/// \param Set what a closed component becomes
template <class PlacedRun, class Set>
class OpenParts {
 public:
  static constexpr std::size_t s_none = static_cast<std::size_t>(-1);  ///< no part

  /// The part that a run of the last layer belongs to.
  std::size_t partOfLast(std::size_t run) { return rootOf(_lastParts[run]); }
  /// The part that a run of the current layer belongs to, of those added so far.
  std::size_t partOfNew(std::size_t run) { return rootOf(_newParts[run]); }

  /// The part that this one, which may be `s_none`, was joined to.
  std::size_t rootOf(std::size_t part) {
    if (part == s_none) return part;
    while (_parts[part].parent != part) part = _parts[part].parent = _parts[_parts[part].parent].parent;
    return part;
  }

  /// Adds a run of the current layer, behind all of them so far, to a part, or for `s_none` to a new one.
  void add(std::size_t part, const PlacedRun& run) {
    part = part == s_none ? open(run) : rootOf(part);
    _parts[part].runs.push_back(run);
    _parts[part].lastLayer = run.layer();
    _newParts.push_back(part);
  }

  /// Joins two parts, one of which may be `s_none`, to the one that is answered. The runs of the smaller part move to
  /// the larger one: each run moves as often as the logarithm of their number says at most. They are put in order when
  /// the component is closed.
  std::size_t join(std::size_t first, std::size_t second) {
    std::size_t a = rootOf(first), b = rootOf(second);
    if (a == b || b == s_none) return a;
    if (a == s_none) return b;
    if (_parts[a].runs.size() < _parts[b].runs.size()) std::swap(a, b);
    Part& kept = _parts[a];
    Part& joined = _parts[b];
    kept.runs.insert(kept.runs.end(), joined.runs.begin(), joined.runs.end());
    kept.isSorted = false;
    if (joined.first < kept.first) kept.first = joined.first;
    kept.lastLayer = std::max(kept.lastLayer, joined.lastLayer);
    joined.runs = {};
    joined.parent = a;
    _joinedParts.push_back(b);
    return a;
  }

  /// Ends the current layer, which is the last one then: closes the parts of the layer before that have no runs in it.
  void endLayer(omUInt64 layer) {
    closeUntouched(layer);
    for (std::size_t& part : _newParts) part = rootOf(part);
    _freeParts.insert(_freeParts.end(), _joinedParts.begin(), _joinedParts.end());
    _joinedParts.clear();
    _lastParts.swap(_newParts);
    _newParts.clear();
  }

  /// Closes all parts: the layers up to this one have no runs.
  void closeAll(omUInt64 layer) {
    closeUntouched(layer);
    _lastParts.clear();
  }

  /// Takes out the closed components, in order of their first pixels.
  std::vector<Set> takeClosed() {
    std::sort(_closed.begin(), _closed.end(), [](const Closed& a, const Closed& b) { return a.first < b.first; });
    std::vector<Set> result;
    result.reserve(_closed.size());
    for (Closed& component : _closed) result.push_back(std::move(component.set));
    _closed.clear();
    return result;
  }

 private:
  /// A part without runs, of which this run will be the first.
  std::size_t open(const PlacedRun& first) {
    if (_freeParts.empty()) {
      _parts.emplace_back();
      _freeParts.push_back(_parts.size() - 1);
    }
    const std::size_t index = _freeParts.back();
    _freeParts.pop_back();
    _parts[index] = {index, {}, first, first.layer(), true};
    return index;
  }

  /// Closes the parts of the last layer that have no runs in this one.
  void closeUntouched(omUInt64 layer) {
    for (const std::size_t part : _lastParts) {
      const std::size_t root = rootOf(part);
      if (_parts[root].lastLayer == layer) continue;
      close(root);
      _parts[root].lastLayer = layer;  // closed once, however many runs it has
    }
  }

  /// A component, or what was one before it was joined to another.
  struct Part {
    std::size_t parent;           // index of the part that it was joined to, its own where it was not
    std::vector<PlacedRun> runs;  // in order if `isSorted`
    PlacedRun first;              // the first of the runs
    omUInt64 lastLayer;           // the layer of the last of the runs
    bool isSorted;
  };
  /// A component that no later layer can touch.
  struct Closed {
    PlacedRun first;
    Set set;
  };

  /// Makes the set of a component's pixels; its index may be used again.
  void close(std::size_t index) {
    Part& part = _parts[index];
    if (!part.isSorted) sort(part);
    _closed.push_back({part.first, makeSet(part.runs)});
    part.runs = {};
    _freeParts.push_back(index);
  }

  /// Puts the runs in order, of layers none of which is without runs: layer by layer in linear time, then in each.
  static void sort(Part& part) {
    const omUInt64 first = part.first.layer();
    std::vector<std::size_t> ends(static_cast<std::size_t>(part.lastLayer - first) + 2);
    const auto indexOf = [first](const PlacedRun& run) { return static_cast<std::size_t>(run.layer() - first); };
    for (const PlacedRun& run : part.runs) ++ends[indexOf(run) + 1];
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    std::vector<PlacedRun> sorted(part.runs.size());
    for (const PlacedRun& run : part.runs) sorted[ends[indexOf(run)]++] = run;
    for (std::size_t layer = 0, begin = 0; layer + 1 < ends.size(); begin = ends[layer++])
      std::sort(sorted.begin() + static_cast<std::ptrdiff_t>(begin),
                sorted.begin() + static_cast<std::ptrdiff_t>(ends[layer]));
    part.runs.swap(sorted);
  }

  std::vector<Part> _parts;
  std::vector<std::size_t> _lastParts;    // of the runs of the last layer
  std::vector<std::size_t> _newParts;     // of the runs of the layer that is being added
  std::vector<std::size_t> _freeParts;    // indices of parts to be used again
  std::vector<std::size_t> _joinedParts;  // joined to others in the layer that is being added
  std::vector<Closed> _closed;
};

}  // namespace ormix::geom::detail
