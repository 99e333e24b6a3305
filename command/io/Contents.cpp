#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <command/frame/Errors.h>
#include <command/io/Contents.h>
#include <command/io/Outputs.h>
#include <command/io/Regions.h>

#include <boost/smart_ptr/make_shared_object.hpp>

namespace ormix::command {

namespace {

using namespace geom;

/// Appends vertices and triangles, without joining them.
void append(FaceVertexTriMesh3d<omReal64>& all, const FaceVertexTriMesh3d<omReal64>& mesh) {
  const std::size_t first = all.getNbVertices();
  for (const auto& vertex : mesh.getVertexColl()) all.addVertex(vertex);
  for (const auto& triangle : mesh.getTriangleColl())
    require(all.addTriangle(first + triangle[0], first + triangle[1], first + triangle[2]));
}

template <class T>
void appendMesh(FaceVertexTriMesh3d<omReal64>& all, const Mesh3d<T>& mesh) {
  append(all, cast<omReal64>(toFaceVertexTriMesh3d(mesh)));
}
template <class T>
void appendMesh(FaceVertexTriMesh3d<omReal64>& all, const MeshWithHoles3d<T>& mesh) {
  visitNodes(mesh, [&](const MeshWithHoles3d<T>& node) {
    appendMesh(all, node.getExteriorMesh());
    return true;
  });
}
void appendMesh(FaceVertexTriMesh3d<omReal64>& all, const Shape3d& shape) {
  for (const auto& mesh : shape.getMeshWithHolesColl())
    if (mesh) appendMesh(all, *mesh);
}

using MeshList = JoinedLists<ScalarClassList<Mesh3d, MeshWithHoles3d>, ClassList<Shape3d>>;

}  // namespace

SerializationObjectPtrColl Contents::allEntities() const {
  SerializationObjectPtrColl all = entities;
  if (mesh.isEmpty()) return all;
  const auto converted = boost::make_shared<Mesh3d<omReal64>>();
  require(toMesh3d(mesh, *converted));
  all.push_back(converted);
  return all;
}

void addTo(Contents& contents, const Arguments& arguments, const Document& document) {
  if (document.format == eInputFormat::Mesh) {
    if (contents.mesh.isEmpty())
      contents.mesh = document.mesh;
    else
      append(contents.mesh, document.mesh);
    return;
  }
  if (document.format == eInputFormat::Png) {
    for (const Region& region : regionsOf(arguments, document.image)) contents.entities.push_back(region.shape);
    contents.images.push_back(document.image);
    contents.hasRowsDownwards = true;
    return;
  }
  for (const auto& entity : entitiesOf(document)) {
    contents.hasRowsDownwards = contents.hasRowsDownwards || dynamic_cast<const Shape2d*>(entity.get());
    contents.entities.push_back(entity);
  }
}

FaceVertexTriMesh3d<omReal64> joinedMesh(const Contents& contents) {
  FaceVertexTriMesh3d<omReal64> all = contents.mesh;
  for (const auto& entity : contents.entities) {
    const auto take = [&](const auto& mesh) { return appendMesh(all, mesh), true; };
    if (!geom::detail::callTyped(MeshList(), *entity, take)) throw DataError(entity->getClassName() + " is no mesh");
  }
  if (all.getNbTriangles() == 0) throw DataError("there is no mesh");
  return all;
}

}  // namespace ormix::command
