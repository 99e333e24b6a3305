#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Tools/Html/PageFiles.h>
#include <ORMIXGeometry/Tools/MeshFiles/MeshFile.h>
#include <ORMIXGeometry/Tools/Svg/SvgElement.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <fstream>
#include <sstream>

namespace ormix::geom::detail {

namespace {

/// A real with at most six digits; other texts as they are.
std::string shortened(const std::string& cell) {
  omReal64 number = 0;
  const char* const end = cell.data() + cell.size();
  const bool isReal = cell.size() > 7 && cell.find_first_of(".eE") != std::string::npos &&
                      std::from_chars(cell.data(), end, number).ptr == end;
  return isReal && std::isfinite(number) ? shortNumber(number) : cell;
}

}  // namespace

PageFile pageFileOf(const std::string& path) {
  PageFile file{eFK_Other, "", path.substr(path.find_last_of('/') + 1)};
  std::string extension = file.name.substr(std::min(file.name.find_last_of('.'), file.name.size()));
  for (char& c : extension) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  struct Known {
    const char* extension;
    ePageFileKind kind;
    const char* mediaType;
  };
  static constexpr Known known[] = {{".csv", eFK_Table, ""},
                                    {".svg", eFK_Picture, "image/svg+xml"},
                                    {".png", eFK_Picture, "image/png"},
                                    {".jpg", eFK_Picture, "image/jpeg"},
                                    {".jpeg", eFK_Picture, "image/jpeg"},
                                    {".stl", eFK_Mesh, ""},
                                    {".obj", eFK_Mesh, ""},
                                    {".ply", eFK_Mesh, ""},
                                    {".off", eFK_Mesh, ""}};
  for (const Known& each : known)
    if (extension == each.extension) {
      file.kind = each.kind;
      file.mediaType = each.mediaType;
    }
  return file;
}

BoolResult readPageFile(const std::string& path, std::string& bytes) {
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  // An empty file sets the fail bit of `content`.
  if (file) content << file.rdbuf();
  if (!file || (!content && errno != 0))
    return failure("Cannot read \"" + path + "\": " + (errno != 0 ? std::strerror(errno) : "unknown reason"));
  bytes = content.str();
  return true;
}

HtmlTable parseTable(std::string_view text) {
  HtmlTable table;
  std::vector<std::string> row(1);
  bool isQuoted = false;
  const auto endRow = [&] {
    if (row.size() > 1 || !row[0].empty()) table.rows.push_back(std::move(row));
    row.assign(1, {});
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (isQuoted && c == '"' && i + 1 < text.size() && text[i + 1] == '"')
      row.back() += text[++i];
    else if (c == '"' && (isQuoted || row.back().empty()))
      isQuoted = !isQuoted;
    else if (isQuoted)
      row.back() += c;
    else if (c == ',')
      row.emplace_back();
    else if (c == '\n')
      endRow();
    else if (c != '\r')
      row.back() += c;
  }
  endRow();
  if (table.rows.empty()) return table;
  for (auto& each : table.rows)
    for (std::string& cell : each) cell = shortened(cell);
  table.columns = std::move(table.rows.front());
  table.rows.erase(table.rows.begin());
  for (const auto& each : table.rows) table.columns.resize(std::max(table.columns.size(), each.size()));
  return table;
}

BoolResult drawMeshFile(HtmlScene& scene, const std::string& path, std::string& problem) {
  MeshReport report;
  const FaceVertexTriMesh3d<omReal64> mesh = readFaceVertexTriMesh<omReal64>(path, {}, report);
  if (mesh.getNbTriangles() == 0)
    return failure("Cannot read \"" + path + "\": " + (report.message.empty() ? "no triangles" : report.message));
  problem = report.message;
  return scene.draw(mesh);
}

}  // namespace ormix::geom::detail
