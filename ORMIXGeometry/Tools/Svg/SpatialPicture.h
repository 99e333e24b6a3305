#pragma once

#include <ORMIXGeometry/Tools/Svg/MeshView.h>
#include <ORMIXGeometry/Tools/Svg/SharpEdges.h>

#include <array>
#include <string>
#include <vector>

/// \file
/// What pictures of space are made of; not installed.

namespace ormix::geom::detail {

/// Faces, lines and dots of space in orthographic projection, drawn from the farthest to the nearest.
class SpatialPicture {
 public:
  /// \param towardsViewer a finite direction that is not zero
  explicit SpatialPicture(const Point3dData<omReal64>& towardsViewer);

  /// Adds the triangles and the edges of a mesh with valid indices, whose triangles have an inside if it is oriented:
  /// it is darker, or omitted where the mesh is closed. Fails, and adds nothing, when a vertex of a triangle is not
  /// finite or too large, or the number of values is neither 0 nor that of the vertices.
  template <class T>
  BoolResult addMesh(const TriMesh3d<T>& mesh, const MeshViewOptions& options, bool isOriented = true);
  /// Adds a line, or a dot, of finite places.
  /// @{
  void addLine(const Point3dData<omReal64>& from, const Point3dData<omReal64>& to, const std::string& colour);
  void addDot(const Point3dData<omReal64>& place, const std::string& colour);
  /// @}

  /// Draws everything.
  BoolResult drawInto(SvgWriter& writer);

 private:
  using Point = Point3dData<omReal64>;
  using Place = Point2dData<omReal64>;

  struct Element {
    std::array<Place, 3> corners;  ///< the last ones equal where there are less than three
    omReal64 depth;                ///< the larger, the nearer
    std::string colour;
    int nbCorners;
    omReal64 width;  ///< of the line
  };

  Place project(const Point& point) const;
  omReal64 depthOf(const Point& point) const;
  Element toFace(const std::array<Point, 3>& corners, const Point& normal, const MeshViewOptions& options,
                 omReal64 value) const;

  Point _depth, _right, _up;  ///< axes of the picture in space: towards the viewer, to the right, up
  std::vector<Element> _elements;
};

}  // namespace ormix::geom::detail
