#include <ORMIXGeometry/ORMIXGeometryLogger.h>
#include <ORMIXGeometry/Tools/Stl/StlLoad.h>
#include <ORMIXGeometry/Tools/Stl/StlMesh.h>
#include <ORMIXGeometry/Tools/Stl/StlReader.h>

#include <boost/smart_ptr/make_shared.hpp>

namespace ormix::geom {

void detail::logUnreadable(const std::string& path, const std::string& why) {
  logMessage(getORMIXGeometryLogger(), s_errorLogLevel, "Cannot read a mesh from \"" + path + "\": " + why);
}

std::string detail::placeText(omUInt64 offset, omUInt64 line) {
  return ", at byte " + std::to_string(offset) + (line != 0 ? " (line " + std::to_string(line) + ")" : "");
}

std::string detail::stopText(const StlTriangles& triangles) {
  static constexpr std::array<const char*, 7> texts{
      "all was read",
      "it ends between two triangles",
      "it ends inside a triangle",
      "a coordinate is no number",
      "a word has no place there",
      "it has more triangles than a mesh can hold",
      "reading failed",
  };
  return texts[triangles.stop] + placeText(triangles.stopOffset, triangles.stopLine);
}

namespace {

/// Opens a file that is not empty; logs the reason and returns false when this is not possible.
bool openStl(const std::string& path, StlInput& input) {
  BoolResult opened = input.open(path);
  if (opened && input.getSize() == 0) opened = failure("it is empty");
  if (!opened) detail::logUnreadable(path, opened.getMessage());
  return static_cast<bool>(opened);
}

/// The mesh of the triangles with equal vertices merged; logs errors of reading and building.
template <class T>
boost::shared_ptr<Mesh3d<T>> meshOf(StlTriangles triangles, const std::string& path) {
  auto mesh = boost::make_shared<Mesh3d<T>>();
  if (triangles.stop == eSS_TooMany || triangles.stop == eSS_ReadError)
    detail::logUnreadable(path, detail::stopText(triangles));
  if (triangles.coordColl.empty()) return mesh;
  MergedCoords merged = removeDoubles(triangles.coordColl);
  triangles.coordColl = {};
  MeshTopology::IndexColl ownerColl;
  const BoolResult built = detail::buildMesh(merged, *mesh, ownerColl);
  if (!built) detail::logUnreadable(path, built.getMessage());
  return mesh;
}

}  // namespace

bool stlFileHasASCIIFormat(const std::string& path) {
  StlInput input;
  return input.open(path) && hasStlAsciiFormat(input);
}

template <class T>
boost::shared_ptr<Mesh3d<T>> readFromStLFile(const std::string& path) {
  StlInput input;
  if (!openStl(path, input)) return boost::make_shared<Mesh3d<T>>();
  const bool isAscii = hasStlAsciiFormat(input);
  input.rewind();
  return meshOf<T>(isAscii ? readAsciiTriangles(input) : readBinaryTriangles(input), path);
}

template <class T>
boost::shared_ptr<Mesh3d<T>> readStLAscii(const std::string& path) {
  StlInput input;
  return openStl(path, input) ? meshOf<T>(readAsciiTriangles(input), path) : boost::make_shared<Mesh3d<T>>();
}

template <class T>
boost::shared_ptr<Mesh3d<T>> readStLBinary(const std::string& path) {
  StlInput input;
  return openStl(path, input) ? meshOf<T>(readBinaryTriangles(input), path) : boost::make_shared<Mesh3d<T>>();
}

#define ORMIX_GEOMETRY_INSTANTIATE_STL(T)                                                       \
  template ORMIX_GEOMETRY_API boost::shared_ptr<Mesh3d<T>> readFromStLFile(const std::string&); \
  template ORMIX_GEOMETRY_API boost::shared_ptr<Mesh3d<T>> readStLAscii(const std::string&);    \
  template ORMIX_GEOMETRY_API boost::shared_ptr<Mesh3d<T>> readStLBinary(const std::string&);
ORMIX_GEOMETRY_INSTANTIATE_STL(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_STL(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_STL(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_STL(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_STL

}  // namespace ormix::geom
