#pragma once

#include <ORMIXGeometry/Tools/RTree/RTree.h>

#include <limits>

/// \file
/// Distances of indexes: of the nearest items of two, or of one. Nodes of both trees are looked at together, nearest
/// pairs first, so that the time is that of the pairs of boxes that are nearer to each other than the answer: O(log n)
/// for sets apart, O(n) for two that run along each other, O(n^2) at worst, where most boxes meet and most items do
/// not. A bound ends the search early. The tree of an index that was changed is packed anew in each call, in O(n log
/// n).
///
/// Exactly 0 where two items have a point in common, else as right as segmentsDistance() and trianglesNearestPair(). In
/// space, crossings of segments are seen exactly, too.

namespace ormix::geom {

/// Two items of indexes that are nearest, and the points of both at which their distance is taken.
/// \tparam Point Point2dData<omReal64> or Point3dData<omReal64>
template <class Point>
struct NearestItems {
  omReal64 distance;   ///< least distance, at least 0; infinite where there is none below the bound
  std::size_t indexA;  ///< of an item of the first tree; RTree::s_noItem where there is none
  std::size_t indexB;  ///< of an item of the second tree; RTree::s_noItem where there is none
  Point onA;           ///< nearest point of the item of the first tree
  Point onB;           ///< nearest point of the item of the second tree
};

namespace detail {

template <class Item>
using NearestItemsOf =
    NearestItems<std::conditional_t<RTreeItem<Item>::s_dimension == 2, Point2dData<omReal64>, Point3dData<omReal64>>>;

}  // namespace detail

/// The nearest items of two indexes. Which of several equally near pairs is answered is not specified.
/// \param bound only pairs nearer than this are looked for
/// \throw ORMIXGeometryException, logged first, when one has no items, or the bound is negative or NaN
template <class Item>
detail::NearestItemsOf<Item> nearestPair(const RTree<Item>& treeA, const RTree<Item>& treeB,
                                         omReal64 bound = std::numeric_limits<omReal64>::infinity());
/// Their distance; infinite where it is not below the bound.
template <class Item>
omReal64 distance(const RTree<Item>& treeA, const RTree<Item>& treeB,
                  omReal64 bound = std::numeric_limits<omReal64>::infinity());

/// The nearest two items of one index that are not adjacent: segments that have no end in common, triangles that have
/// no vertex in common, any two points or boxes.
/// \param bound only pairs nearer than this are looked for
/// \throw ORMIXGeometryException, logged first, when there are no items, or the bound is negative or NaN
template <class Item>
detail::NearestItemsOf<Item> nearestPair(const RTree<Item>& tree,
                                         omReal64 bound = std::numeric_limits<omReal64>::infinity());
/// Their distance; infinite where all are adjacent, or where it is not below the bound.
template <class Item>
omReal64 selfDistance(const RTree<Item>& tree, omReal64 bound = std::numeric_limits<omReal64>::infinity());

}  // namespace ormix::geom
