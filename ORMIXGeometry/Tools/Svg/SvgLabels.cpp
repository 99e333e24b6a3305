#include <ORMIXGeometry/Tools/Svg/SvgLabels.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace ormix::geom::detail {

namespace {

// Of the font of SvgWriter, in pixels, as browsers have it without asking them: the mean advance of a letter, the side
// of a square character of Asian scripts, and the height of a line.
constexpr omReal64 s_letter = 7, s_square = 12, s_line = 14;
// A side of the cells: labels of a few letters meet few of them.
constexpr omReal64 s_cell = 32;

omReal64 widthOf(std::string_view text) {
  omReal64 width = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    // The first byte of a character says how long it is: three bytes and more begin at U+0800, nearly all of them wide.
    if ((byte & 0xC0) != 0x80) width += byte < 0xE3 ? s_letter : s_square;
  }
  return width;
}

}  // namespace

template <class Visit>
void SvgLabelPlacer::visitCells(const Box& box, Visit visit) const {
  // What lies outside of the picture is not looked at.
  const auto cellOf = [](omReal64 place, omReal64 size) {
    return static_cast<omInt64>(std::clamp(place, 0.0, std::min(size, 1e15)) / s_cell);
  };
  for (omInt64 x = cellOf(box.left, _width); x <= cellOf(box.right, _width); ++x)
    for (omInt64 y = cellOf(box.top, _height); y <= cellOf(box.bottom, _height); ++y)
      if (!visit(std::make_pair(x, y))) return;
}

bool SvgLabelPlacer::isFree(const Box& box) const {
  bool isFree = true;
  visitCells(box, [&](const auto& cell) {
    const auto found = _cells.find(cell);
    if (found == _cells.end()) return true;
    for (const std::size_t each : found->second) {
      const Box& other = _boxes[each];
      isFree = isFree &&
               !(box.left < other.right && other.left < box.right && box.top < other.bottom && other.top < box.bottom);
    }
    return isFree;
  });
  return isFree;
}

void SvgLabelPlacer::reserve(const SvgPoint& low, const SvgPoint& high) {
  _boxes.push_back({low.getX(), low.getY(), high.getX(), high.getY()});
  visitCells(_boxes.back(), [this](const auto& cell) { return _cells[cell].push_back(_boxes.size() - 1), true; });
}

std::optional<SvgLabelPlace> SvgLabelPlacer::place(const SvgPoint& anchor, std::string_view text) {
  const omReal64 x = anchor.getX(), y = anchor.getY();
  if (!(x >= 0 && x <= _width && y >= 0 && y <= _height)) return std::nullopt;
  const omReal64 halfWidth = widthOf(text) / 2, halfHeight = s_line / 2;
  // In the middle, where the text fits into the picture or as near as it does; then around it.
  const auto within = [](omReal64 place, omReal64 half, omReal64 size) {
    return 2 * half < size ? std::clamp(place, half, size - half) : place;
  };
  const auto boxAt = [&](omReal64 dx, omReal64 dy) {
    const omReal64 cx = within(x + dx, halfWidth, _width), cy = within(y + dy, halfHeight, _height);
    return Box{cx - halfWidth, cy - halfHeight, cx + halfWidth, cy + halfHeight};
  };
  constexpr std::array<omReal64, 4> rings{1, 2.5, 4, 6};
  static constexpr std::array<std::array<int, 2>, 8> directions{
      {{1, -1}, {1, 1}, {-1, -1}, {-1, 1}, {1, 0}, {-1, 0}, {0, -1}, {0, 1}}};
  std::optional<Box> box;
  bool isBeside = true;
  if (const Box middle = boxAt(0, 0); isFree(middle)) box = middle;
  for (std::size_t ring = 0; !box && ring < rings.size(); ++ring)
    for (const auto& [right, down] : directions) {
      const Box around = boxAt(right * (halfWidth + (rings[ring] - 1) * s_line + 4), down * rings[ring] * s_line);
      if (box || !isFree(around)) continue;
      box = around;
      isBeside = ring == 0;
    }
  if (!box) return std::nullopt;
  reserve({box->left, box->top}, {box->right, box->bottom});
  SvgLabelPlace place{{(box->left + box->right) / 2, (box->top + box->bottom) / 2}, std::nullopt};
  if (!isBeside) place.lead = SvgPoint(std::clamp(x, box->left, box->right), std::clamp(y, box->top, box->bottom));
  return place;
}

}  // namespace ormix::geom::detail
