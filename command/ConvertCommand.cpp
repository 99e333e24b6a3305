#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>
#include <command/Subcommands.h>
#include <command/frame/Errors.h>
#include <command/io/Formats.h>
#include <command/io/Outputs.h>
#include <command/io/Regions.h>

#include <boost/smart_ptr/make_shared_object.hpp>

namespace ormix::command {

namespace {

using namespace geom;

/// Replaces each shape by its polygons, in the same order; other entities stay.
void replaceShapes(SerializationObjectPtrColl& entities) {
  SerializationObjectPtrColl replaced;
  for (const auto& entity : entities) {
    const auto* const shape = dynamic_cast<const Shape2d*>(entity.get());
    if (!shape) {
      replaced.push_back(entity);
      continue;
    }
    for (const auto& polygon : shape->getPolygonWithHolesColl())
      if (polygon) replaced.push_back(boost::make_shared<PolygonWithHoles2d<omReal32>>(*polygon));
  }
  entities = std::move(replaced);
}

int run(const Arguments& arguments) {
  const std::string format = outputFormatOf(arguments), output = arguments.text("output", "-");
  std::optional<std::pair<std::size_t, std::size_t>> size;
  if (arguments.has("size")) {
    const auto [width, height] = arguments.spacing("size");
    size = {static_cast<std::size_t>(std::min(width, 2e9)), static_cast<std::size_t>(std::min(height, 2e9))};
  }
  Contents contents;
  bool isEmpty = true;
  const bool isStream = format == "jsonl" && output == "-";
  const auto write = [&] {
    if (arguments.has("polygons")) replaceShapes(contents.entities);
    writeContents(output, format, contents, size);
    contents = {};
  };
  const int status = arguments.forEachInput(arguments.inputs(), [&](const std::string& name) {
    readDocuments(arguments, name, [&](const Document& document) {
      addTo(contents, arguments, document);
      isEmpty = false;
      if (isStream) write();  // an archive as soon as it is read
    });
  });
  if (!isEmpty && !isStream) write();
  return status;
}

}  // namespace

Command convertCommand() {
  std::vector<Option> options{
      outputOption("what is written, replaced when it is complete; \"-\", the standard output, when not given"),
      toOption(),
      fromOption(),
      {"polygons", 0, eOptionKind::Flag, "",
       "write the polygons of the regions of images instead of shapes with their pixels"},
      {"size", 0, eOptionKind::Spacing, "W[,H]", "width and height of a mask; as large as it must be when not given"}};
  options.insert(options.end(), regionOptions().begin(), regionOptions().end());
  return {
      "convert",
      "[FILE...]",
      "files of one format to another: archives, meshes, rings, points, masks, pictures",
      "Writes what all files hold to one file: archives in CBOR or JSON (jsonl: one a line), meshes in STL, OBJ, PLY "
      "or "
      "OFF, rings or points as text, a picture in SVG, a mask in PNG. Several meshes become one. The regions of an "
      "image "
      "become shapes; where rings are written, their holes are rings of their own.\n\n"
      "No file is written when nothing could be read, or when the format has no place for what was read.",
      {},
      std::move(options),
      {{"ormix convert contours.txt -o contours.cbor", "Rings to an archive"},
       {"ormix convert part.stl -o part.ply", "A mesh to another format"},
       {"ormix convert --threshold otsu --polygons blobs.png -o blobs.json", "The contours of the regions of an image"},
       {"ormix convert contours.txt -o contours.png --size 150,100", "Polygons to a mask"},
       {"ormix convert --threshold otsu blobs.png --to rings | ormix measure --from rings -",
        "From pixels to rings, and on"}},
      run};
}

}  // namespace ormix::command
