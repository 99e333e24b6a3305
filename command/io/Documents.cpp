#include <ORMIXGeometry/Entity/2d/PointCloud/PointCloud2d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <ORMIXGeometry/Tools/Stl/StlInput.h>
#include <ORMIXGeometry/Tools/Text/RingFile.h>
#include <ORMIXSerialization/Archive/ArchiveFormat.h>
#include <ORMIXUtil/Exception/BaseException.h>
#include <command/frame/Errors.h>
#include <command/frame/Help.h>
#include <command/io/Documents.h>
#include <command/io/JsonDocuments.h>
#include <images/PngFile.h>

#include <algorithm>
#include <array>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <cstring>
#include <sstream>
#include <type_traits>

namespace ormix::command {

namespace {

using namespace geom;

constexpr std::string_view s_blanks = " \t\r\n\v\f";

bool endsWith(const std::string& path, std::string_view end) {
  return path.size() >= end.size() && path.compare(path.size() - end.size(), end.size(), end) == 0;
}

/// Whether a regular file is as long as a binary STL file with as many triangles as it declares.
bool isBinaryStl(const InputFile& input) {
  const std::string_view bytes = input.beginning();
  if (bytes.size() < 84) return false;
  omUInt64 nbTriangles = 0;
  for (std::size_t i = 0; i < 4; ++i) nbTriangles |= omUInt64(static_cast<unsigned char>(bytes[80 + i])) << (8 * i);
  return input.size() == 84 + 50 * nbTriangles;
}

/// CBOR begins with an array or a tag, and text with none of their bytes.
bool beginsAsCbor(std::string_view bytes) {
  return !bytes.empty() && static_cast<unsigned char>(bytes[0]) >= 0x80 && static_cast<unsigned char>(bytes[0]) < 0xE0;
}

/// The text from its first word on, comments left out; looks further until there is one.
std::string_view firstWords(InputFile& input) {
  while (true) {
    std::string_view text = input.beginning();
    if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
    while (true) {
      const std::size_t first = text.find_first_not_of(s_blanks);
      if (first == text.npos) text = {};
      if (text.empty()) break;
      text.remove_prefix(first);
      if (text[0] != '#') return text;
      const std::size_t end = text.find('\n');
      text.remove_prefix(end == text.npos ? text.size() : end);
    }
    if (!input.lookFurther()) return {};
  }
}

eInputFormat detectFormat(InputFile& input, eInputFormat textFormat) {
  const std::string_view bytes = input.beginning();
  if (bytes.empty()) {
    input.requireRead();
    throw DataError("it is empty");
  }
  if (isBinaryStl(input)) return eInputFormat::Mesh;
  if (images::isPng(std::string(bytes.substr(0, 8)))) return eInputFormat::Png;
  if (beginsAsCbor(bytes)) return eInputFormat::Archive;
  const bool isText =
      std::all_of(bytes.begin(), bytes.begin() + std::min<std::ptrdiff_t>(512, bytes.end() - bytes.begin()),
                  [](char c) { return static_cast<unsigned char>(c) >= ' ' || (c >= '\t' && c <= '\r'); });
  if (!isText && bytes.substr(0, 3) != "ply" && !endsWith(input.name(), ".stl"))
    throw DataError("its format is not recognised; name it by --from");
  const std::string_view words = firstWords(input);
  if (!words.empty() && words[0] == '[') return eInputFormat::Archive;
  StlInput beginning(input.beginning());
  if (!isText || findMeshFormat(beginning, "") != eMFF_StlBinary) return eInputFormat::Mesh;
  if (endsWith(input.name(), ".off")) return eInputFormat::Mesh;  // its keyword may be missing
  if (endsWith(input.name(), ".csv") || endsWith(input.name(), ".xyz")) return eInputFormat::Points;
  const bool isNumber = !words.empty() && words.find_first_of("0123456789") < 3;
  if (!isNumber && !words.empty() && textFormat != eInputFormat::Points)
    throw DataError("its format is not recognised; name it by --from");
  return textFormat;
}

const char* nameOf(eMeshFileFormat format) {
  static constexpr std::array<const char*, 7> names{
      "ASCII STL", "binary STL", "OBJ", "ASCII PLY", "binary PLY", "big-endian binary PLY", "OFF"};
  return names[format];
}

/// Says the problems of a text, the first ones each.
template <class Problems>
void complainOfLines(const Arguments& arguments, const std::string& name, const Problems& problems, std::size_t nbAll) {
  constexpr std::size_t most = 10;
  for (std::size_t i = 0; i < std::min(problems.size(), most); ++i)
    arguments.complain(name, "line " + std::to_string(problems[i].line) + ": " + problems[i].message);
  if (nbAll > most) arguments.complain(name, std::to_string(nbAll - most) + " more lines could not be read");
}

using Use = std::function<void(const Document&)>;

/// Reads all objects of one archive; of one that is damaged those before the damage.
/// \return why not all could be read
BoolResult readObjects(std::istream& stream, Document& document) {
  document.objects.clear();
  document.versions.clear();
  try {
    const std::unique_ptr<BaseIArchive> archive = openArchive(stream);
    BoolResult read = archive->state();
    while (read && archive->nextKey()) {
      const ProcessingResult<SerializationObjectPtr> object = readObject(*archive);
      read = object ? BoolResult() : failure(object.getMessage());
      if (!object) break;
      const std::string& name = object.getResult()->getClassName();
      document.objects.push_back(object.getResult());
      document.versions[name] = archive->getRegisterClassVersion(name);
    }
    return read ? archive->close() : read;
  } catch (const BaseException& error) {
    return failure(error.what());
  }
}

void readJson(const Arguments& arguments, InputFile& input, Document& document, const Use& use) {
  document.formatName = "JSON archive";
  JsonDocuments texts(input.stream());
  for (std::string text; texts.next(text);) {
    std::istringstream stream(text);
    const BoolResult read = readObjects(stream, document);
    if (!read) arguments.complain(document.name, "line " + std::to_string(texts.line()) + ": " + read.getMessage());
    if (read || !document.objects.empty()) use(document);
  }
  input.requireRead();
}

void readArchive(const Arguments& arguments, InputFile& input, Document& document, const Use& use) {
  if (!beginsAsCbor(input.beginning())) return readJson(arguments, input, document, use);
  document.formatName = "CBOR archive";
  const BoolResult read = readObjects(input.stream(), document);
  input.requireRead();
  if (!read && document.objects.empty()) throw DataError(read.getMessage());
  if (!read) arguments.complain(document.name, read.getMessage());
  use(document);
}

void readMeshFile(const Arguments& arguments, InputFile& input, Document& document) {
  const std::string path = input.path();
  document.mesh = readFaceVertexTriMesh<omReal64>(path, {}, document.meshReport);
  document.formatName = nameOf(document.meshReport.format);
  const std::string& why = document.meshReport.message;
  if (document.mesh.getNbTriangles() == 0) throw DataError(why.empty() ? "it has no triangles" : why);
  if (!why.empty()) arguments.complain(document.name, why);
}

void readRingFile(const Arguments& arguments, InputFile& input, Document& document) {
  document.formatName = "rings";
  const RingFile file = readRings(input.stream());
  complainOfLines(arguments, document.name, file.problems, file.nbProblems);
  for (const auto& ring : file.rings) document.objects.push_back(boost::make_shared<Polygon2d<omReal64>>(ring));
  input.requireRead();
  if (file.rings.empty()) throw DataError("it has no rings");
}

void readPointFile(const Arguments& arguments, InputFile& input, Document& document) {
  document.formatName = "points";
  PointText text = readPoints(input.stream());
  complainOfLines(arguments, document.name, text.problems, text.nbProblems);
  document.pointSets = std::move(text.sets);
  input.requireRead();
  if (document.pointSets.empty()) throw DataError("it has no points");
}

template <class Point, class Cloud>
SerializationObjectPtr cloudOf(const PointSet& set) {
  std::vector<Point> points(set.nbRows());
  static_assert(std::is_trivially_copyable_v<Point> && sizeof(Point) % sizeof(omReal64) == 0);
  std::memcpy(static_cast<void*>(points.data()), set.values.data(), set.values.size() * sizeof(omReal64));
  return boost::make_shared<Cloud>(points);
}

}  // namespace

const Option& fromOption() {
  // In order of eInputFormat.
  static const Option option{"from", 0, eOptionKind::Choice, "archive|mesh|rings|points|png",
                             "what files are, instead of what their contents say"};
  return option;
}

void readDocuments(const Arguments& arguments, const std::string& name, const Use& use, eInputFormat textFormat) {
  InputFile input(name);
  Document document;
  document.name = name;
  const std::vector<std::string> names = choicesOf(fromOption());
  const auto forced = std::find(names.begin(), names.end(), arguments.text("from"));
  document.format =
      forced != names.end() ? static_cast<eInputFormat>(forced - names.begin()) : detectFormat(input, textFormat);
  switch (document.format) {
    case eInputFormat::Archive:
      return readArchive(arguments, input, document, use);
    case eInputFormat::Mesh:
      readMeshFile(arguments, input, document);
      break;
    case eInputFormat::Rings:
      readRingFile(arguments, input, document);
      break;
    case eInputFormat::Points:
      readPointFile(arguments, input, document);
      break;
    case eInputFormat::Png:
      document.formatName = "PNG";
      document.image = input.readAll();
      break;
  }
  use(document);
}

SerializationObjectPtrColl entitiesOf(const Document& document) {
  SerializationObjectPtrColl entities = document.objects;
  if (document.format == eInputFormat::Mesh) {
    const auto mesh = boost::make_shared<Mesh3d<omReal64>>();
    const BoolResult converted = toMesh3d(document.mesh, *mesh);
    if (!converted) throw DataError(converted.getMessage());
    entities.push_back(mesh);
  }
  for (const PointSet& set : document.pointSets) {
    if (set.dimension != 2 && set.dimension != 3)
      throw DataError("its points have " + std::to_string(set.dimension) + " coordinates, not two or three");
    entities.push_back(set.dimension == 2 ? cloudOf<Point2dData<omReal64>, PointCloud2d<omReal64>>(set)
                                          : cloudOf<Point3dData<omReal64>, PointCloud3d<omReal64>>(set));
  }
  return entities;
}

}  // namespace ormix::command
