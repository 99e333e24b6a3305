#pragma once

#include <ORMIXGeometry/Entity/NodeBlocks.h>

#include <algorithm>
#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <boost/smart_ptr/weak_ptr.hpp>
#include <cstddef>
#include <iterator>
#include <new>
#include <stdexcept>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace ormix::geom {

/// The holes of an entity with holes, each of which is such an entity again. A node owns its holes; each knows its
/// parent by a weak link. A hole may be null: it counts as none, but an archive refuses it.
///
/// The link to a parent is to the node that was given, and holds as long as that node lives: a hole that is no longer
/// among the parent's, because that was assigned, copied or read into, still has it. A node that is assigned, copied or
/// read into itself stays where it is in its tree, that is, keeps its own parent.
///
/// Copies are deep: the holes are copied too and have the copied nodes as parents; a new copy itself has none. Moves
/// take the holes along, and those that had the former node as their parent have the new one from then on. A node that
/// no shared pointer owns (one on the stack, say) is not seen by its holes as long as that is so: they answer the node
/// before it, if that one lives, else none.
///
/// A node that is moved into one of the nodes below it is copied instead, as that one cannot hang in itself; where
/// there is no memory for it, nothing changes. A copy, a read or an assignment that fails changes nothing either.
///
/// The holes of a copy, and those that `addHoles` makes, lie in blocks of up to 32. Each ends with its last owner; the
/// memory of a block (about 6 KB for polygons, 9 KB for meshes, without points and triangles) is given back when the
/// last of its nodes has ended and no weak pointer to any of them is left.
///
/// All operations but archives, which bound the nesting themselves, work at every depth. A node that is appended to the
/// holes of its own tree is not a tree: it is never released, and whatever walks it does not end.
///
/// `Node` derives from this; its copies, moves and destructor are the defaults.
/// `Exterior` is what a node holds besides its holes; it is cast and cleared with the tree.
template <class Node, class Exterior>
class HoleTree : public boost::enable_shared_from_this<Node> {
 public:
  using HoleColl = std::vector<boost::shared_ptr<Node>>;

  /// The node that encloses this one; empty for a root, and when the parent is gone or no shared pointer owns it.
  boost::shared_ptr<const Node> getParent() const {
    const boost::shared_ptr<Anchor> anchor = _parent.anchor.lock();
    if (anchor)
      if (boost::shared_ptr<const Node> parent = anchor->node->weak_from_this().lock()) return parent;
    return anchor && _parent.given.empty() ? anchor->given.lock() : _parent.given.lock();
  }
  /// Stores a weak link to `parent`, none when it is null. Adding this node to its holes is left to the caller. Counts
  /// as a use of both nodes: not to be called from two threads for holes of one parent.
  /// @{
  void setParent(const boost::shared_ptr<const Node>& parent) { linkTo(parent); }
  template <class Given, std::enable_if_t<std::is_same_v<Given, Node>, int> = 0>
  void setParent(const boost::shared_ptr<Given>& parent) {
    linkTo(parent);  // not made a pointer to const first, which would count twice
  }
  /// @}

  bool hasHoles() const { return !_holes.empty(); }
  std::size_t getNbHoles() const { return _holes.size(); }
  typename HoleColl::const_iterator beginHole() const { return _holes.begin(); }
  typename HoleColl::iterator beginHole() { return _holes.begin(); }
  typename HoleColl::const_iterator endHole() const { return _holes.end(); }
  typename HoleColl::iterator endHole() { return _holes.end(); }

  /// Appends so many new holes, which have this node as their parent, and returns the first of them. They are as those
  /// that are made one by one, but lie in blocks of 32, see below, which costs less.
  /// \throw std::bad_alloc, std::length_error; nothing changes then
  typename HoleColl::iterator addHoles(std::size_t nbHoles) {
    const std::size_t nbBefore = _holes.size();
    if (nbHoles > _holes.max_size() - nbBefore) throw std::length_error("HoleTree::addHoles");
    if (nbBefore + nbHoles > _holes.capacity()) _holes.reserve(std::max(nbBefore + nbHoles, 2 * _holes.capacity()));
    detail::NodeBlocks<Node> nodes(nbHoles);
    try {
      while (_holes.size() != nbBefore + nbHoles) _holes.push_back(nodes.make());
      linkHoles(nbBefore);
    } catch (const std::bad_alloc&) {
      _holes.resize(nbBefore);
      throw;
    }
    return _holes.begin() + static_cast<std::ptrdiff_t>(nbBefore);
  }

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
    takeTree(copy);
    return *this;
  }
  HoleTree& operator=(HoleTree&& other) noexcept {
    if (this == &other) return *this;
    if (!isBelow(other)) {
      takeTree(other);
      return *this;
    }
    try {
      return *this = static_cast<const HoleTree&>(other);
    } catch (const std::bad_alloc&) {
      return *this;
    }
  }
  ~HoleTree() {
    if (hasHoles()) clearHoles();
  }

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

  /// Links the holes that an archive gave, see `FieldAccess`.
  static void complete(HoleTree& read) { read.linkHoles(); }

  /// Copies `source` into this node, which has no holes. Iterative: each pair of the list is a node to fill from
  /// another.
  template <class NodeIn, class ExteriorIn>
  void copyTree(const HoleTree<NodeIn, ExteriorIn>& source) {
    std::vector<std::pair<const HoleTree<NodeIn, ExteriorIn>*, HoleTree*>> pending{{&source, this}};
    while (!pending.empty()) {
      const auto [from, to] = pending.back();
      pending.pop_back();
      cast(from->_exterior, to->_exterior);
      if (!from->hasHoles()) continue;
      to->_holes.reserve(from->_holes.size());
      detail::NodeBlocks<Node> nodes(from->_holes.size());
      for (const auto& hole : from->_holes) {
        if (!hole) {
          to->_holes.push_back(nullptr);
          continue;
        }
        const HoleTree<NodeIn, ExteriorIn>& below = *hole;
        to->_holes.push_back(nodes.make());
        HoleTree& copy = *to->_holes.back();
        if (below.hasHoles())
          pending.emplace_back(&below, &copy);
        else
          cast(below._exterior, copy._exterior);
      }
      to->linkHoles();
    }
  }

  /// Forgets the parent and the holes and clears the exterior.
  void clearTree() noexcept {
    _parent = {};
    _exterior.clear();
    clearHoles();
  }

 private:
  template <class, class>
  friend class HoleTree;

  /// Where a node's holes find it: follows it when it moves and ends with it, shared or not.
  struct Anchor {
    const HoleTree* node;
    bool isGiven;                       ///< whether a hole was given this node by `setParent`
    boost::weak_ptr<const Node> given;  ///< the first pointer that it was given by
  };

  struct ParentLink {
    boost::weak_ptr<Anchor> anchor;
    /// What to answer while no shared pointer owns the node of the anchor, which may be on the stack, where that is not
    /// what the anchor was given. Mostly empty, as each link that is not costs two locked counts.
    boost::weak_ptr<const Node> given;
  };

  const boost::shared_ptr<Anchor>& anchor() const {
    if (!_anchor) _anchor = boost::make_shared<Anchor>(Anchor{this, false, {}});
    return _anchor;
  }

  template <class Given>
  void linkTo(const boost::shared_ptr<Given>& parent) {
    if (!parent) {
      _parent = {};
      return;
    }
    const boost::shared_ptr<Anchor>& anchor = static_cast<const HoleTree&>(*parent).anchor();
    if (!anchor->isGiven) {
      anchor->isGiven = true;
      anchor->given = parent;
    }
    _parent.anchor = anchor;
    if (anchor->given.owner_equals(parent))
      _parent.given.reset();
    else
      _parent.given = parent;
  }

  /// Makes this node the parent of its holes from the given one on. Called when all are made: the anchor, which mostly
  /// has the place of a former one, then lies behind them, where malloc() keeps it and so does not give the memory
  /// before it back to the system. Made before them, it let copies that come and go take twice the time.
  void linkHoles(std::size_t first = 0) {
    if (first == _holes.size()) return;
    const ParentLink link{anchor(), {}};
    for (std::size_t hole = first; hole < _holes.size(); ++hole)
      if (_holes[hole]) static_cast<HoleTree&>(*_holes[hole])._parent = link;
  }

  /// Whether this node is somewhere below `root`. Linear in that tree for a node that may be a hole.
  bool isBelow(const HoleTree& root) const noexcept {
    const bool isRootOnly = _parent.anchor.empty() && _parent.given.empty() && this->weak_from_this().expired();
    if (isRootOnly || !root.hasHoles()) return false;
    try {
      return !visitNodes(static_cast<const Node&>(root), [this](const Node& node) { return &node != this; });
    } catch (const std::bad_alloc&) {
      // Without memory for the walk down, the links up tell it where holes have them.
      const HoleTree* node = this;
      for (boost::shared_ptr<Anchor> above; node && node != &root; node = above ? above->node : nullptr)
        above = node->_parent.anchor.lock();
      return node != nullptr;
    }
  }

  /// Replaces exterior and holes by those of `source`, which is not above this node, but may be below it: it goes with
  /// the former holes, so these are released last.
  void takeTree(HoleTree& source) noexcept {
    HoleColl released;
    released.swap(_holes);
    _exterior = std::move(source._exterior);
    takeHoles(source);
    for (auto& hole : released) release(std::move(hole));
  }

  /// Takes the holes of `source` into this node, which has none, and links those that are linked to `source` to it.
  void takeHoles(HoleTree& source) noexcept {
    _holes.swap(source._holes);
    const boost::shared_ptr<Anchor>& former = source._anchor;
    if (!former) return;
    // Nodes that are no longer among the holes of `source` may still have it as their parent, so it keeps its anchor.
    // One that nobody could be given has no such nodes, and passes its anchor on.
    const boost::weak_ptr<const Node> before = source.weak_from_this();
    const bool isKnown = former->isGiven || !before.expired();
    if (!_anchor && isKnown) {
      try {
        anchor();
      } catch (const std::bad_alloc&) {
      }
    }
    if (!_anchor) {
      _anchor.swap(source._anchor);
      _anchor->node = this;
      return;
    }
    const boost::weak_ptr<const Node> here = this->weak_from_this();
    for (const auto& hole : _holes) {
      if (!hole) continue;
      ParentLink& link = static_cast<HoleTree&>(*hole)._parent;
      if (!link.anchor.owner_equals(former)) continue;
      link.anchor = _anchor;
      if (!here.expired())
        link.given.reset();
      else if (!before.expired())
        link.given = before;
      else if (link.given.empty())
        link.given = former->given;
    }
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

  ParentLink _parent;
  Exterior _exterior;
  HoleColl _holes;
  mutable boost::shared_ptr<Anchor> _anchor;  // made when the first hole is linked
};

/// Calls `visit` with each node of a tree until it returns false: a node before its holes, holes in their order,
/// without null holes. Iterative, so that the depth of a tree is bounded by memory only; does not end for a node that
/// is its own hole. `visit` may change nodes and replace the holes of the one it is given.
/// \param root an entity with holes, const or not
/// \return whether `visit` always returned true
template <class Node, class Visit>
bool visitNodes(Node& root, Visit visit) {
  if (!visit(root)) return false;
  // The nodes on the way down that have holes left after the one that is visited, and how many they have had.
  std::vector<std::pair<Node*, std::size_t>> path;
  Node* node = &root;
  for (std::size_t next = 0;;) {
    if (next == node->getNbHoles()) {
      if (path.empty()) return true;
      std::tie(node, next) = path.back();
      path.pop_back();
      continue;
    }
    Node* const hole = node->beginHole()[static_cast<std::ptrdiff_t>(next++)].get();
    if (!hole) continue;
    if (!visit(*hole)) return false;
    if (!hole->hasHoles()) continue;
    if (next != node->getNbHoles()) path.emplace_back(node, next);
    node = hole;
    next = 0;
  }
}

/// The sum over the nodes of a tree of what `count` returns for each.
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
