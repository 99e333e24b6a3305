#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/Tools/MeshFiles/MeshFile.h>
#include <ORMIXGeometry/Tools/MeshFiles/ObjFile.h>
#include <ORMIXGeometry/Tools/MeshFiles/OffFile.h>
#include <ORMIXGeometry/Tools/MeshFiles/PlyFile.h>
#include <ORMIXGeometry/Tools/Stl/StlMesh.h>
#include <ORMIXGeometry/Tools/Stl/StlReader.h>
#include <ORMIXGeometry/Tools/Stl/StlSave.h>
#include <ORMIXGeometry/Tools/Stl/StlTarget.h>
#include <ORMIXGeometry/Tools/Stl/TripleTable.h>

#include <algorithm>
#include <array>
#include <boost/smart_ptr/make_shared.hpp>
#include <functional>
#include <ostream>

namespace ormix::geom {

namespace {

/// The vertices of a file in the coordinate type of the mesh, and the vertex indices of its triangles.
template <class T>
struct Contents {
  std::vector<Point3dData<T>> vertexColl;
  std::vector<omUInt32> indexColl;
};

/// Removes the degenerate and duplicate triangles that the options exclude.
void removeTriangles(const MeshReadOptions& options, std::vector<omUInt32>& indices) {
  if (!options.removesDegenerate && !options.removesDuplicate) return;
  detail::TripleTable table(options.removesDuplicate ? indices.size() / 3 * 2 : 0);
  std::size_t kept = 0;
  for (std::size_t first = 0; first < indices.size(); first += 3) {
    std::array<omUInt32, 3> corners{indices[first], indices[first + 1], indices[first + 2]};
    const bool isDegenerate = detail::hasEqualCorners(corners.data());
    if (isDegenerate && options.removesDegenerate) continue;
    if (options.removesDuplicate && !isDegenerate) {
      std::rotate(corners.begin(), std::min_element(corners.begin(), corners.end()), corners.end());
      const std::size_t nbBefore = table.getTriples().size();
      if (table.add({corners[0], corners[1], corners[2]}) < nbBefore) continue;
    }
    std::copy_n(indices.begin() + static_cast<std::ptrdiff_t>(first), 3,
                indices.begin() + static_cast<std::ptrdiff_t>(kept));
    kept += 3;
  }
  indices.resize(kept);
}

/// Copies the counts and the reason of the end to the report, with a message if the file is incomplete.
void describe(const StlTriangles& triangles, MeshReport& report) {
  report.nbSolids = triangles.nbSolids;
  report.stop = triangles.stop;
  report.stopOffset = triangles.stopOffset;
  report.stopLine = triangles.stopLine;
  // "endsolid" may be missing in ASCII files; a binary file must have the declared number of triangles.
  const bool isWhole =
      triangles.stop == eSS_EndOfSolid || (triangles.stop == eSS_EndOfFile && report.format == eMFF_StlAscii);
  if (!isWhole) report.message = detail::stopText(triangles);
}

template <class T>
Contents<T> readStl(StlInput& input, MeshReport& report) {
  StlTriangles triangles =
      report.format == eMFF_StlAscii ? readTolerantAsciiTriangles(input) : readBinaryTriangles(input, StlCount::Hint);
  describe(triangles, report);
  MergedCoords merged = removeDoubles(triangles.coordColl);
  report.nbMergedVertices = merged.indexColl.size() - merged.getNbVertices();
  return {detail::verticesOf<T>(merged), std::move(merged.indexColl)};
}

/// Copies the counts and the reason of the end to the report, with a message if not everything was read.
template <class Real>
void describe(const detail::IndexedFaces<Real>& faces, const detail::CutFaces& cut, MeshReport& report) {
  report.nbSolids = faces.nbObjects;
  report.nbPolygons = cut.nbPolygons;
  report.nbSkippedFaces = cut.nbSkipped;
  report.stop = faces.stop;
  report.stopOffset = faces.stopOffset;
  report.stopLine = faces.stopLine;
  if (!faces.why.empty())
    report.message = faces.why + detail::placeText(faces.stopOffset, faces.stopLine);
  else if (cut.nbSkipped != 0)
    report.message =
        "faces with fewer than three corners or an index without a vertex: " + std::to_string(cut.nbSkipped);
  else if (cut.nbFanned != 0)
    report.message =
        "polygons that cross themselves or have too many corners to be cut: " + std::to_string(cut.nbFanned);
}

template <class T>
Contents<T> readFaces(StlInput& input, MeshReport& report) {
  using Real = std::conditional_t<std::is_same_v<T, omReal32>, omReal32, omReal64>;
  detail::IndexedFaces<Real> faces = report.format == eMFF_Obj   ? detail::readObj<Real>(input)
                                     : report.format == eMFF_Off ? detail::readOff<Real>(input)
                                                                 : detail::readPly<Real>(input, report.format);
  detail::CutFaces cut = detail::cutFaces(faces.vertexColl, faces.faceColl);
  describe(faces, cut, report);
  Contents<T> contents;
  contents.indexColl = std::move(cut.indexColl);
  if constexpr (std::is_same_v<T, Real>) {
    contents.vertexColl = std::move(faces.vertexColl);
  } else {
    contents.vertexColl.reserve(faces.vertexColl.size());
    for (const Point3dData<Real>& vertex : faces.vertexColl) contents.vertexColl.push_back(cast<T>(vertex));
  }
  return contents;
}

/// Whether the file is a text of 16-bit characters, as its byte order mark and the zero bytes behind it say.
bool isWideText(StlInput& input) {
  std::array<char, 6> bytes{};
  const bool isLongEnough = input.read(bytes.data(), bytes.size()) == bytes.size();
  input.rewind();
  const auto begins = [&bytes](char first, char second) { return bytes[0] == first && bytes[1] == second; };
  return isLongEnough && ((begins('\xFE', '\xFF') && bytes[2] == 0 && bytes[4] == 0) ||
                          (begins('\xFF', '\xFE') && bytes[3] == 0 && bytes[5] == 0));
}

/// Reads the file, fills the report but for what becomes of the triangles, and removes those that the options exclude.
template <class T>
Contents<T> readContents(const std::string& path, const MeshReadOptions& options, MeshReport& report) {
  report = {};
  StlInput input;
  const BoolResult opened = input.open(path);
  report.nbBytes = input.getSize();
  if (!opened || report.nbBytes == 0) {
    report.message = opened ? "it is empty" : opened.getMessage();
    report.stop = opened ? eSS_EndOfFile : eSS_ReadError;
    return {};
  }
  report.format = findMeshFormat(input, path);
  input.rewind();
  if (report.format == eMFF_StlBinary && isWideText(input)) {
    report.message = "it is a text of 16-bit characters, which is not read";
    report.stop = eSS_UnexpectedWord;
    return {};
  }
  const bool isStl = report.format == eMFF_StlAscii || report.format == eMFF_StlBinary;
  Contents<T> contents = isStl ? readStl<T>(input, report) : readFaces<T>(input, report);
  report.nbVertices = contents.vertexColl.size();
  report.nbTriangles = contents.indexColl.size() / 3;
  report.defects = findDefects(report.nbVertices, contents.indexColl);
  removeTriangles(options, contents.indexColl);
  return contents;
}

/// Logs what could not be read at all.
void logFailure(const std::string& path, const MeshReport& report) {
  if (report.stop == eSS_ReadError || (report.nbKept == 0 && !report.message.empty()))
    detail::logUnreadable(path, report.message);
}

/// Writes an STL file.
template <class T>
void writeStl(std::ostream& stream, const TriMesh3d<T>& mesh, eMeshFileFormat format, const std::string& name,
              const detail::NumberFormat& numbers) {
  const auto write = [&mesh](auto facets) {
    visitTriangles(mesh, std::ref(facets));
    facets.finish();
  };
  if (format == eMFF_StlBinary) {
    writeStLBinaryHeader(stream, mesh.getNbTriangles());
    write(detail::StlBinaryFacets(stream, numbers.offsets));
    return;
  }
  writeStLAsciiHeader(stream, name);
  write(detail::StlAsciiFacets(stream, numbers.precision, numbers.offsets));
  writeStLAsciiFooter(stream, name);
}

template <class T>
BoolResult write(const std::string& path, const TriMesh3d<T>& mesh, const MeshWriteOptions& options,
                 const detail::NumberFormat& numbers) {
  const eMeshFileFormat format = options.format.value_or(meshFormatOf(path));
  return detail::saveStl(path, [&](std::ostream& stream) {
    switch (format) {
      case eMFF_Obj:
        return detail::writeObj(stream, mesh, options.name, numbers);
      case eMFF_Off:
        return detail::writeOff(stream, mesh, numbers);
      case eMFF_PlyAscii:
      case eMFF_PlyLittleEndian:
      case eMFF_PlyBigEndian:
        return detail::writePly(stream, mesh, format, numbers);
      case eMFF_StlAscii:
      case eMFF_StlBinary:
        break;
    }
    writeStl(stream, mesh, format, options.name, numbers);
  });
}

/// How the coordinates of a mesh are written.
template <class T, class Mesh>
detail::NumberFormat numberFormat(const Mesh& mesh, const MeshWriteOptions& options) {
  detail::NumberFormat numbers;
  numbers.precision = options.hasShortestDigits ? detail::s_shortestDigits : 6;
  numbers.isMoved = options.movesToPositiveOctant;
  if (numbers.isMoved) numbers.offsets = detail::stlOffsets<T>(std::vector<const Mesh*>{&mesh});
  return numbers;
}

}  // namespace

template <class T>
boost::shared_ptr<Mesh3d<T>> readMesh(const std::string& path, const MeshReadOptions& options, MeshReport& report) {
  auto mesh = boost::make_shared<Mesh3d<T>>();
  Contents<T> contents = readContents<T>(path, options, report);
  MeshTopology::IndexColl ownerColl;
  const BoolResult built =
      mesh->build(std::move(contents.vertexColl), std::move(contents.indexColl), eNMP_OwnVertices, &ownerColl);
  if (!built) report.message = built.getMessage();
  report.nbKept = mesh->getNbTriangles();
  report.nbSeparated = ownerColl.size();
  logFailure(path, report);
  return mesh;
}

template <class T>
boost::shared_ptr<Mesh3d<T>> readMesh(const std::string& path) {
  MeshReport report;
  return readMesh<T>(path, {}, report);
}

template <class T>
FaceVertexTriMesh3d<T> readFaceVertexTriMesh(const std::string& path, const MeshReadOptions& options,
                                             MeshReport& report) {
  FaceVertexTriMesh3d<T> mesh;
  Contents<T> contents = readContents<T>(path, options, report);
  std::vector<IndexTriangle> triangles(contents.indexColl.size() / 3);
  for (std::size_t at = 0; at < contents.indexColl.size(); ++at) triangles[at / 3][at % 3] = contents.indexColl[at];
  const BoolResult built = mesh.build(std::move(contents.vertexColl), std::move(triangles));
  if (!built) report.message = built.getMessage();
  report.nbKept = mesh.getNbTriangles();
  logFailure(path, report);
  return mesh;
}

template <class T>
BoolResult writeMesh(const std::string& path, const Mesh3d<T>& mesh, const MeshWriteOptions& options) {
  return write(path, TriMesh3d<T>(mesh), options, numberFormat<T>(mesh, options));
}

template <class T>
BoolResult writeMesh(const std::string& path, const FaceVertexTriMesh3d<T>& mesh, const MeshWriteOptions& options) {
  return write(path, TriMesh3d<T>(mesh), options, numberFormat<T>(mesh, options));
}

#define ORMIX_GEOMETRY_INSTANTIATE_MESH_FILE(T)                                                                        \
  template ORMIX_GEOMETRY_API boost::shared_ptr<Mesh3d<T>> readMesh(const std::string&, const MeshReadOptions&,        \
                                                                    MeshReport&);                                      \
  template ORMIX_GEOMETRY_API boost::shared_ptr<Mesh3d<T>> readMesh(const std::string&);                               \
  template ORMIX_GEOMETRY_API FaceVertexTriMesh3d<T> readFaceVertexTriMesh(const std::string&, const MeshReadOptions&, \
                                                                           MeshReport&);                               \
  template ORMIX_GEOMETRY_API BoolResult writeMesh(const std::string&, const Mesh3d<T>&, const MeshWriteOptions&);     \
  template ORMIX_GEOMETRY_API BoolResult writeMesh(const std::string&, const FaceVertexTriMesh3d<T>&,                  \
                                                   const MeshWriteOptions&);
ORMIX_GEOMETRY_INSTANTIATE_MESH_FILE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_MESH_FILE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_MESH_FILE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_MESH_FILE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_MESH_FILE

}  // namespace ormix::geom
