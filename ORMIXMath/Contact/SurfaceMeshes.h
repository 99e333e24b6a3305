#pragma once

#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Export.h>

#include <array>
#include <cstddef>
#include <vector>

/// \file
/// The surfaces of bodies as triangles; not installed.

namespace ormix::detail {

/// A triangle by its corners.
using Corners = std::array<SpatialPoint, 3>;

/// A triangle of a surface, prepared for distances from many points.
struct SurfaceTriangle {
  Corners corners;
  Corners along;                     ///< from each corner to the next
  std::array<omReal64, 3> inverses;  ///< of the squares of their lengths; 0 where these are 0
  SpatialPoint normal;               ///< of length 1, to the side from which the corners are counter-clockwise
  omReal64 area;                     ///< above 0

  /// The distance of a point from the plane, positive on the side of the normal.
  omReal64 height(const SpatialPoint& point) const { return dot(normal, point - corners[0]); }
  /// The square of the distance of a point.
  ORMIX_MATH_API omReal64 squareTo(const SpatialPoint& point) const;
};

/// Meshes that together are the surfaces of bodies, which are to be added in ascending order of the bodies.
class SurfaceMeshes {
 public:
  /// Begins a mesh, to which triangles are added then.
  /// \param isClosed whether it has an inside
  /// \param isCavity whether the body is outside
  void begin(omUInt32 body, bool isClosed, bool isCavity) {
    _meshes.push_back({_corners.size(), body, isClosed, isCavity});
  }
  void add(const Corners& corners) { _corners.push_back(corners); }

  /// Turns each closed mesh so that the normals of its triangles point out of its body, by the sign of its volume, and
  /// multiplies all coordinates by a power of two where products of them could overflow or vanish. To be called once,
  /// before what follows.
  /// \return false when a coordinate is not finite
  ORMIX_MATH_API bool prepare();

  /// The power of two that prepare() found.
  omReal64 scale() const { return _scale; }
  /// A gap as it is to be given to functions on triangles: multiplied by the scale, no larger than what already reaches
  /// from any point to any other, and wider by the rounding of coordinates.
  ORMIX_MATH_API omReal64 scaledGap(omReal64 gap) const;

  /// The triangles of a body that have an area.
  ORMIX_MATH_API std::vector<SurfaceTriangle> triangles(omUInt32 body) const;

 private:
  struct Mesh {
    std::size_t begin;
    omUInt32 body;
    bool isClosed;
    bool isCavity;
  };

  std::size_t endOf(std::size_t mesh) const {
    return mesh + 1 < _meshes.size() ? _meshes[mesh + 1].begin : _corners.size();
  }

  std::vector<Corners> _corners;
  std::vector<Mesh> _meshes;
  omReal64 _scale = 1;
  omReal64 _largest = 0;  // of the coordinates, after scaling
};

}  // namespace ormix::detail
