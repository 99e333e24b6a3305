#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>

#include <algorithm>
#include <cstddef>
#include <vector>

/// \file
/// A packed tree of boxes; not installed.

namespace ormix::detail {

/// An upright box, sides included.
struct PlanarBox {
  PlanarPoint low;
  PlanarPoint high;

  void extend(const PlanarBox& other) {
    low = {std::min(low.x, other.low.x), std::min(low.y, other.low.y)};
    high = {std::max(high.x, other.high.x), std::max(high.y, other.high.y)};
  }
};

/// The box of a segment, wider by `margin`.
inline PlanarBox boxOf(const PlanarPoint& a, const PlanarPoint& b, omReal64 margin) {
  return {{std::min(a.x, b.x) - margin, std::min(a.y, b.y) - margin},
          {std::max(a.x, b.x) + margin, std::max(a.y, b.y) + margin}};
}

inline bool meet(const PlanarBox& a, const PlanarBox& b) {
  return a.low.x <= b.high.x && b.low.x <= a.high.x && a.low.y <= b.high.y && b.low.y <= a.high.y;
}

/// Each node is the box of eight nodes that follow each other, the lowest ones of eight boxes in the order of the
/// places of their centres along a curve through the cells of a grid (Morton1966), so that they are close to each
/// other.
class ChainBoxes {
 public:
  /// Replaces the tree by one of these boxes. O(n log n).
  void build(const std::vector<PlanarBox>& boxes) {
    sort(boxes);
    _levels.assign(1, {});
    _levels[0].reserve(boxes.size());
    for (const omUInt32 number : _numbers) _levels[0].push_back(boxes[number]);
    while (_levels.back().size() > s_width) {
      const std::vector<PlanarBox>& below = _levels.back();
      std::vector<PlanarBox> level;
      level.reserve(below.size() / s_width + 1);
      for (std::size_t i = 0; i < below.size(); ++i) {
        if (i % s_width == 0)
          level.push_back(below[i]);
        else
          level.back().extend(below[i]);
      }
      _levels.push_back(std::move(level));
    }
  }

  /// Calls `visit` with the number of each given box that meets `box`.
  /// \return how many boxes were looked at
  template <class Visit>
  std::size_t query(const PlanarBox& box, Visit&& visit) const {
    std::size_t nbBoxes = 0;
    // A path from the top to the bottom has at most all nodes of each level's family pending.
    Node pending[s_maxNbLevels * s_width];
    std::size_t nbPending = 0;
    const std::size_t top = _levels.size() - 1;
    const auto push = [&](std::size_t level, std::size_t begin, std::size_t end) {
      nbBoxes += end - begin;
      for (std::size_t i = end; i-- > begin;)
        if (meet(_levels[level][i], box)) pending[nbPending++] = {level, i};
    };
    push(top, 0, _levels[top].size());
    while (nbPending > 0) {
      const Node node = pending[--nbPending];
      if (node.level == 0) {
        visit(_numbers[node.index]);
        continue;
      }
      const std::size_t begin = node.index * s_width;
      push(node.level - 1, begin, std::min(begin + s_width, _levels[node.level - 1].size()));
    }
    return nbBoxes;
  }

 private:
  struct Node {
    std::size_t level;
    std::size_t index;
  };

  /// The bits of a number below 2^16, with a 0 before each.
  static omUInt64 spread(omUInt64 bits) {
    bits = (bits | bits << 8) & 0x00FF00FFu;
    bits = (bits | bits << 4) & 0x0F0F0F0Fu;
    bits = (bits | bits << 2) & 0x33333333u;
    return (bits | bits << 1) & 0x55555555u;
  }

  void sort(const std::vector<PlanarBox>& boxes) {
    PlanarBox all = boxes.empty() ? PlanarBox{} : boxes.front();
    for (const PlanarBox& box : boxes) all.extend(box);
    const omReal64 width = std::max(all.high.x - all.low.x, all.high.y - all.low.y);
    const omReal64 nbCells = width > 0 ? 65535 / width : 0;
    const auto cell = [nbCells](omReal64 low, omReal64 high, omReal64 start) {
      return spread(static_cast<omUInt64>(std::clamp((0.5 * (low + high) - start) * nbCells, 0.0, 65535.0)));
    };
    std::vector<omUInt64> keys;
    keys.reserve(boxes.size());
    for (const PlanarBox& box : boxes) {
      const omUInt64 place = cell(box.low.x, box.high.x, all.low.x) | cell(box.low.y, box.high.y, all.low.y) << 1;
      keys.push_back(place << 32 | keys.size());
    }
    std::sort(keys.begin(), keys.end());
    _numbers.clear();
    for (const omUInt64 key : keys) _numbers.push_back(static_cast<omUInt32>(key));
  }

  static constexpr std::size_t s_width = 8;
  static constexpr std::size_t s_maxNbLevels = 12;  // enough for 2^36 boxes

  std::vector<std::vector<PlanarBox>> _levels;
  std::vector<omUInt32> _numbers;  ///< the given boxes in the order of the lowest level
};

}  // namespace ormix::detail
