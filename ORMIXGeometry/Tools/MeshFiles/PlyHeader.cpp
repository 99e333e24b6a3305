#include <ORMIXGeometry/Tools/MeshFiles/PlyHeader.h>

#include <algorithm>
#include <array>

namespace ormix::geom::detail {

namespace {

struct NamedType {
  std::string_view name, otherName;
  std::size_t size;
};

/// In order of PlyType.
constexpr std::array<NamedType, 10> s_types{{{"char", "int8", 1},
                                             {"uchar", "uint8", 1},
                                             {"short", "int16", 2},
                                             {"ushort", "uint16", 2},
                                             {"int", "int32", 4},
                                             {"uint", "uint32", 4},
                                             {"long", "int64", 8},
                                             {"ulong", "uint64", 8},
                                             {"float", "float32", 4},
                                             {"double", "float64", 8}}};

PlyType typeOf(std::string_view word) {
  const auto found = std::find_if(s_types.begin(), s_types.end(),
                                  [&](const NamedType& type) { return word == type.name || word == type.otherName; });
  return static_cast<PlyType>(found - s_types.begin());
}

PlyRole roleOf(std::string_view element, std::string_view property, bool isList) {
  if (element == "face" && isList && (property == "vertex_indices" || property == "vertex_index"))
    return PlyRole::Corners;
  if (element != "vertex" || isList) return PlyRole::Other;
  return property == "x" ? PlyRole::X : property == "y" ? PlyRole::Y : property == "z" ? PlyRole::Z : PlyRole::Other;
}

std::string readFormat(TextLines& lines, PlyHeader& header) {
  std::string_view word;
  lines.nextWord(word);
  if (word == "ascii")
    header.format = eMFF_PlyAscii;
  else if (word == "binary_little_endian")
    header.format = eMFF_PlyLittleEndian;
  else if (word == "binary_big_endian")
    header.format = eMFF_PlyBigEndian;
  else
    return "its header has no format that is known";
  return {};
}

std::string readElement(TextLines& lines, PlyHeader& header) {
  PlyElement element;
  std::string_view word;
  omInt64 nbRecords = 0;
  if (!lines.nextWord(word) || !lines.nextInteger(nbRecords) || nbRecords < 0)
    return "an element of its header has no number of records";
  element.name = word;
  element.nbRecords = static_cast<omUInt64>(nbRecords);
  header.elements.push_back(std::move(element));
  return {};
}

std::string readProperty(TextLines& lines, PlyHeader& header) {
  if (header.elements.empty()) return "its header has a property before the first element";
  PlyElement& element = header.elements.back();
  PlyProperty property;
  std::string_view word;
  lines.nextWord(word);
  const bool isList = word == "list";
  if (isList) {
    lines.nextWord(word);
    property.countType = typeOf(word);
    lines.nextWord(word);
  }
  property.type = typeOf(word);
  const bool isKnown = property.type != PlyType::None && (!isList || property.countType != PlyType::None);
  if (!isKnown || !lines.nextWord(word)) return "a property of its header has no type that is known";
  property.role = roleOf(element.name, word, isList);
  if (property.role != PlyRole::Other && element.has(property.role)) property.role = PlyRole::Other;
  element.properties.push_back(property);
  return {};
}

}  // namespace

std::size_t sizeOf(PlyType type) { return s_types[static_cast<std::size_t>(type)].size; }

bool PlyElement::has(PlyRole role) const {
  return std::any_of(properties.begin(), properties.end(), [&](const PlyProperty& p) { return p.role == role; });
}

std::size_t PlyElement::getSmallestSize() const {
  std::size_t size = 0;
  for (const PlyProperty& property : properties) size += sizeOf(property.isList() ? property.countType : property.type);
  return size;
}

std::string readPlyHeader(TextLines& lines, PlyHeader& header) {
  std::string_view word;
  if (!lines.next() || !lines.nextWord(word) || word != "ply") return "it does not begin with the word ply";
  bool hasFormat = false;
  while (lines.next() && lines.nextWord(word)) {
    std::string wrong;
    if (word == "end_header") return hasFormat ? "" : "its header has no format that is known";
    if (word == "format") {
      wrong = readFormat(lines, header);
      hasFormat = true;
    } else if (word == "element") {
      wrong = readElement(lines, header);
    } else if (word == "property") {
      wrong = readProperty(lines, header);
    }
    if (!wrong.empty()) return wrong;
  }
  return "it ends inside its header";
}

}  // namespace ormix::geom::detail
