#pragma once

#include <command/io/Documents.h>

#include <string>
#include <vector>

namespace ormix::command {

/// What several inputs hold together, in their order.
struct Contents {
  SerializationObjectPtrColl entities;       ///< entities, without meshes of files; regions of images as shapes
  geom::FaceVertexTriMesh3d<omReal64> mesh;  ///< all meshes of files as one
  std::vector<std::string> images;           ///< the bytes of images, one after the other
  bool hasRowsDownwards = false;             ///< whether y grows downwards, as in images

  /// The entities, and the mesh of the files as one of them.
  /// \throw DataError when it is none
  SerializationObjectPtrColl allEntities() const;
};

/// Adds what a document holds; the regions of an image as the region options say.
/// \throw DataError
void addTo(Contents& contents, const Arguments& arguments, const Document& document);

/// The mesh of the files, and behind it the triangles of all meshes among the entities.
/// \throw DataError for an entity that is no mesh, and when there are more triangles than a mesh holds
geom::FaceVertexTriMesh3d<omReal64> joinedMesh(const Contents& contents);

}  // namespace ormix::command
