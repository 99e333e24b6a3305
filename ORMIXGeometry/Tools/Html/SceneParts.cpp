#include <ORMIXGeometry/Tools/Html/HtmlText.h>
#include <ORMIXGeometry/Tools/Html/SceneParts.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom::detail {

namespace {

std::string triple(const std::array<omReal64, 3>& numbers) {
  return "[" + exactNumber(numbers[0]) + "," + exactNumber(numbers[1]) + "," + exactNumber(numbers[2]) + "]";
}

/// Appends `"name":"…"` with numbers in base 64.
template <class Numbers>
void appendNumbers(std::string& json, const char* name, const Numbers& numbers) {
  if (numbers.empty()) return;
  json += std::string(",\"") + name + "\":\"";
  appendBase64(json, numbers);
  json += '"';
}

/// Where values are on their scale, from 0 at the low end to 1 at the high one; far below 0 where there is none.
std::vector<omReal32> levelsOf(const std::vector<omReal64>& values, const ColourScale& scale) {
  constexpr omReal32 none = -1e6F;
  std::vector<omReal32> levels;
  levels.reserve(values.size());
  for (const omReal64 value : values) {
    const omReal64 level = (value / 2 - scale.low() / 2) / (scale.high() / 2 - scale.low() / 2);
    levels.push_back(std::isnan(level) ? none : static_cast<omReal32>(std::clamp(level, 0.0, 1.0)));
  }
  return levels;
}

void appendPart(std::string& json, const ScenePart& part, const SceneFrame& all,
                const std::optional<ColourScale>& scale) {
  static constexpr std::array<const char*, 3> kinds{"triangles", "lines", "points"};
  std::array<omReal64, 3> at{};
  for (std::size_t k = 0; k < 3; ++k) at[k] = (part.frame.center[k] / 2 - all.center[k] / 2) / (all.radius / 2);
  json += std::string("{\"kind\":\"") + kinds[part.kind] + "\",\"at\":" + triple(at) +
          ",\"scale\":" + exactNumber(part.frame.radius / all.radius) + ",\"colour\":" + jsonText(part.style.colour) +
          ",\"opacity\":" + exactNumber(part.style.opacity) + ",\"smooth\":" + (part.isSmooth ? "true" : "false") +
          ",\"oriented\":" + (part.isOriented ? "true" : "false");
  appendNumbers(json, "positions", part.positions);
  appendNumbers(json, "indices", part.indices);
  appendNumbers(json, "edges", part.edges);
  appendNumbers(json, "softEdges", part.softEdges);
  if (scale) appendNumbers(json, "levels", levelsOf(part.values, *scale));
  json += '}';
}

}  // namespace

ScenePart squareOf(const ScenePlane& plane, const SceneFrame& all) {
  const auto& n = plane.normal;
  const omReal64 offset = plane.rho - n[0] * all.center[0] - n[1] * all.center[1] - n[2] * all.center[2];
  // Two directions in the plane: across the axis that the normal is farthest from, and across both.
  const auto least = static_cast<std::size_t>(
      std::min_element(n.begin(), n.end(), [](auto a, auto b) { return std::abs(a) < std::abs(b); }) - n.begin());
  std::array<omReal64, 3> u{}, v{};
  const std::size_t i = (least + 1) % 3, j = (least + 2) % 3;
  const omReal64 length = std::hypot(n[i], n[j]);
  u[i] = -n[j] / length;
  u[j] = n[i] / length;
  for (std::size_t k = 0; k < 3; ++k) v[k] = n[(k + 1) % 3] * u[(k + 2) % 3] - n[(k + 2) % 3] * u[(k + 1) % 3];
  ScenePart square;
  square.kind = eSP_Triangles;
  square.frame.radius = all.radius;
  for (std::size_t k = 0; k < 3; ++k) square.frame.center[k] = all.center[k] + offset * n[k];
  for (const auto& [a, b] : {std::array{-1, -1}, {1, -1}, {1, 1}, {-1, 1}})
    for (std::size_t k = 0; k < 3; ++k) square.positions.push_back(static_cast<omReal32>(a * u[k] + b * v[k]));
  square.indices = {0, 1, 2, 0, 2, 3};
  square.edges = {0, 1, 1, 2, 2, 3, 3, 0};
  square.style = plane.style;
  return square;
}

ScenePart segmentOf(const SceneLine& line, const SceneFrame& all) {
  omReal64 foot = 0;
  for (std::size_t k = 0; k < 3; ++k) foot += (all.center[k] - line.point[k]) * line.direction[k];
  ScenePart segment;
  segment.kind = eSP_Lines;
  segment.frame.radius = all.radius;
  for (std::size_t k = 0; k < 3; ++k) segment.frame.center[k] = line.point[k] + foot * line.direction[k];
  for (const omReal64 side : {-1.0, 1.0})
    for (std::size_t k = 0; k < 3; ++k) segment.positions.push_back(static_cast<omReal32>(side * line.direction[k]));
  segment.indices = {0, 1};
  segment.style = line.style;
  return segment;
}

SceneFrame frameOf(const SceneParts& scene) {
  std::array<omReal64, 3> low{}, high{};
  bool isFirst = true;
  const auto add = [&](const std::array<omReal64, 3>& center, omReal64 radius) {
    for (std::size_t k = 0; k < 3; ++k) {
      low[k] = isFirst ? center[k] - radius : std::min(low[k], center[k] - radius);
      high[k] = isFirst ? center[k] + radius : std::max(high[k], center[k] + radius);
    }
    isFirst = false;
  };
  for (const ScenePart& part : scene.parts) add(part.frame.center, part.frame.radius);
  for (const ScenePlane& plane : scene.planes)
    if (scene.parts.empty())
      add({plane.rho * plane.normal[0], plane.rho * plane.normal[1], plane.rho * plane.normal[2]}, 1);
  for (const SceneLine& line : scene.lines)
    if (scene.parts.empty()) add(line.point, 1);
  SceneFrame frame;
  if (isFirst) return frame;
  frame.radius = 0;
  for (std::size_t k = 0; k < 3; ++k) {
    frame.center[k] = low[k] / 2 + high[k] / 2;
    frame.radius = std::max(frame.radius, high[k] / 2 - low[k] / 2);
  }
  return frame;
}

std::optional<ColourScale> scaleOf(const SceneParts& scene) {
  if (scene.scale) return scene.scale;
  std::vector<omReal64> values;
  for (const ScenePart& part : scene.parts) values.insert(values.end(), part.values.begin(), part.values.end());
  if (values.empty()) return std::nullopt;
  return ColourScale::over(values);
}

std::string toJson(const SceneParts& scene) {
  const SceneFrame all = frameOf(scene);
  std::string json = "{\"radius\":" + exactNumber(all.radius) + ",\"unit\":" + jsonText(scene.unit);
  const std::optional<ColourScale> scale = scaleOf(scene);
  if (scale) {
    json += ",\"stops\":[";
    for (const std::string& stop : scale->stops()) json += (json.back() == '[' ? "" : ",") + jsonText(stop);
    json += "]";
  }
  json += ",\"parts\":[";
  const auto append = [&](const ScenePart& part) {
    if (json.back() != '[') json += ',';
    appendPart(json, part, all, scale);
  };
  for (const ScenePart& part : scene.parts) append(part);
  for (const ScenePlane& plane : scene.planes) append(squareOf(plane, all));
  for (const SceneLine& line : scene.lines) append(segmentOf(line, all));
  return json += "]}";
}

}  // namespace ormix::geom::detail
