#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/Tools/Stl/MeshFile.h>
#include <ORMIXGeometry/Tools/Stl/ScientificText.h>
#include <ORMIXGeometry/Tools/Stl/StlBytes.h>
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

/// Detects the format: binary if the declared number of triangles agrees with the size of the file; otherwise ASCII if
/// the first bytes are text that begins with "solid" or "facet".
eMeshFileFormat findFormat(StlInput& input) {
  std::string bytes(512, '\0');
  bytes.resize(input.read(bytes.data(), bytes.size()));
  if (bytes.size() >= 84 && input.getSize() == 84 + 50 * omUInt64(detail::littleEndian(&bytes[80])))
    return eMFF_StlBinary;
  // The only control characters in text are white space.
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < '\t' || (c > '\r' && c < ' '); };
  if (std::any_of(bytes.begin(), bytes.end(), isControl)) return eMFF_StlBinary;
  if (bytes.compare(0, 3, "\xEF\xBB\xBF") == 0) bytes.erase(0, 3);
  bytes.erase(0, bytes.find_first_not_of(" \t\r\n\v\f"));
  bytes.resize(std::min<std::size_t>(bytes.size(), 5));
  std::transform(bytes.begin(), bytes.end(), bytes.begin(), detail::lowerCase);
  return bytes == "solid" || bytes == "facet" ? eMFF_StlAscii : eMFF_StlBinary;
}

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
  report.nbTriangles = triangles.getNbTriangles();
  report.stop = triangles.stop;
  report.stopOffset = triangles.stopOffset;
  report.stopLine = triangles.stopLine;
  // "endsolid" may be missing in ASCII files; a binary file must have the declared number of triangles.
  const bool isWhole =
      triangles.stop == eSS_EndOfSolid || (triangles.stop == eSS_EndOfFile && report.format == eMFF_StlAscii);
  if (!isWhole) report.message = detail::stopText(triangles);
}

/// Merges equal vertices, analyses the triangles and builds the mesh and the rest of the report.
template <class T>
void build(StlTriangles triangles, const MeshReadOptions& options, Mesh3d<T>& mesh, MeshReport& report) {
  MergedCoords merged = removeDoubles(triangles.coordColl);
  triangles.coordColl = {};
  report.nbVertices = merged.getNbVertices();
  report.nbMergedVertices = merged.indexColl.size() - report.nbVertices;
  report.defects = findDefects(report.nbVertices, merged.indexColl);
  removeTriangles(options, merged.indexColl);
  MeshTopology::IndexColl ownerColl;
  const BoolResult built = detail::buildMesh(merged, mesh, ownerColl);
  if (!built) report.message = built.getMessage();
  report.nbKept = mesh.getNbTriangles();
  report.nbSeparated = ownerColl.size();
}

}  // namespace

template <class T>
boost::shared_ptr<Mesh3d<T>> readMesh(const std::string& path, const MeshReadOptions& options, MeshReport& report) {
  report = {};
  auto mesh = boost::make_shared<Mesh3d<T>>();
  StlInput input;
  const BoolResult opened = input.open(path);
  report.nbBytes = input.getSize();
  if (!opened || report.nbBytes == 0) {
    report.message = opened ? "it is empty" : opened.getMessage();
    report.stop = opened ? eSS_EndOfFile : eSS_ReadError;
  } else {
    report.format = findFormat(input);
    input.rewind();
    StlTriangles triangles =
        report.format == eMFF_StlAscii ? readTolerantAsciiTriangles(input) : readBinaryTriangles(input, StlCount::Hint);
    describe(triangles, report);
    build(std::move(triangles), options, *mesh, report);
  }
  if (report.stop == eSS_ReadError || (mesh->getNbTriangles() == 0 && !report.message.empty()))
    detail::logUnreadable(path, report.message);
  return mesh;
}

template <class T>
boost::shared_ptr<Mesh3d<T>> readMesh(const std::string& path) {
  MeshReport report;
  return readMesh<T>(path, {}, report);
}

template <class T>
BoolResult writeMesh(const std::string& path, const Mesh3d<T>& mesh, const MeshWriteOptions& options) {
  return detail::saveStl(path, [&](std::ostream& stream) {
    const detail::StlOffsets offsets =
        options.movesToPositiveOctant ? detail::stlOffsets<T>({&mesh}) : detail::StlOffsets{};
    if (options.format == eMFF_StlBinary) {
      writeStLBinaryHeader(stream, mesh.getNbTriangles());
      writeStLBinary(stream, mesh, offsets[0], offsets[1], offsets[2]);
      return;
    }
    writeStLAsciiHeader(stream, options.name);
    detail::StlAsciiFacets facets(stream, options.hasShortestDigits ? detail::s_shortestDigits : 6, offsets);
    visitTriangles(mesh, std::ref(facets));
    facets.finish();
    writeStLAsciiFooter(stream, options.name);
  });
}

#define ORMIX_GEOMETRY_INSTANTIATE_MESH_FILE(T)                                                                 \
  template ORMIX_GEOMETRY_API boost::shared_ptr<Mesh3d<T>> readMesh(const std::string&, const MeshReadOptions&, \
                                                                    MeshReport&);                               \
  template ORMIX_GEOMETRY_API boost::shared_ptr<Mesh3d<T>> readMesh(const std::string&);                        \
  template ORMIX_GEOMETRY_API BoolResult writeMesh(const std::string&, const Mesh3d<T>&, const MeshWriteOptions&);
ORMIX_GEOMETRY_INSTANTIATE_MESH_FILE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_MESH_FILE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_MESH_FILE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_MESH_FILE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_MESH_FILE

}  // namespace ormix::geom
