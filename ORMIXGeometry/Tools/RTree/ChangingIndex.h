#pragma once

#include <ORMIXMath/Index/IndexBox.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

/// \file
/// A tree of boxes that can change; not installed.

namespace ormix::geom::detail {

using ormix::detail::IndexBox;
using ormix::detail::IndexPoint;

/// The R*-tree of Boost.Geometry (Beckmann1990), whose headers stay in the source. After an operation that ran out of
/// memory it must not be used any more, but be destroyed.
template <std::size_t D>
class ChangingIndex {
 public:
  /// A box that is nearest and the square of its distance.
  struct Near {
    std::size_t item;
    omReal64 square;
  };

  /// Of the boxes that are not empty, packed.
  explicit ChangingIndex(const std::vector<IndexBox<D>>& boxes);
  ChangingIndex(const ChangingIndex& other);
  ~ChangingIndex();

  /// Empty boxes are passed over.
  /// @{
  void insert(const IndexBox<D>& box, std::size_t item);
  void remove(const IndexBox<D>& box, std::size_t item);
  /// @}

  IndexBox<D> envelope() const;
  /// Calls `visit(item)` for each box that meets one, until it answers false.
  /// \return false if it did
  bool visitIntersecting(const IndexBox<D>& box, const std::function<bool(std::size_t)>& visit) const;
  /// The boxes that are nearest to a point, nearest first: `nb` of them or all.
  std::vector<Near> nearest(const IndexPoint<D>& point, std::size_t nb) const;

 private:
  struct Tree;
  std::unique_ptr<Tree> _tree;
};

}  // namespace ormix::geom::detail
