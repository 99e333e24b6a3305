#include <ORMIXGeometry/Tools/MeshFiles/FileBlock.h>
#include <ORMIXGeometry/Tools/MeshFiles/MeshFormat.h>
#include <ORMIXGeometry/Tools/MeshFiles/OffFile.h>
#include <ORMIXGeometry/Tools/MeshFiles/TextLines.h>
#include <ORMIXGeometry/Tools/Stl/StlBytes.h>

#include <algorithm>

namespace ormix::geom {

namespace {

std::string lowerCaseOf(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), detail::lowerCase);
  return lower;
}

/// Whether a line of an OBJ file begins with the word; the statements of free-form surfaces are left out.
bool isObjKeyword(std::string_view word) {
  static constexpr std::array<std::string_view, 12> keywords{"v", "vt", "vn", "vp", "f",      "l",
                                                             "p", "o",  "g",  "s",  "mtllib", "usemtl"};
  return std::find(keywords.begin(), keywords.end(), word) != keywords.end();
}

}  // namespace

eMeshFileFormat findMeshFormat(StlInput& input, std::string_view path) {
  std::string bytes(std::size_t(1) << 16, '\0');
  bytes.resize(input.read(bytes.data(), bytes.size()));
  if (bytes.size() >= 84 && input.getSize() == 84 + 50 * omUInt64(detail::littleEndian(&bytes[80])))
    return eMFF_StlBinary;
  if (bytes.size() > 3 && bytes.compare(0, 3, "ply") == 0 && detail::isBlank(bytes[3])) return eMFF_PlyAscii;
  // The only control characters in text are white space.
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < '\t' || (c > '\r' && c < ' '); };
  constexpr std::size_t nbLookedAt = 512;
  if (std::any_of(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(std::min(bytes.size(), nbLookedAt)),
                  isControl))
    return eMFF_StlBinary;
  StlInput beginning(bytes);
  detail::FileBlock block(beginning);
  detail::TextLines lines(block, detail::LineContinuation::None);
  std::string_view word;
  if (lines.next() && lines.nextWord(word)) {
    const std::string stl = lowerCaseOf(word.substr(0, 5));
    if (stl == "solid" || stl == "facet") return eMFF_StlAscii;
    if (detail::isOffKeyword(word)) return eMFF_Off;
    if (isObjKeyword(word)) return eMFF_Obj;
  }
  return meshFormatOf(path) == eMFF_PlyLittleEndian ? eMFF_PlyAscii : meshFormatOf(path);
}

eMeshFileFormat meshFormatOf(std::string_view path) {
  const std::string end = lowerCaseOf(path.substr(path.size() - std::min<std::size_t>(path.size(), 4)));
  return end == ".obj" ? eMFF_Obj : end == ".ply" ? eMFF_PlyLittleEndian : end == ".off" ? eMFF_Off : eMFF_StlBinary;
}

}  // namespace ormix::geom
