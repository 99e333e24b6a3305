#include <ORMIXGeometry/Tools/RTree/ChangingIndex.h>

// Boost includes such itself.
#define BOOST_ALLOW_DEPRECATED_HEADERS
// g++ 12 does not see that an R*-tree has at least one entry where it sorts them.
#pragma GCC diagnostic ignored "-Warray-bounds"

#include <algorithm>
#include <boost/geometry/algorithms/covered_by.hpp>
#include <boost/geometry/core/cs.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/geometry/strategies/strategies.hpp>
#include <boost/iterator/function_output_iterator.hpp>
#include <iterator>
#include <utility>

namespace ormix::geom::detail {

namespace {

namespace bg = boost::geometry;

template <std::size_t D>
using BoostPoint = bg::model::point<omReal64, D, bg::cs::cartesian>;
template <std::size_t D>
using BoostBox = bg::model::box<BoostPoint<D>>;

BoostPoint<2> toBoost(const IndexPoint<2>& p) { return {p[0], p[1]}; }
BoostPoint<3> toBoost(const IndexPoint<3>& p) { return {p[0], p[1], p[2]}; }
template <std::size_t D>
BoostBox<D> toBoost(const IndexBox<D>& box) {
  return {toBoost(box.low), toBoost(box.high)};
}

IndexPoint<2> fromBoost(const BoostPoint<2>& p) { return {p.get<0>(), p.get<1>()}; }
IndexPoint<3> fromBoost(const BoostPoint<3>& p) { return {p.get<0>(), p.get<1>(), p.get<2>()}; }
template <std::size_t D>
IndexBox<D> fromBoost(const BoostBox<D>& box) {
  return {fromBoost(box.min_corner()), fromBoost(box.max_corner())};
}

/// Equal items are told apart by their numbers alone.
template <std::size_t D>
struct IsSameItem {
  using Value = std::pair<BoostBox<D>, std::size_t>;
  bool operator()(const Value& a, const Value& b) const { return a.second == b.second; }
};

// Entries of a node: as many as made queries fastest.
constexpr std::size_t s_width = 16;

}  // namespace

template <std::size_t D>
struct ChangingIndex<D>::Tree {
  using Value = std::pair<BoostBox<D>, std::size_t>;
  bg::index::rtree<Value, bg::index::rstar<s_width>, bg::index::indexable<Value>, IsSameItem<D>> boxes;
};

template <std::size_t D>
ChangingIndex<D>::ChangingIndex(const std::vector<IndexBox<D>>& boxes) {
  std::vector<typename Tree::Value> values;
  values.reserve(boxes.size());
  for (std::size_t i = 0; i < boxes.size(); ++i)
    if (!boxes[i].empty()) values.emplace_back(toBoost(boxes[i]), i);
  _tree.reset(new Tree{decltype(Tree::boxes)(values.begin(), values.end())});
}
template <std::size_t D>
ChangingIndex<D>::ChangingIndex(const ChangingIndex& other) : _tree(new Tree(*other._tree)) {}
template <std::size_t D>
ChangingIndex<D>::~ChangingIndex() = default;

template <std::size_t D>
void ChangingIndex<D>::insert(const IndexBox<D>& box, std::size_t item) {
  if (!box.empty()) _tree->boxes.insert({toBoost(box), item});
}

template <std::size_t D>
void ChangingIndex<D>::remove(const IndexBox<D>& box, std::size_t item) {
  if (!box.empty()) _tree->boxes.remove({toBoost(box), item});
}

template <std::size_t D>
IndexBox<D> ChangingIndex<D>::envelope() const {
  return _tree->boxes.empty() ? IndexBox<D>() : fromBoost(_tree->boxes.bounds());
}

template <std::size_t D>
bool ChangingIndex<D>::visitIntersecting(const IndexBox<D>& box, const std::function<bool(std::size_t)>& visit) const {
  const auto end = _tree->boxes.qend();
  for (auto found = _tree->boxes.qbegin(bg::index::intersects(toBoost(box))); found != end; ++found)
    if (!visit(found->second)) return false;
  return true;
}

template <std::size_t D>
std::vector<typename ChangingIndex<D>::Near> ChangingIndex<D>::nearest(const IndexPoint<D>& point,
                                                                       std::size_t nb) const {
  std::vector<Near> found;
  if (_tree->boxes.empty()) return found;
  const auto add = [&](const typename Tree::Value& value) {
    found.push_back({value.second, fromBoost(value.first).squareTo(point)});
  };
  _tree->boxes.query(bg::index::nearest(toBoost(point), static_cast<unsigned>(std::min(nb, _tree->boxes.size()))),
                     boost::make_function_output_iterator(add));
  std::sort(found.begin(), found.end(), [](const Near& a, const Near& b) { return a.square < b.square; });
  return found;
}

template class ChangingIndex<2>;
template class ChangingIndex<3>;

}  // namespace ormix::geom::detail
