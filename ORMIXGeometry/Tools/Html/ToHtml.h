#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXGeometry/Tools/Html/HtmlReport.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>
#include <vector>

namespace ormix::geom {

/// Entities of the plane in one picture and those of space in one scene, each in another colour, with a table of what
/// they are and measure. toHtml() is the short way.
class ORMIX_GEOMETRY_API HtmlView {
 public:
  HtmlView();
  ~HtmlView();
  HtmlView(const HtmlView&) = delete;
  HtmlView& operator=(const HtmlView&) = delete;

  /// Adds an entity; a mesh that is no entity; what a pointer shows, or each of a collection.
  /// \throw ORMIXGeometryException, logged first, for what cannot be drawn, with a text that names it, and for null
  /// @{
  void add(const BaseGeometryEntity2d& entity);
  void add(const BaseGeometryEntity3d& entity);
  template <class T>
  void add(const TriMesh3d<T>& mesh);
  template <class T>
  void add(const FaceVertexTriMesh3d<T>& mesh) {
    add(TriMesh3d<T>(mesh));
  }
  template <class T>
  void add(const FaceVertexAdjTriMesh3d<T>& mesh) {
    add(TriMesh3d<T>(mesh));
  }
  template <class Entity>
  void add(const boost::shared_ptr<Entity>& entity) {
    checkNotNull(entity.get());
    add(*entity);
  }
  template <class Entity>
  void add(const std::vector<Entity>& entities) {
    for (const Entity& entity : entities) add(entity);
  }
  /// @}

  /// Appends the picture, the scene and the table, those that there are, to a report.
  /// \throw ORMIXGeometryException, logged first, when the entities are too far apart for a picture
  void appendTo(HtmlReport& report) const;

 private:
  static void checkNotNull(const void* pointer);
  struct Drawing;
  std::unique_ptr<Drawing> _drawing;
};

/// A page that shows entities of any classes, meshes, pointers to them and vectors of them: a picture of what is in the
/// plane and a scene of what is in space, and a table of their measures. It can be written to a file, or be the
/// `srcdoc` of a frame in a notebook.
/// \throw ORMIXGeometryException, logged first, for what cannot be drawn, as HtmlView::add()
/// @{
template <class... Entity>
std::string toHtml(const HtmlOptions& options, const Entity&... entities) {
  HtmlView view;
  (view.add(entities), ...);
  HtmlReport report(options);
  view.appendTo(report);
  return report.toHtml();
}
template <class... Entity>
std::string toHtml(const Entity&... entities) {
  return toHtml(HtmlOptions{"Entities"}, entities...);
}
/// @}

}  // namespace ormix::geom
