#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonTree.h>
#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <ostream>
#include <utility>

namespace ormix::geom {

namespace {
const ScalarRegistrators<PolygonWithHoles2d> g_classRegistrator;
}  // namespace

template <class T>
PolygonWithHoles2d<T>::PolygonWithHoles2d(const PolygonWithHoles2d& other) : Base(other), SharedFromThis(other) {
  copyTree(other);
}

template <class T>
PolygonWithHoles2d<T>::PolygonWithHoles2d(PolygonWithHoles2d&& other) noexcept : Base(other), SharedFromThis(other) {
  moveTree(other);
}

template <class T>
PolygonWithHoles2d<T>& PolygonWithHoles2d<T>::operator=(const PolygonWithHoles2d& other) {
  if (this != &other) *this = PolygonWithHoles2d(other);
  return *this;
}

template <class T>
PolygonWithHoles2d<T>& PolygonWithHoles2d<T>::operator=(PolygonWithHoles2d&& other) noexcept {
  if (this == &other) return *this;
  // Taken out first, as `other` may be one of the holes that are released here.
  PolygonWithHoles2d staged(std::move(other));
  PolygonWithHoles2d former;
  former.moveTree(*this);
  moveTree(staged);
  return *this;
}

template <class T>
PolygonWithHoles2d<T>::~PolygonWithHoles2d() {
  clearPolygonHoles();
}

template <class T>
BoolResult PolygonWithHoles2d<T>::read(BaseIArchive& archive) {
  BoolResult result = Base::read(archive);
  if (result) linkHoles();
  return result;
}

template <class T>
boost::shared_ptr<const PolygonWithHoles2d<T>> PolygonWithHoles2d<T>::getParent() const {
  const boost::shared_ptr<Anchor> anchor = _parent.lock();
  return anchor ? (*anchor)->weak_from_this().lock() : nullptr;
}

template <class T>
void PolygonWithHoles2d<T>::setParent(const boost::shared_ptr<const PolygonWithHoles2d>& parent) {
  if (parent)
    _parent = parent->anchor();
  else
    _parent.reset();
}

template <class T>
omUInt32 PolygonWithHoles2d<T>::getNbTotPolygons() const {
  omUInt32 count = 0;
  visitNodes(*this, [&count](const PolygonWithHoles2d&) {
    ++count;
    return true;
  });
  return count;
}

template <class T>
omUInt32 PolygonWithHoles2d<T>::getNbTotPoints() const {
  omUInt32 count = 0;
  visitNodes(*this, [&count](const PolygonWithHoles2d& node) {
    count += static_cast<omUInt32>(node.getNbExteriorPoints());
    return true;
  });
  return count;
}

template <class T>
void PolygonWithHoles2d<T>::clearPolygonHoles() noexcept {
  PolygonHoleColl holes;
  holes.swap(_polygonHoles);
  for (auto& hole : holes) release(std::move(hole));
}

template <class T>
void PolygonWithHoles2d<T>::clear() noexcept {
  _parent.reset();
  _exteriorPolygon.clear();
  clearPolygonHoles();
}

template <class T>
const boost::shared_ptr<const PolygonWithHoles2d<T>*>& PolygonWithHoles2d<T>::anchor() const {
  if (!_anchor) _anchor = boost::make_shared<Anchor>(this);
  return _anchor;
}

template <class T>
void PolygonWithHoles2d<T>::linkHoles() {
  for (const auto& hole : _polygonHoles)
    if (hole) hole->_parent = anchor();
}

// Iterative: each pair of the list is a node to fill from another one.
template <class T>
template <class TIn>
void PolygonWithHoles2d<T>::copyTree(const PolygonWithHoles2d<TIn>& source) {
  std::vector<std::pair<const PolygonWithHoles2d<TIn>*, PolygonWithHoles2d*>> pending{{&source, this}};
  while (!pending.empty()) {
    const auto [from, to] = pending.back();
    pending.pop_back();
    cast(from->getExteriorPolygon(), to->_exteriorPolygon);
    to->_polygonHoles.reserve(from->getNbHoles());
    for (const auto& hole : from->getPolygonHoles()) {
      to->_polygonHoles.push_back(hole ? boost::make_shared<PolygonWithHoles2d>() : nullptr);
      if (hole) pending.emplace_back(hole.get(), to->_polygonHoles.back().get());
    }
    to->linkHoles();
  }
}

/// Takes the contents of `source` into this node, which has none.
template <class T>
void PolygonWithHoles2d<T>::moveTree(PolygonWithHoles2d& source) noexcept {
  _exteriorPolygon = std::move(source._exteriorPolygon);
  _polygonHoles.swap(source._polygonHoles);
  _anchor.swap(source._anchor);
  if (_anchor) *_anchor = this;
}

// Destroys what nobody else owns from the leaves upwards, without recursion and without memory of its own: the nodes on
// the way back to the top are chained, each holding the link to the one above in the place of its last hole.
template <class T>
void PolygonWithHoles2d<T>::release(boost::shared_ptr<PolygonWithHoles2d> tree) noexcept {
  boost::shared_ptr<PolygonWithHoles2d> path;
  for (;;) {
    if (tree && tree->hasHoles() && tree.use_count() == 1) {
      tree->_polygonHoles.back().swap(path);
      path.swap(tree);
      continue;
    }
    tree.reset();
    if (!path) return;
    PolygonHoleColl& holes = path->_polygonHoles;
    boost::shared_ptr<PolygonWithHoles2d> above = std::move(holes.back());
    holes.pop_back();
    if (holes.empty()) {
      tree = std::move(path);
      path = std::move(above);
    } else {
      tree = std::move(holes.back());
      holes.back() = std::move(above);
    }
  }
}

namespace {

constexpr const char* s_endOfNode = "]]";

template <class T>
void printOpening(std::ostream& stream, const PolygonWithHoles2d<T>& node) {
  stream << "[exterior=" << node.getExteriorPolygon() << ", holes=[";
}

}  // namespace

template <class T>
std::ostream& operator<<(std::ostream& stream, const PolygonWithHoles2d<T>& polygon) {
  // The nodes that are open and how many of their holes are printed.
  std::vector<std::pair<const PolygonWithHoles2d<T>*, std::size_t>> path{{&polygon, 0}};
  printOpening(stream, polygon);
  while (!path.empty()) {
    auto& [node, nbPrinted] = path.back();
    if (nbPrinted == node->getNbHoles()) {
      stream << s_endOfNode;
      path.pop_back();
      continue;
    }
    if (nbPrinted > 0) stream << ", ";
    const auto* hole = node->getPolygonHoles()[nbPrinted++].get();
    if (!hole) {
      stream << "null";
    } else {
      printOpening(stream, *hole);
      path.emplace_back(hole, 0);
    }
  }
  return stream;
}

template <class TOut, class TIn>
PolygonWithHoles2d<TOut> cast(const PolygonWithHoles2d<TIn>& polygon) {
  PolygonWithHoles2d<TOut> result;
  result.copyTree(polygon);
  return result;
}

template <class TOut, class TIn>
void cast(const PolygonWithHoles2d<TIn>& polygon, PolygonWithHoles2d<TOut>& result) {
  result = cast<TOut>(polygon);
}

#define ORMIX_GEOMETRY_INSTANTIATE_TREE_CAST(TOut, TIn)                                            \
  template ORMIX_GEOMETRY_API PolygonWithHoles2d<TOut> cast<TOut>(const PolygonWithHoles2d<TIn>&); \
  template ORMIX_GEOMETRY_API void cast(const PolygonWithHoles2d<TIn>&, PolygonWithHoles2d<TOut>&);
#define ORMIX_GEOMETRY_INSTANTIATE_TREE(T)                                                           \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const PolygonWithHoles2d<T>&); \
  ORMIX_GEOMETRY_INSTANTIATE_TREE_CAST(omInt32, T)                                                   \
  ORMIX_GEOMETRY_INSTANTIATE_TREE_CAST(omUInt32, T)                                                  \
  ORMIX_GEOMETRY_INSTANTIATE_TREE_CAST(omReal32, T)                                                  \
  ORMIX_GEOMETRY_INSTANTIATE_TREE_CAST(omReal64, T)
ORMIX_GEOMETRY_INSTANTIATE_TREE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_TREE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_TREE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_TREE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_TREE
#undef ORMIX_GEOMETRY_INSTANTIATE_TREE_CAST

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(, PolygonWithHoles2d)
