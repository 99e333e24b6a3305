#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelSurfaces.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Stl/ScientificText.h>
#include <ORMIXGeometry/Tools/Stl/StlFacets.h>
#include <ORMIXGeometry/Tools/Stl/StlSave.h>
#include <ORMIXGeometry/Tools/Stl/StlTarget.h>
#include <ORMIXUtil/Version.h>

#include <functional>
#include <ostream>

namespace ormix::geom {

namespace {

void writeLine(std::ostream& stream, std::string text, const std::string& name) {
  text += name;
  text += '\n';
  stream.write(text.data(), static_cast<std::streamsize>(text.size()));
  stream.flush();
}

/// Appends the exterior meshes of the nodes of a tree; of the root only, without holes.
template <class T>
void collect(const MeshWithHoles3d<T>& root, bool withHoles, detail::StlMeshes<T>& meshes) {
  visitNodes(root, [&](const MeshWithHoles3d<T>& node) {
    meshes.push_back(&node.getExteriorMesh());
    return withHoles;
  });
}

template <class T>
detail::StlMeshes<T> meshesOf(const MeshWithHoles3d<T>& root, bool withHoles) {
  detail::StlMeshes<T> meshes;
  collect(root, withHoles, meshes);
  return meshes;
}

template <class T>
std::size_t countTriangles(const detail::StlMeshes<T>& meshes) {
  std::size_t nbTriangles = 0;
  for (const Mesh3d<T>* mesh : meshes) nbTriangles += mesh->getNbTriangles();
  return nbTriangles;
}

/// Writes the facets. The stream is left in scientific notation if there were any (intended).
template <class T>
void writeAscii(std::ostream& stream, const detail::StlMeshes<T>& meshes, const detail::StlOffsets& offsets) {
  detail::StlAsciiFacets facets(stream, scientificPrecision(stream.precision()), offsets);
  for (const Mesh3d<T>* mesh : meshes) visitTriangles(*mesh, std::ref(facets));
  facets.finish();
  if (countTriangles(meshes) != 0) stream.setf(std::ios_base::scientific, std::ios_base::floatfield);
  stream.flush();
}

template <class T>
void writeBinary(std::ostream& stream, const detail::StlMeshes<T>& meshes, const detail::StlOffsets& offsets) {
  detail::StlBinaryFacets facets(stream, offsets);
  for (const Mesh3d<T>* mesh : meshes) visitTriangles(*mesh, std::ref(facets));
  facets.finish();
  stream.flush();
}

template <class T>
BoolResult saveAscii(const std::string& path, const detail::StlMeshes<T>& meshes, const std::string& name) {
  return detail::saveStl(path, [&](std::ostream& stream) {
    writeStLAsciiHeader(stream, name);
    writeAscii(stream, meshes, detail::stlOffsets<T>(meshes));
    writeStLAsciiFooter(stream, name);
  });
}

template <class T>
BoolResult saveBinary(const std::string& path, const detail::StlMeshes<T>& meshes) {
  return detail::saveStl(path, [&](std::ostream& stream) {
    writeStLBinaryHeader(stream, countTriangles(meshes));
    writeBinary(stream, meshes, detail::stlOffsets<T>(meshes));
  });
}

using SurfaceColl = Shape3d::MeshWithHolesColl;

/// Appends the meshes of the surfaces.
/// \return whether there are triangles
bool collect(const SurfaceColl& surfaces, bool withHoles, detail::StlMeshes<omReal32>& meshes) {
  const std::size_t nbBefore = countTriangles(meshes);
  for (const auto& surface : surfaces)
    if (surface) collect(*surface, withHoles, meshes);
  return countTriangles(meshes) != nbBefore;
}

/// Saves the surfaces of shapes by `saveMeshes(meshes)`, of a shape with voxels and without triangles the faces of
/// these.
template <class Save>
BoolResult saveShapes(const std::string& path, const std::vector<const Shape3d*>& shapes, bool withHoles,
                      Save saveMeshes) {
  detail::StlMeshes<omReal32> meshes;
  std::vector<SurfaceColl> facesOfVoxels;
  for (const Shape3d* shape : shapes) {
    if (shape == nullptr || collect(shape->getMeshWithHolesColl(), withHoles, meshes) || shape->getNbVoxels() == 0)
      continue;
    try {
      facesOfVoxels.push_back(voxelSurfaces<omReal32>(shape->getRowIntersections(), eVC_26));
    } catch (const ORMIXGeometryException& exception) {
      return detail::meshFileNotWritten(path, exception.what());
    }
    collect(facesOfVoxels.back(), withHoles, meshes);
  }
  return saveMeshes(meshes);
}

std::vector<const Shape3d*> pointersTo(const std::vector<boost::shared_ptr<Shape3d>>& shapes) {
  std::vector<const Shape3d*> pointers;
  for (const auto& shape : shapes) pointers.push_back(shape.get());
  return pointers;
}

}  // namespace

void writeStLAsciiHeader(std::ostream& stream, const std::string& name) { writeLine(stream, "solid ", name); }
void writeStLAsciiFooter(std::ostream& stream, const std::string& name) { writeLine(stream, "endsolid ", name); }

void writeStLBinaryHeader(std::ostream& stream, std::size_t nbTriangles) {
  std::string header = "exported from ORMIX ";
  header += getSDKStrVersion();
  header.resize(80, '-');
  for (unsigned shift = 0; shift < 32; shift += 8) header += static_cast<char>(nbTriangles >> shift & 0xFF);
  stream.write(header.data(), static_cast<std::streamsize>(header.size()));
  stream.flush();
}

template <class T>
void writeStLAscii(std::ostream& stream, const Mesh3d<T>& mesh, omReal32 offsetX, omReal32 offsetY, omReal32 offsetZ) {
  writeAscii<T>(stream, {&mesh}, {offsetX, offsetY, offsetZ});
}

template <class T>
void writeStLBinary(std::ostream& stream, const Mesh3d<T>& mesh, omReal32 offsetX, omReal32 offsetY, omReal32 offsetZ) {
  writeBinary<T>(stream, {&mesh}, {offsetX, offsetY, offsetZ});
}

template <class T>
void writeStLAscii(std::ostream& stream, const MeshWithHoles3d<T>& mesh, bool withHoles, omReal32 offsetX,
                   omReal32 offsetY, omReal32 offsetZ) {
  writeAscii(stream, meshesOf(mesh, withHoles), {offsetX, offsetY, offsetZ});
}

template <class T>
void writeStLBinary(std::ostream& stream, const MeshWithHoles3d<T>& mesh, bool withHoles, omReal32 offsetX,
                    omReal32 offsetY, omReal32 offsetZ) {
  writeBinary(stream, meshesOf(mesh, withHoles), {offsetX, offsetY, offsetZ});
}

template <class T>
BoolResult saveToStLAscii(const std::string& path, const Mesh3d<T>& mesh, const std::string& name) {
  return saveAscii<T>(path, {&mesh}, name);
}

template <class T>
BoolResult saveToStLBinary(const std::string& path, const Mesh3d<T>& mesh) {
  return saveBinary<T>(path, {&mesh});
}

template <class T>
BoolResult saveToStLAscii(const std::string& path, const MeshWithHoles3d<T>& mesh, bool withHoles,
                          const std::string& name) {
  return saveAscii(path, meshesOf(mesh, withHoles), name);
}

template <class T>
BoolResult saveToStLBinary(const std::string& path, const MeshWithHoles3d<T>& mesh, bool withHoles) {
  return saveBinary(path, meshesOf(mesh, withHoles));
}

BoolResult saveToStLAscii(const std::string& path, const Shape3d& shape, bool withHoles, const std::string& name) {
  return saveShapes(path, {&shape}, withHoles, [&](const auto& meshes) { return saveAscii(path, meshes, name); });
}

BoolResult saveToStLBinary(const std::string& path, const Shape3d& shape, bool withHoles) {
  return saveShapes(path, {&shape}, withHoles, [&](const auto& meshes) { return saveBinary(path, meshes); });
}

BoolResult saveToStLAscii(const std::string& path, const std::vector<boost::shared_ptr<Shape3d>>& shapes,
                          bool withHoles, const std::string& name) {
  return saveShapes(path, pointersTo(shapes), withHoles,
                    [&](const auto& meshes) { return saveAscii(path, meshes, name); });
}

BoolResult saveToStLBinary(const std::string& path, const std::vector<boost::shared_ptr<Shape3d>>& shapes,
                           bool withHoles) {
  return saveShapes(path, pointersTo(shapes), withHoles, [&](const auto& meshes) { return saveBinary(path, meshes); });
}

#define ORMIX_GEOMETRY_INSTANTIATE_STL(T)                                                                             \
  template ORMIX_GEOMETRY_API void writeStLAscii(std::ostream&, const Mesh3d<T>&, omReal32, omReal32, omReal32);      \
  template ORMIX_GEOMETRY_API void writeStLBinary(std::ostream&, const Mesh3d<T>&, omReal32, omReal32, omReal32);     \
  template ORMIX_GEOMETRY_API void writeStLAscii(std::ostream&, const MeshWithHoles3d<T>&, bool, omReal32, omReal32,  \
                                                 omReal32);                                                           \
  template ORMIX_GEOMETRY_API void writeStLBinary(std::ostream&, const MeshWithHoles3d<T>&, bool, omReal32, omReal32, \
                                                  omReal32);                                                          \
  template ORMIX_GEOMETRY_API BoolResult saveToStLAscii(const std::string&, const Mesh3d<T>&, const std::string&);    \
  template ORMIX_GEOMETRY_API BoolResult saveToStLBinary(const std::string&, const Mesh3d<T>&);                       \
  template ORMIX_GEOMETRY_API BoolResult saveToStLAscii(const std::string&, const MeshWithHoles3d<T>&, bool,          \
                                                        const std::string&);                                          \
  template ORMIX_GEOMETRY_API BoolResult saveToStLBinary(const std::string&, const MeshWithHoles3d<T>&, bool);
ORMIX_GEOMETRY_INSTANTIATE_STL(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_STL(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_STL(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_STL(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_STL

}  // namespace ormix::geom
