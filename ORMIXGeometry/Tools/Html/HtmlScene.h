#pragma once

#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>
#include <ORMIXGeometry/Tools/Svg/ColourScale.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ormix::geom {

namespace detail {
struct SceneParts;
}

/// How something of a scene looks.
struct HtmlSceneStyle {
  std::string colour = "#5b8ec4";  ///< as "#rrggbb"; of triangles, lines and points without values
  omReal64 opacity = 1;            ///< of triangles, from 0, not seen, to 1
};

/// Entities of space to be looked at from all sides in a page: see HtmlReport::addScene().
///
/// Meshes and triangles are seen as they are; spheres, ellipsoids, cylinders, cones, tori, cubes, cuboids and the
/// surfaces of shapes, or else their voxels, as triangles; bounding boxes as their edges; segments as lines, vectors as
/// lines from the origin; points as dots, circles as lines. A plan is a square as large as the rest of the scene, or of
/// side 2, and a line a segment of the same size.
///
/// Coordinates are single reals relative to the middle of each entity, so that what is far from the origin is as sharp
/// as what is near, of any magnitude.
class ORMIX_GEOMETRY_API HtmlScene {
 public:
  /// \param unit the unit of the coordinates, for the scale bar; may be empty
  explicit HtmlScene(std::string unit = {});
  ~HtmlScene();
  /// Moves the scene; the other is then as a new one without a unit.
  /// @{
  HtmlScene(HtmlScene&&) noexcept;
  HtmlScene& operator=(HtmlScene&&) noexcept;
  /// @}

  /// Adds an entity of any class. Fails, and adds nothing, when one of its numbers is not finite or the colour is not
  /// of the form "#rrggbb". Linear.
  BoolResult draw(const BaseGeometryEntity3d& entity, const HtmlSceneStyle& style = {});

  /// Adds a mesh, with one colour or with a value for each vertex, which the colours of setScale() show; between
  /// vertices values are interpolated. NaN is no value, and grey. Fails, and adds nothing, when a vertex of a triangle
  /// is not finite, an index or the number of values is wrong, or the colour is not of the form "#rrggbb". Linear.
  /// @{
  template <class T>
  BoolResult draw(const TriMesh3d<T>& mesh, const std::vector<omReal64>& values, const HtmlSceneStyle& style = {});
  template <class T>
  BoolResult draw(const TriMesh3d<T>& mesh, const HtmlSceneStyle& style = {}) {
    return draw(mesh, std::vector<omReal64>(), style);
  }
  template <class Mesh, class View = TriMesh3dOf<Mesh>>
  BoolResult draw(const Mesh& mesh, const std::vector<omReal64>& values, const HtmlSceneStyle& style = {}) {
    return draw(View(mesh), values, style);
  }
  template <class Mesh, class View = TriMesh3dOf<Mesh>>
  BoolResult draw(const Mesh& mesh, const HtmlSceneStyle& style = {}) {
    return draw(View(mesh), std::vector<omReal64>(), style);
  }
  /// @}

  /// Adds points as dots, with or without a value for each, as for meshes.
  template <class T>
  BoolResult draw(const std::vector<Point3dData<T>>& points, const std::vector<omReal64>& values = {},
                  const HtmlSceneStyle& style = {});

  /// What the values are, as "distance to the plane", in which unit, and which colours they have. Without a scale it is
  /// the one over all values.
  void setScale(std::string quantity, std::string unit, const std::optional<ColourScale>& scale = std::nullopt);

  /// Whether nothing was added.
  bool isEmpty() const;

  /// What was added, for reports; null after a move.
  const detail::SceneParts* parts() const { return _parts.get(); }

 private:
  detail::SceneParts& own();
  std::unique_ptr<detail::SceneParts> _parts;
};

}  // namespace ormix::geom
