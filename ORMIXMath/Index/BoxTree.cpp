#include <ORMIXMath/Index/BoxTree.h>

#include <stdexcept>

namespace ormix::detail {

namespace {

/// Four bits of each coordinate to eight bits of the place along Hilbert's curve, for each of the four ways in which
/// the curve runs through a square, and the way in which it runs through the cell.
struct HilbertTable {
  omUInt8 place[4][256];
  omUInt8 next[4][256];
};

/// A way of the curve is whether x and y change places, and whether both are mirrored.
constexpr HilbertTable makeHilbertTable() {
  HilbertTable table{};
  for (unsigned way = 0; way < 4; ++way)
    for (unsigned bits = 0; bits < 256; ++bits) {
      unsigned state = way;
      unsigned place = 0;
      for (unsigned level = 4; level-- > 0;) {
        unsigned x = bits >> (4 + level) & 1;
        unsigned y = bits >> level & 1;
        if ((state & 2) != 0) {
          x ^= 1;
          y ^= 1;
        }
        if ((state & 1) != 0) {
          const unsigned swapped = x;
          x = y;
          y = swapped;
        }
        place = place << 2 | (x << 1 | (x ^ y));
        // The first quarter is entered by the other side, the last one also from its end.
        if (y == 0) state ^= x == 0 ? 1 : 3;
      }
      table.place[way][bits] = static_cast<omUInt8>(place);
      table.next[way][bits] = static_cast<omUInt8>(state);
    }
  return table;
}

constexpr HilbertTable s_hilbert = makeHilbertTable();

/// The place of a cell of a grid of 2^16 by 2^16 along Hilbert's curve.
omUInt32 curvePlace(const std::array<omUInt32, 2>& cell) {
  omUInt32 place = 0;
  unsigned way = 0;
  for (unsigned shift = 16; shift > 0;) {
    shift -= 4;
    const omUInt32 bits = (cell[0] >> shift & 15) << 4 | (cell[1] >> shift & 15);
    place = place << 8 | s_hilbert.place[way][bits];
    way = s_hilbert.next[way][bits];
  }
  return place;
}

/// The bits of a number below 2^10 with two zeros before each.
omUInt32 spread(omUInt32 bits) {
  bits = (bits | bits << 16) & 0x030000FFu;
  bits = (bits | bits << 8) & 0x0300F00Fu;
  bits = (bits | bits << 4) & 0x030C30C3u;
  return (bits | bits << 2) & 0x09249249u;
}

/// The place of a cell of a grid of 2^10 in each direction along Morton's curve.
omUInt32 curvePlace(const std::array<omUInt32, 3>& cell) {
  return spread(cell[0]) << 2 | spread(cell[1]) << 1 | spread(cell[2]);
}

/// Sorts by the upper halves; equal ones keep their order. Three passes of eleven bits.
void sortByPlace(std::vector<omUInt64>& keys) {
  constexpr unsigned s_nbBits = 11;
  constexpr omUInt64 s_mask = (1u << s_nbBits) - 1;
  std::vector<omUInt64> sorted(keys.size());
  for (unsigned shift = 32; shift < 64; shift += s_nbBits) {
    std::array<std::size_t, s_mask + 2> starts{};
    for (const omUInt64 key : keys) ++starts[(key >> shift & s_mask) + 1];
    for (std::size_t i = 1; i < starts.size(); ++i) starts[i] += starts[i - 1];
    for (const omUInt64 key : keys) sorted[starts[key >> shift & s_mask]++] = key;
    keys.swap(sorted);
  }
}

/// The numbers of the boxes in the order of their centres along the curve. Computed with halves, which do not overflow.
template <std::size_t D>
std::vector<omUInt32> curveOrder(const std::vector<IndexBox<D>>& boxes, const IndexBox<D>& envelope) {
  constexpr omReal64 s_lastCell = D == 2 ? 65535 : 1023;
  omReal64 halfWidth = 0;
  for (std::size_t d = 0; d < D; ++d) halfWidth = std::max(halfWidth, 0.5 * envelope.high[d] - 0.5 * envelope.low[d]);
  const omReal64 cellsPerUnit = halfWidth > 0 ? s_lastCell / halfWidth : 0;
  std::vector<omUInt64> keys(boxes.size());
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    std::array<omUInt32, D> cell;
    for (std::size_t d = 0; d < D; ++d) {
      const omReal64 halfCentre = 0.25 * boxes[i].low[d] + 0.25 * boxes[i].high[d];
      const omReal64 place = (halfCentre - 0.5 * envelope.low[d]) * cellsPerUnit;
      cell[d] = place > 0 ? static_cast<omUInt32>(std::min(place, s_lastCell)) : 0;  // NaN of an empty box, too
    }
    keys[i] = static_cast<omUInt64>(curvePlace(cell)) << 32 | i;
  }
  sortByPlace(keys);
  std::vector<omUInt32> order(boxes.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = static_cast<omUInt32>(keys[i]);
  return order;
}

template <std::size_t D>
void setChild(BoxNode<D>& node, std::size_t k, const IndexBox<D>& box) {
  for (std::size_t d = 0; d < D; ++d) {
    node.low[d][k] = box.low[d];
    node.high[d][k] = box.high[d];
  }
}

template <std::size_t D>
IndexBox<D> boxOf(const BoxNode<D>& node) {
  IndexBox<D> box;
  for (std::size_t d = 0; d < D; ++d)
    for (std::size_t k = 0; k < BoxNode<D>::s_width; ++k) {
      box.low[d] = std::min(box.low[d], node.low[d][k]);
      box.high[d] = std::max(box.high[d], node.high[d][k]);
    }
  return box;
}

template <std::size_t D>
BoxNode<D> emptyNode() {
  BoxNode<D> node;
  for (std::size_t k = 0; k < BoxNode<D>::s_width; ++k) setChild(node, k, {});
  return node;
}

}  // namespace

template <std::size_t D>
BoxTree<D>::BoxTree(const std::vector<IndexBox<D>>& boxes, eBoxOrder order) : _size(boxes.size()) {
  if (boxes.size() > std::numeric_limits<omUInt32>::max()) throw std::length_error("Too many boxes for a tree");
  for (const IndexBox<D>& box : boxes) _envelope.add(box);
  if (order == eBO_Curve) _items = curveOrder(boxes, _envelope);
  std::size_t nbNodes = 0;
  for (std::size_t nb = _size; nb > (nbNodes == 0 ? 0 : 1);) {
    nb = (nb + s_width - 1) / s_width;
    _levelStarts.push_back(nbNodes);
    nbNodes += nb;
  }
  _nodes.assign(nbNodes, emptyNode<D>());
  for (std::size_t i = 0; i < _size; ++i) setChild(_nodes[i / s_width], i % s_width, boxes[itemAt(i)]);
  for (std::size_t level = 1; level < _levelStarts.size(); ++level)
    for (std::size_t i = 0; i < nbBelow(level); ++i)
      setChild(_nodes[_levelStarts[level] + i / s_width], i % s_width, boxOf(node(level - 1, i)));
}

template BoxTree<2>::BoxTree(const std::vector<IndexBox<2>>&, eBoxOrder);
template BoxTree<3>::BoxTree(const std::vector<IndexBox<3>>&, eBoxOrder);

}  // namespace ormix::detail
