#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXMath/Moments/PlanarMoments.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

/// \file
/// Moments of what is given by points, as `nbPoints` interleaved pairs x0, y0, x1, y1, ...: the region within a ring,
/// and the points themselves.
///
/// The functions exist for T in omInt32, omUInt32, omReal32, omReal64. Every coordinate is converted to omReal64 and
/// taken relative to the first point before any other arithmetic, so that integers do not overflow and a set far from
/// (0, 0) is as exact as the same set near it. Sums of 256 terms are added with compensation. The same bits on every
/// processor. `xy` may be null when `nbPoints` is 0. O(nbPoints), nothing is allocated. Infinite and NaN coordinates
/// give moments that are not finite.

namespace ormix {

/// Moments of the region within a ring, by Green's formula, as sums over the triangles between its edges and its first
/// vertex (Steger1996); positive mass where its vertices are counter-clockwise (x to the right, y up). The edge from
/// the last vertex to the first needs not be stored. Three or fewer vertices have no moments, as they have no area by
/// ringSignedArea(). The mass is right to about epsilon · length · extent of the ring.
template <class T>
ORMIX_MATH_API PlanarMoments ringMoments(const T* xy, std::size_t nbPoints);

/// Moments of points with the mass 1 each.
template <class T>
ORMIX_MATH_API PlanarMoments pointMoments(const T* xy, std::size_t nbPoints);

namespace detail {

/// The same without vector instructions chosen at run time, as processors without these execute them. Exported so that
/// tests can compare both on one processor.
/// @{
template <class T>
ORMIX_MATH_API PlanarMoments ringMomentsPortable(const T* xy, std::size_t nbPoints);
template <class T>
ORMIX_MATH_API PlanarMoments pointMomentsPortable(const T* xy, std::size_t nbPoints);
/// @}

}  // namespace detail

// The coordinate types that exist: declared here, with `extern` for the keyword, and instantiated in the source.
#define ORMIX_MATH_POINT_MOMENTS(keyword, T)                                         \
  keyword template PlanarMoments ringMoments(const T*, std::size_t);                 \
  keyword template PlanarMoments pointMoments(const T*, std::size_t);                \
  keyword template PlanarMoments detail::ringMomentsPortable(const T*, std::size_t); \
  keyword template PlanarMoments detail::pointMomentsPortable(const T*, std::size_t);
ORMIX_MATH_POINT_MOMENTS(extern, omInt32)
ORMIX_MATH_POINT_MOMENTS(extern, omUInt32)
ORMIX_MATH_POINT_MOMENTS(extern, omReal32)
ORMIX_MATH_POINT_MOMENTS(extern, omReal64)

}  // namespace ormix
