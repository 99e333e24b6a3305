#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Tools/Mesh/Components.h>
#include <ORMIXGeometry/Tools/Mesh/Repair.h>
#include <ORMIXGeometry/Tools/Mesh/Validation.h>
#include <command/Subcommands.h>
#include <command/frame/Errors.h>
#include <command/io/Formats.h>
#include <command/io/Outputs.h>
#include <command/io/Rows.h>
#include <images/PngFile.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <unordered_set>

namespace ormix::command {

namespace {

using namespace geom;

/// "boundary_edge" of "eMD_BoundaryEdge".
std::string nameOf(eMeshDefect kind) {
  std::string name;
  for (const char c : toString(kind).substr(4)) {
    if (std::isupper(static_cast<unsigned char>(c)) && !name.empty()) name += '_';
    name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return name;
}

void addDefects(Row& row, const MeshValidation& found) {
  row.add("defects", omUInt64(found.getNb()));
  for (std::size_t kind = 0; kind < s_nbMeshDefects; ++kind)
    if (found.counts[kind] > 0) row.add(nameOf(static_cast<eMeshDefect>(kind)), omUInt64(found.counts[kind]));
  if (found.nbBoundaryLoops > 0) row.add("boundary_loops", omUInt64(found.nbBoundaryLoops));
  if (!found.allPairsTested) row.add("all_pairs_tested", false);
}

Row rowOf(const std::string& file, const MeshDefect& defect) {
  Row row;
  row.add("file", file).add("defect", nameOf(defect.kind));
  const char* const triangles[] = {"triangle", "other_triangle"};
  const char* const vertices[] = {"vertex", "other_vertex"};
  for (std::size_t i = 0; i < 2; ++i)
    if (defect.triangles[i] != s_noIndex) row.add(triangles[i], omUInt64(defect.triangles[i]));
  for (std::size_t i = 0; i < 2; ++i)
    if (defect.vertices[i] != s_noIndex) row.add(vertices[i], omUInt64(defect.vertices[i]));
  return row.addPoint("at", {defect.place.getX(), defect.place.getY(), defect.place.getZ()});
}

/// Says what is in files and what is wrong with it.
class Inspection {
 public:
  explicit Inspection(const Arguments& arguments) : _arguments(arguments), _printer(arguments) {
    if (_arguments.has("repair") && !_arguments.has("output")) throw UsageError("--repair needs --output");
    if (_arguments.has("output") && !_arguments.has("repair")) throw UsageError("--output needs --repair");
    // Before anything is read.
    if (_arguments.has("output")) _format = outputFormatOf(_arguments);
  }

  int run() {
    const std::vector<std::string> inputs = _arguments.inputs();
    if (_arguments.has("repair") && inputs.size() > 1) throw UsageError("one file at a time can be repaired");
    const int status = _arguments.forEachInput(inputs, [&](const std::string& name) {
      readDocuments(_arguments, name, [&](const Document& document) { inspect(document); });
    });
    _printer.finish();
    return _isSound ? status : static_cast<int>(eE_Failed);
  }

 private:
  void inspect(const Document& document) {
    switch (document.format) {
      case eInputFormat::Mesh:
        return inspectMeshFile(document);
      case eInputFormat::Archive:
        return inspectArchive(document);
      case eInputFormat::Rings:
        return inspectRings(document);
      case eInputFormat::Points:
        return inspectPoints(document);
      case eInputFormat::Png:
        return inspectImage(document);
    }
  }

  void inspectMeshFile(const Document& document) {
    const MeshReport& report = document.meshReport;
    Row row = begin(document).add("bytes", report.nbBytes);
    if (report.nbSolids > 1) row.add("solids", report.nbSolids);
    if (report.nbPolygons > 0) row.add("polygons", omUInt64(report.nbPolygons));
    if (report.nbSkippedFaces > 0) row.add("skipped_faces", omUInt64(report.nbSkippedFaces));
    inspectMesh(document.name, row, TriMesh3d<omReal64>(document.mesh), report.nbSkippedFaces > 0);
    if (_arguments.has("repair")) repairMesh(document);
  }

  template <class T>
  void inspectMesh(const std::string& file, Row row, const TriMesh3d<T>& mesh, bool isIncomplete) {
    MeshValidationOptions options;
    options.maxNbListed = _arguments.count("list", 0);
    const MeshValidation found = validate(mesh, options);
    std::vector<omUInt32> labels;
    row.add("vertices", omUInt64(found.nbVertices)).add("triangles", omUInt64(found.nbTriangles));
    if (found.getNb(eMD_InvalidIndex) == 0) row.add("components", omUInt64(labelComponents(mesh, labels)));
    row.add("closed", found.getNb(eMD_BoundaryEdge) + found.getNb(eMD_NonManifoldEdge) == 0);
    addDefects(row, found);
    _printer.print(row);
    for (const MeshDefect& defect : found.defectColl) _printer.print(rowOf(file, defect));
    if (!_arguments.has("repair")) _isSound = _isSound && found.isClean() && !isIncomplete;
  }

  void repairMesh(const Document& document) {
    Contents contents;
    contents.mesh = document.mesh;
    RepairOptions options;
    options.tolerance = _arguments.real("tolerance", 0);
    RepairReport report;
    require(repair(contents.mesh, options, report));
    const std::string output = _arguments.text("output");
    writeContents(output, _format, contents);
    _isSound = _isSound && report.isClosed;
    Row row;
    row.add("file", output).add("format", _format).add("vertices", omUInt64(contents.mesh.getNbVertices()));
    row.add("triangles", omUInt64(contents.mesh.getNbTriangles())).add("closed", report.isClosed);
    row.add("area_before", report.areaBefore).add("area_after", report.areaAfter);
    row.add("volume_before", report.volumeBefore).add("volume_after", report.volumeAfter);
    std::string log;
    for (const std::string& line : report.log) log += (log.empty() ? "" : "; ") + line;
    if (output != "-") _printer.print(row.add("repair", log));
  }

  /// A row for each class, and one for each mesh.
  void inspectArchive(const Document& document) {
    if (_arguments.has("repair")) throw DataError("only files of meshes can be repaired");
    std::map<std::string, omUInt64> counts;
    for (const auto& object : document.objects) ++counts[object->getClassName()];
    if (counts.empty()) _printer.print(begin(document).add("count", omUInt64(0)));
    for (const auto& [name, count] : counts)
      _printer.print(
          begin(document).add("class", name).add("version", omUInt64(document.versions.at(name))).add("count", count));
    omUInt64 item = 0;
    for (const auto& object : document.objects) {
      ++item;
      geom::detail::callTyped(ScalarClassList<Mesh3d>(), *object, [&](const auto& mesh) {
        using Coordinate = typename std::decay_t<decltype(mesh.getVertexColl())>::value_type::CoordinateType;
        inspectMesh(document.name, begin(document).add("item", item).add("class", mesh.getClassName()),
                    TriMesh3d<Coordinate>(mesh), false);
        return true;
      });
    }
  }

  void inspectRings(const Document& document) {
    omUInt64 nbVertices = 0, nbClosed = 0, nbSmall = 0;
    for (const auto& object : document.objects) {
      const auto& ring = dynamic_cast<const Polygon2d<omReal64>&>(*object);
      nbVertices += ring.getNbPoints();
      nbClosed += isClosed(ring);
      nbSmall += ring.getNbPoints() < 3U + isClosed(ring);
    }
    Row row = begin(document).add("rings", omUInt64(document.objects.size())).add("vertices", nbVertices);
    row.add("closed_rings", nbClosed);
    if (nbSmall > 0) row.add("rings_without_area", nbSmall);
    _printer.print(row);
  }

  void inspectPoints(const Document& document) {
    for (const PointSet& set : document.pointSets)
      _printer.print(begin(document).add("columns", omUInt64(set.dimension)).add("points", omUInt64(set.nbRows())));
  }

  void inspectImage(const Document& document) {
    const images::ValueImage image = images::decodeValues(document.image);
    const std::unordered_set<omUInt16> values(image.pixels.begin(), image.pixels.end());
    const char* const kind = image.isIndexed ? "palette" : image.hasColour ? "colour" : "gray";
    _printer.print(begin(document)
                       .add("width", omUInt64(image.width))
                       .add("height", omUInt64(image.height))
                       .add("kind", std::string(kind))
                       .add("bits", omUInt64(image.nbBits))
                       .add("different_values", omUInt64(values.size())));
  }

  static Row begin(const Document& document) {
    return Row().add("file", document.name).add("format", document.formatName);
  }

  const Arguments& _arguments;
  RowPrinter _printer;
  std::string _format;
  bool _isSound = true;
};

int run(const Arguments& arguments) { return Inspection(arguments).run(); }

}  // namespace

Command inspectCommand() {
  std::vector<Option> options{
      {"list", 'l', eOptionKind::Count, "N", "list the first N defects of each kind, with their places"},
      {"repair", 'r', eOptionKind::Flag, "", "close, orient and clean the mesh of one file, and write it to --output"},
      {"tolerance", 0, eOptionKind::Length, "T",
       "repairing, join vertices of open edges that are so near; 0 when not given"},
      outputOption("where the repaired mesh is written, in the format of its extension"),
      toOption(),
      fromOption()};
  options.insert(options.end(), rowOptions().begin(), rowOptions().end());
  return {
      "inspect",
      "[FILE...]",
      "what is in files, and what is wrong with it",
      "Says the format of each file and what it holds: the classes and versions of an archive, the rings of a text, "
      "the "
      "size and kind of an image; of a mesh also every defect, by kind: open and non-manifold edges, flipped "
      "neighbours, "
      "degenerate and duplicate triangles, shells turned inside out, intersections of triangles. Lines of texts that "
      "cannot be read are named.\n\n"
      "The exit status is 1 when a mesh has a defect or anything could not be read, so that scripts can ask; with "
      "--repair, when the repaired mesh is not closed. Triangles and vertices are counted from 0.",
      {},
      std::move(options),
      {{"ormix inspect part.stl", "What is wrong with a mesh; nothing"},
       {"ormix inspect part.stl contours.txt blobs.png --format table", "What is in several files"},
       {"ormix inspect part.stl --repair -o repaired.stl", "The mesh of a solid"}},
      run};
}

}  // namespace ormix::command
