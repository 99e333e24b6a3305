#include <ORMIXGeometry/Tools/Skeleton/DrawSkeleton.h>
#include <ORMIXGeometry/Tools/Skeleton/SkeletonWidths.h>
#include <ORMIXGeometry/Tools/Skeleton/SubSkeleton.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace ormix::geom {

namespace {

/// A color between dark blue (0) and yellow (1), with lightness that grows evenly.
std::string colorAt(omReal64 part) {
  constexpr std::array<std::array<omReal64, 3>, 4> stops{{{68, 1, 84}, {49, 104, 142}, {53, 183, 121}, {253, 231, 37}}};
  const omReal64 at = std::clamp(part, 0.0, 1.0) * (stops.size() - 1);
  const auto below = std::min(static_cast<std::size_t>(at), stops.size() - 2);
  std::array<int, 3> rgb{};
  for (std::size_t c = 0; c < rgb.size(); ++c)
    rgb[c] = static_cast<int>(
        std::lround(stops[below][c] + (at - static_cast<omReal64>(below)) * (stops[below + 1][c] - stops[below][c])));
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%02x%02x%02x", rgb[0] & 255, rgb[1] & 255, rgb[2] & 255);
  return text.data();
}

}  // namespace

BoolResult drawSkeleton(SvgWriter& writer, const Skeleton2d& skeleton, const SkeletonStyle& style) {
  if (style.nbColors == 0 || !(style.circleStep >= 0 && std::isfinite(style.circleStep)))
    return failure("A skeleton is drawn with at least one color and with a step of at least 0");
  std::vector<omReal64> radii;
  radii.reserve(skeleton.getNbEdges());
  for (const AxisEdge& edge : skeleton.getEdgeColl())
    radii.push_back(skeleton.getVertexColl()[edge.vertices[0]].getRadius() / 2 +
                    skeleton.getVertexColl()[edge.vertices[1]].getRadius() / 2);
  if (radii.empty()) return true;
  const auto [least, greatest] = std::minmax_element(radii.begin(), radii.end());
  const omReal64 range = *greatest - *least;
  const auto nbColors = static_cast<omReal64>(style.nbColors);
  const auto colorIdx = [&, low = *least](omReal64 radius) {
    return range > 0 ? std::min(std::floor((radius - low) / range * nbColors), nbColors - 1) : 0;
  };
  BoolResult drawn;
  for (omReal64 color = 0; color < nbColors && drawn; ++color) {
    std::vector<char> isOfColor(radii.size());
    for (std::size_t e = 0; e < radii.size(); ++e) isOfColor[e] = colorIdx(radii[e]) == color;
    const Skeleton2d part = detail::subSkeleton(skeleton, isOfColor);
    if (!part.isEmpty()) drawn = writer.draw(part, {colorAt((color + 0.5) / nbColors), "none", style.width, ""});
  }
  if (!(style.circleStep > 0)) return drawn;
  for (const SkeletonPath& branch : branchesOf(skeleton))
    for (const Circle2d<omReal64>& circle : samplePath(skeleton, branch, style.circleStep))
      if (drawn) drawn = writer.draw(circle, {"#bbbbbb", "none", style.width / 2, ""});
  return drawn;
}

}  // namespace ormix::geom
