#pragma once

#include <algorithm>
#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <boost/smart_ptr/weak_ptr.hpp>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace ormix::geom {

/// The holes of an entity with holes, each of which is such an entity again. A node owns its holes; each knows its
/// parent by a weak link. A hole may be null: it counts as none, but an archive refuses it.
///
/// Copies are deep: the holes are copied too and have the copied nodes as parents. Moves take the holes along, which
/// have the new place as their parent from then on. A new copy itself has no parent; a node that is assigned, copied or
/// read into stays where it is in its tree, that is, keeps its own parent. A parent that no shared pointer owns (one on
/// the stack, say) is not seen by its holes as long as that is so.
///
/// All operations but archives, which bound the nesting themselves, work at every depth. A node that is made its own
/// hole, directly or not, is not a tree: it is never released, and whatever walks it does not end.
///
/// `Node` derives from this; its copies, moves and destructor are the defaults, and its `read` calls `linkHoles`.
/// `Exterior` is what a node holds besides its holes; it is cast and cleared with the tree.
template <class Node, class Exterior>
class HoleTree : public boost::enable_shared_from_this<Node> {
 public:
  using HoleColl = std::vector<boost::shared_ptr<Node>>;

  /// The node that encloses this one; empty for a root, and when the parent is gone or no shared pointer owns it.
  boost::shared_ptr<const Node> getParent() const {
    const boost::shared_ptr<Anchor> anchor = _parent.lock();
    return anchor ? (*anchor)->weak_from_this().lock() : nullptr;
  }
  /// Stores a weak link to `parent`, none when it is null. Adding this node to its holes is left to the caller. Counts
  /// as a use of both nodes: not to be called from two threads for holes of one parent.
  void setParent(const boost::shared_ptr<const Node>& parent) {
    if (parent)
      _parent = static_cast<const HoleTree&>(*parent).anchor();
    else
      _parent.reset();
  }

  bool hasHoles() const { return !_holes.empty(); }
  std::size_t getNbHoles() const { return _holes.size(); }
  typename HoleColl::const_iterator beginHole() const { return _holes.begin(); }
  typename HoleColl::iterator beginHole() { return _holes.begin(); }
  typename HoleColl::const_iterator endHole() const { return _holes.end(); }
  typename HoleColl::iterator endHole() { return _holes.end(); }

 protected:
  HoleTree() = default;
  HoleTree(const HoleTree& other) : boost::enable_shared_from_this<Node>(other) { copyTree(other); }
  HoleTree(HoleTree&& other) noexcept
      : boost::enable_shared_from_this<Node>(other), _exterior(std::move(other._exterior)) {
    takeHoles(other);
  }
  /// \param other may be one of the holes below, of a move too
  HoleTree& operator=(const HoleTree& other) {
    if (this == &other) return *this;
    Node copy(static_cast<const Node&>(other));
    return *this = static_cast<HoleTree&&>(copy);
  }
  HoleTree& operator=(HoleTree&& other) noexcept {
    if (this == &other) return *this;
    // Taken out first, as `other` may be one of the holes that are released here.
    Node staged(static_cast<Node&&>(other));
    clearHoles();
    _anchor.reset();
    _exterior = std::move(staged._exterior);
    takeHoles(staged);
    return *this;
  }
  ~HoleTree() { clearHoles(); }

  const Exterior& exterior() const { return _exterior; }
  Exterior& exterior() { return _exterior; }
  const HoleColl& holes() const { return _holes; }
  HoleColl& holes() { return _holes; }

  /// Releases every hole; one that others own too lives on, with its own holes.
  void clearHoles() noexcept {
    HoleColl released;
    released.swap(_holes);
    for (auto& hole : released) release(std::move(hole));
  }

  /// Makes this node the parent of its holes.
  void linkHoles() {
    for (const auto& hole : _holes)
      if (hole) static_cast<HoleTree&>(*hole)._parent = anchor();
  }

  /// Copies `source` into this node, which has no holes. Iterative: each pair of the list is a node to fill from
  /// another.
  template <class NodeIn, class ExteriorIn>
  void copyTree(const HoleTree<NodeIn, ExteriorIn>& source) {
    std::vector<std::pair<const HoleTree<NodeIn, ExteriorIn>*, HoleTree*>> pending{{&source, this}};
    while (!pending.empty()) {
      const auto [from, to] = pending.back();
      pending.pop_back();
      cast(from->_exterior, to->_exterior);
      to->_holes.reserve(from->_holes.size());
      for (const auto& hole : from->_holes) {
        to->_holes.push_back(hole ? boost::make_shared<Node>() : nullptr);
        if (hole) pending.emplace_back(hole.get(), to->_holes.back().get());
      }
      to->linkHoles();
    }
  }

  /// Forgets the parent and the holes and clears the exterior.
  void clearTree() noexcept {
    _parent.reset();
    _exterior.clear();
    clearHoles();
  }

 private:
  template <class, class>
  friend class HoleTree;

  /// Where a node's holes find it: follows the node when it moves and ends with it, shared or not.
  using Anchor = const HoleTree*;

  const boost::shared_ptr<Anchor>& anchor() const {
    if (!_anchor) _anchor = boost::make_shared<Anchor>(this);
    return _anchor;
  }

  /// Takes the holes of `source` into this node, which has none and is not a parent yet.
  void takeHoles(HoleTree& source) noexcept {
    _holes.swap(source._holes);
    _anchor.swap(source._anchor);
    if (_anchor) *_anchor = this;
  }

  // Destroys what nobody else owns from the leaves upwards, without recursion and without memory of its own: the nodes
  // on the way back to the top are chained, each holding the link to the one above in the place of its last hole.
  static void release(boost::shared_ptr<Node> tree) noexcept {
    boost::shared_ptr<Node> path;
    for (;;) {
      if (tree && tree->hasHoles() && tree.use_count() == 1) {
        static_cast<HoleTree&>(*tree)._holes.back().swap(path);
        path.swap(tree);
        continue;
      }
      tree.reset();
      if (!path) return;
      HoleColl& holes = static_cast<HoleTree&>(*path)._holes;
      boost::shared_ptr<Node> above = std::move(holes.back());
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

  boost::weak_ptr<Anchor> _parent;
  Exterior _exterior;
  HoleColl _holes;
  mutable boost::shared_ptr<Anchor> _anchor;  // made when the first hole is linked
};

/// Calls `visit` with each node of a tree until it answers false: a node before its holes, holes in their order, null
/// holes left out. Iterative, so that the depth of a tree is bounded by memory only; a node that is its own hole never
/// ends.
/// \param root an entity with holes, const or not; `visit` may change nodes and replace the holes of the one it is
/// given \return whether `visit` always answered true
template <class Node, class Visit>
bool visitNodes(Node& root, Visit visit) {
  if (!visit(root)) return false;
  if (!root.hasHoles()) return true;
  std::vector<Node*> pending;
  const auto pushHoles = [&pending](Node& node) {
    const auto first = static_cast<std::ptrdiff_t>(pending.size());
    for (auto hole = node.beginHole(); hole != node.endHole(); ++hole)
      if (*hole) pending.push_back(hole->get());
    std::reverse(pending.begin() + first, pending.end());
  };
  pushHoles(root);
  while (!pending.empty()) {
    Node& node = *pending.back();
    pending.pop_back();
    if (!visit(node)) return false;
    pushHoles(node);
  }
  return true;
}

/// The sum over the nodes of a tree of what `count` answers for each.
template <class Node, class Count>
std::size_t sumOverNodes(const Node& root, Count count) {
  std::size_t sum = 0;
  visitNodes(root, [&](const Node& node) {
    sum += count(node);
    return true;
  });
  return sum;
}

}  // namespace ormix::geom
