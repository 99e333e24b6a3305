#pragma once

#include <algorithm>
#include <atomic>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstddef>
#include <new>

/// \file
/// Memory for several nodes of a tree at once.

namespace ormix::geom::detail {

/// Makes nodes that are shared one by one, as those of make_shared() are, and lie in blocks: one allocation for up to
/// 32 of them. A node ends with its last owner; its place is given back with all others of its block, so that what
/// outlives them, if only as a weak pointer, holds the memory of at most 32 nodes, and nothing of their contents.
template <class Node>
class NodeBlocks {
 public:
  /// \param nbNodes how many nodes are to come, at most
  explicit NodeBlocks(std::size_t nbNodes) : _nbToCome(nbNodes) {}
  ~NodeBlocks() {
    if (_block) _block->release(_block->nbPlaces - _block->nbMade);
  }
  NodeBlocks(const NodeBlocks&) = delete;
  NodeBlocks& operator=(const NodeBlocks&) = delete;

  /// A new node, as its default constructor makes it.
  /// \throw std::bad_alloc
  boost::shared_ptr<Node> make() {
    if (!_block) _block = Block::make(std::min(_nbToCome, s_nbInBlock));
    boost::shared_ptr<Node> node(new (_block->next().node) Node(), End(), CountMemory<char>(_block));
    --_nbToCome;
    if (++_block->nbMade == _block->nbPlaces) _block = nullptr;
    return node;
  }

 private:
  static constexpr std::size_t s_nbInBlock = 32;

  struct Place {
    /// The counts of the pointers to the node, which Boost makes of what it is given: a table of functions, two counts,
    /// a pointer, a deleter and an allocator.
    alignas(std::max_align_t) unsigned char counts[5 * sizeof(void*)];
    alignas(Node) unsigned char node[sizeof(Node)];
  };

  struct Block {
    std::atomic<std::size_t> nbHeld;  ///< places that are not given back
    std::size_t nbPlaces;
    std::size_t nbMade = 0;

    explicit Block(std::size_t nb) : nbHeld(nb), nbPlaces(nb) {}
    static Block* make(std::size_t nb) { return new (::operator new(s_headSize + nb * sizeof(Place))) Block(nb); }
    Place& next() {
      return *reinterpret_cast<Place*>(reinterpret_cast<unsigned char*>(this) + s_headSize + nbMade * sizeof(Place));
    }
    void release(std::size_t nb) noexcept {
      if (nbHeld.fetch_sub(nb, std::memory_order_acq_rel) == nb) ::operator delete(this);
    }
  };
  static constexpr std::size_t s_headSize =
      (sizeof(Block) + alignof(std::max_align_t) - 1) / alignof(std::max_align_t) * alignof(std::max_align_t);

  struct End {
    void operator()(Node* node) const { node->Node::~Node(); }  // qualified: its class is known
  };

  /// The allocator of the counts, which end after their node and give back its place.
  template <class T>
  struct CountMemory {
    using value_type = T;
    Block* block;

    explicit CountMemory(Block* b) : block(b) {}
    template <class U>
    CountMemory(const CountMemory<U>& other) : block(other.block) {}
    T* allocate(std::size_t) {
      static_assert(sizeof(T) <= sizeof(Place::counts) && alignof(T) <= alignof(Place));
      return reinterpret_cast<T*>(block->next().counts);
    }
    void deallocate(T*, std::size_t) noexcept { block->release(1); }
    template <class U>
    bool operator==(const CountMemory<U>& other) const {
      return block == other.block;
    }
    template <class U>
    bool operator!=(const CountMemory<U>& other) const {
      return block != other.block;
    }
  };

  static_assert(alignof(Node) <= alignof(std::max_align_t));

  Block* _block = nullptr;  ///< one that has places left
  std::size_t _nbToCome;
};

}  // namespace ormix::geom::detail
