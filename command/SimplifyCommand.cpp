#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXGeometry/Tools/MeshSimplification/MeshSimplification.h>
#include <ORMIXGeometry/Transform/2d/SimplifyTransform2d.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXUtil/Exception/BaseException.h>
#include <command/Subcommands.h>
#include <command/frame/Errors.h>
#include <command/frame/Interrupt.h>
#include <command/io/Formats.h>
#include <command/io/Outputs.h>
#include <command/io/Regions.h>
#include <command/io/RingText.h>
#include <command/io/Rows.h>

#include <algorithm>
#include <boost/smart_ptr/shared_ptr.hpp>

namespace ormix::command {

namespace {

using namespace geom;

MeshSimplificationOptions optionsOf(const Arguments& arguments, std::size_t nbTriangles) {
  MeshSimplificationOptions options;
  if (arguments.has("triangles")) options.nbTriangles = static_cast<std::size_t>(arguments.count("triangles", 0));
  if (arguments.has("ratio"))
    options.nbTriangles =
        static_cast<std::size_t>(std::min(arguments.real("ratio", 1), 1.0) * static_cast<omReal64>(nbTriangles));
  if (arguments.has("error")) options.maxError = arguments.real("error", 0);
  options.placement = arguments.has("keep-vertices") ? eCP_Ends : eCP_Best;
  options.isMemoryless = arguments.has("memoryless");
  options.keepsVolume = arguments.has("keep-volume");
  options.avoidsIntersections = arguments.has("no-crossings");
  options.boundaryTolerance = arguments.real("boundary", options.boundaryTolerance);
  if (arguments.has("feature-angle")) options.featureAngle = arguments.real("feature-angle", 0) * (s_pi / 180);
  options.measuresDistances = !arguments.has("no-distances");
  return options;
}

/// Puts one simplified mesh into the place of all meshes.
Row simplifyMesh(const Arguments& arguments, const std::string& name, Contents& contents) {
  FaceVertexTriMesh3d<omReal64> mesh = joinedMesh(contents);
  MeshSimplificationOptions options = optionsOf(arguments, mesh.getNbTriangles());
  if (!options.nbTriangles && !options.maxError) throw UsageError("a mesh needs --triangles, --ratio or --error");
  MeshSimplificationReport report;
  InterruptScope scope;
  options.progress = scope.progress(name);
  const BoolResult result = MeshSimplification<omReal64>::simplify(mesh, options, &report);
  scope.finish();
  require(result);
  contents.entities.clear();
  contents.mesh = std::move(mesh);
  Row row;
  row.add("file", name).add("triangles_before", omUInt64(report.nbTrianglesBefore));
  row.add("triangles_after", omUInt64(report.nbTrianglesAfter)).add("greatest_error", report.greatestError);
  if (options.measuresDistances)
    row.add("mean_distance", std::max(report.toInput.mean, report.fromInput.mean))
        .add("greatest_distance", std::max(report.toInput.greatest, report.fromInput.greatest));
  row.add("area_before", report.areaBefore).add("area_after", report.areaAfter);
  return row.add("volume_before", report.volumeBefore).add("volume_after", report.volumeAfter);
}

/// Simplifies polygons together, so that borders that they share remain shared, or each by itself.
SerializationObjectPtrColl simplified(const SerializationObjectPtrColl& entities, omReal64 tolerance, bool isEach) {
  GeometryEntity2dPtrColl polygons;
  for (const auto& entity : entities) polygons.push_back(boost::dynamic_pointer_cast<BaseGeometryEntity2d>(entity));
  if (isEach) {
    for (auto& polygon : polygons) polygon = SimplifyTransform2d::simplify(*polygon, tolerance);
    return {polygons.begin(), polygons.end()};
  }
  try {
    polygons = SimplifyTransform2d::simplifyAll(polygons, tolerance);
  } catch (const BaseException& error) {
    throw DataError(std::string(error.what()) + "; --each simplifies each polygon by itself");
  }
  return {polygons.begin(), polygons.end()};
}

Row simplifyPolygons(const Arguments& arguments, const std::string& name, Contents& contents) {
  if (!arguments.has("tolerance")) throw UsageError("polygons need --tolerance");
  const omUInt64 nbBefore = countRingVertices(contents.entities);
  contents.entities = simplified(contents.entities, arguments.real("tolerance", 0), arguments.has("each"));
  Row row;
  row.add("file", name).add("entities", omUInt64(contents.entities.size())).add("vertices_before", nbBefore);
  return row.add("vertices_after", countRingVertices(contents.entities));
}

int run(const Arguments& arguments) {
  const std::string format = outputFormatOf(arguments), output = arguments.text("output", "-");
  const std::vector<std::string> inputs = arguments.inputs();
  if (inputs.size() > 1) throw UsageError("one file at a time can be simplified");
  RowPrinter printer(arguments);
  const int status = arguments.forEachInput(inputs, [&](const std::string& name) {
    Contents contents;
    readDocuments(arguments, name, [&](const Document& document) { addTo(contents, arguments, document); });
    const auto isPlanar = [](const auto& entity) {
      return dynamic_cast<const BaseGeometryEntity2d*>(entity.get()) != nullptr;
    };
    const bool hasPolygons = !contents.entities.empty() && contents.mesh.isEmpty() &&
                             std::all_of(contents.entities.begin(), contents.entities.end(), isPlanar);
    const Row row = hasPolygons ? simplifyPolygons(arguments, name, contents) : simplifyMesh(arguments, name, contents);
    writeContents(output, format, contents);
    if (output != "-") printer.print(row);
  });
  printer.finish();
  return status;
}

}  // namespace

Command simplifyCommand() {
  std::vector<Option> options{
      {"triangles", 'n', eOptionKind::Count, "N", "of a mesh, end when there are at most N triangles"},
      {"ratio", 0, eOptionKind::Length, "R", "the same as a part of the triangles, 0 to 1"},
      {"error", 'e', eOptionKind::Length, "E",
       "of a mesh, greatest error of a collapse, in the unit of the coordinates"},
      {"feature-angle", 0, eOptionKind::Length, "DEGREES", "keep edges that are sharper than this"},
      {"boundary", 0, eOptionKind::Length, "T", "how far boundaries may move; any way when not given"},
      {"keep-volume", 0, eOptionKind::Flag, "", "keep the volume"},
      {"keep-vertices", 0, eOptionKind::Flag, "", "use vertices of the input only"},
      {"no-crossings", 0, eOptionKind::Flag, "", "refuse what makes triangles intersect; several times as long"},
      {"memoryless", 0, eOptionKind::Flag, "",
       "measure errors from the surface as it has become; better where it is smooth"},
      {"no-distances", 0, eOptionKind::Flag, "", "do not measure how far both surfaces are from each other"},
      {"tolerance", 0, eOptionKind::Length, "T",
       "of polygons, how far a vertex that is left out may be from the edge in its place"},
      {"each", 0, eOptionKind::Flag, "", "simplify each polygon by itself, as those need it that cross others"},
      outputOption("what is written, replaced when it is complete; \"-\", the standard output, when not given"),
      toOption(),
      fromOption()};
  options.insert(options.end(), regionOptions().begin(), regionOptions().end());
  options.insert(options.end(), rowOptions().begin(), rowOptions().end());
  return {
      "simplify",
      "[FILE]",
      "meshes with fewer triangles, polygons with fewer vertices",
      "Collapses edges of a mesh, the least costly first; what is closed remains closed, and no triangle is turned. "
      "Polygons are simplified together: rings do not cross, and borders that neighbours share remain shared. Prints "
      "what was done, unless the output is printed.\n\n"
      "A bar on the terminal shows the progress. An interrupt (Ctrl-C) stops with the exit status 130, and a file that "
      "was there stays as it was.",
      {},
      std::move(options),
      {{"ormix simplify part.stl --triangles 16 -o coarse.ply", "A mesh with sixteen triangles"},
       {"ormix simplify part.stl --error 0.1 --keep-volume -o coarse.stl", "As few triangles as an error allows"},
       {"ormix simplify contours.txt --each --tolerance 0.5 -o simple.txt", "Rings with fewer vertices"},
       {"ormix simplify --threshold otsu blobs.png --tolerance 1 -o blobs.json",
        "The regions of an image with smooth outlines"}},
      run};
}

}  // namespace ormix::command
