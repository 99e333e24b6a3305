#include <ORMIXGeometry/Tools/MeshFiles/MeshFile.h>
#include <command/frame/Errors.h>
#include <command/frame/Help.h>
#include <command/io/Formats.h>
#include <command/io/Masks.h>
#include <command/io/Outputs.h>
#include <command/io/RingText.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>
#include <set>

namespace ormix::command {

namespace {

const std::map<std::string, geom::eMeshFileFormat> s_meshFormats{
    {"stl", geom::eMFF_StlBinary},       {"stl-ascii", geom::eMFF_StlAscii}, {"obj", geom::eMFF_Obj},
    {"ply", geom::eMFF_PlyLittleEndian}, {"ply-ascii", geom::eMFF_PlyAscii}, {"off", geom::eMFF_Off}};

}  // namespace

const Option& toOption() {
  static const Option option{"to", 0, eOptionKind::Choice,
                             "cbor|json|jsonl|stl|stl-ascii|obj|ply|ply-ascii|off|rings|points|svg|png",
                             "format of the output; as the extension of its name says when not given"};
  return option;
}

std::string outputFormatOf(const Arguments& arguments) {
  if (arguments.has("to")) return arguments.text("to");
  std::string extension = std::filesystem::path(arguments.text("output")).extension().string();
  for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  const std::map<std::string, std::string> others{{".txt", "rings"}, {".csv", "points"}, {".xyz", "points"}};
  if (const auto other = others.find(extension); other != others.end()) return other->second;
  const std::vector<std::string> formats = choicesOf(toOption());
  const std::string name = extension.substr(std::min<std::size_t>(1, extension.size()));
  if (std::find(formats.begin(), formats.end(), name) != formats.end()) return name;
  throw UsageError("the format of the output is not named, neither by --to nor by the extension of --output");
}

void writeContents(const std::string& path, const std::string& format, const Contents& contents,
                   const std::optional<std::pair<std::size_t, std::size_t>>& size) {
  const bool isText = format.find("ascii") != format.npos ||
                      std::set<std::string>{"json", "jsonl", "obj", "off", "rings", "points", "svg"}.count(format) > 0;
  if (path == "-" && !isText && ::isatty(STDOUT_FILENO))
    throw UsageError("the format " + format + " is not for terminals: name a file by --output");
  if (const auto mesh = s_meshFormats.find(format); mesh != s_meshFormats.end()) {
    geom::MeshWriteOptions options;
    options.format = mesh->second;
    return writePath(path,
                     [&](const std::string& file) { return geom::writeMesh(file, joinedMesh(contents), options); });
  }
  if (format == "svg") return writeSvg(path, contents);
  if (format == "png") return writeMask(path, contents, size);
  const SerializationObjectPtrColl entities = contents.allEntities();
  if (format == "rings") return writeStream(path, [&](std::ostream& out) { return writeRings(out, entities); });
  if (format == "points") return writeStream(path, [&](std::ostream& out) { return writePoints(out, entities); });
  writeArchive(path, entities, format);
}

}  // namespace ormix::command
