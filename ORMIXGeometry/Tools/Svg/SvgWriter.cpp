#include <ORMIXGeometry/Tools/Svg/ColourScale.h>
#include <ORMIXGeometry/Tools/Svg/SvgLabels.h>
#include <ORMIXGeometry/Tools/Svg/SvgShapeElement.h>
#include <ORMIXGeometry/Tools/Svg/SvgWriter.h>
#include <ORMIXSerialization/Archive/FileTarget.h>

#include <algorithm>
#include <boost/locale/utf.hpp>
#include <cmath>

namespace ormix::geom {

struct SvgWriter::Drawing {
  struct Item {
    detail::SvgShape shape;
    SvgStyle style;
  };
  omReal64 size = 800;
  std::optional<detail::SvgView> view;
  eSvgYAxis yAxis = eSYA_Up;
  std::vector<Item> items;
  std::string barUnit;
  omReal64 barLength = 0;  ///< of a unit of the coordinates; 0 for no scale bar

  BoolResult add(const std::string& name, std::optional<detail::SvgShape> shape, const SvgStyle& style);
  detail::SvgExtent extent(bool endless) const;
  ProcessingResult<detail::SvgFrame> frame() const;
};

namespace {

bool isUtf8(const std::string& text) {
  using Utf8 = boost::locale::utf::utf_traits<char>;
  for (auto place = text.begin(); place != text.end();)
    if (!boost::locale::utf::is_valid_codepoint(Utf8::decode(place, text.end()))) return false;
  return true;
}

void writeText(detail::SvgElement& element, const detail::SvgPoint& place, const std::string& text) {
  element << "<text x=\"" << place.getX() << "\" y=\"" << place.getY() << "\">";
  element.escaped(text) << "</text>\n";
}

/// The labels of a picture with their lines, and its scale bar.
class Annotations {
 public:
  explicit Annotations(const detail::SvgFrame& frame) : _frame(frame), _placer(frame.width(), frame.height()) {}

  void addLabel(const detail::SvgPoint& anchor, const std::string& text) {
    const auto place = _placer.place(anchor, text);
    if (!place) return;
    if (place->lead) _lines << "M" << anchor << "L" << *place->lead;
    writeText(_texts, place->center, text);
  }

  /// Before the labels, which keep away from it.
  void addBar(omReal64 unitLength, const std::string& unit) {
    constexpr omReal64 margin = 14, height = 5;
    const omReal64 pixels = _frame.scale / unitLength, length = roundLength(_frame.width() / 4 / pixels);
    if (length == 0) return;
    const omReal64 right = margin + length * pixels, bottom = _frame.height() - margin;
    _bar << "M" << margin << " " << bottom - height << "V" << bottom << "H" << right << "V" << bottom - height;
    writeText(_texts, {(margin + right) / 2, bottom - height - 8},
              detail::shortNumber(length) + (unit.empty() ? "" : " " + unit));
    _placer.reserve({0, bottom - 24}, {right + margin, _frame.height()});
  }

  /// A white rim keeps them legible on any fill.
  void writeInto(detail::SvgElement& element) const {
    if (!_lines.text().empty())
      element << "<path d=\"" << _lines.text() << "\" stroke=\"#404040\" fill=\"none\" stroke-width=\"0.6\"/>\n";
    for (const char* style :
         {R"(stroke="white" stroke-width="5" stroke-linecap="square")", R"(stroke="black" stroke-width="2")"})
      if (!_bar.text().empty()) element << "<path d=\"" << _bar.text() << "\" fill=\"none\" " << style << "/>\n";
    element << R"(<g font-family="sans-serif" font-size="12" text-anchor="middle" dominant-baseline="middle" )"
            << R"(fill="black" stroke="white" stroke-width="3" stroke-linejoin="round" paint-order="stroke">)"
            << "\n"
            << _texts.text() << "</g>\n";
  }

 private:
  const detail::SvgFrame& _frame;
  detail::SvgLabelPlacer _placer;
  detail::SvgElement _texts, _lines, _bar;
};

BoolResult takenBy(std::ostream& stream) {
  return stream ? BoolResult() : failure("The SVG picture could not be written completely (disk full?)");
}

}  // namespace

BoolResult SvgWriter::Drawing::add(const std::string& name, std::optional<detail::SvgShape> shape,
                                   const SvgStyle& style) {
  if (!shape) return failure("SvgWriter does not know how to draw a " + name);
  detail::SvgExtent own;
  own.add(*shape);
  if (!own.isFinite()) return failure("Not drawn: a number of the " + name + " is not finite or too large");
  if (!std::isfinite(style.width) || style.width < 0)
    return failure("Not drawn: the stroke width of the " + name + " is negative or not finite");
  for (const std::string& text : {style.stroke, style.fill, style.label})
    if (!isUtf8(text)) return failure("Not drawn: a text of the style of the " + name + " is not UTF-8");
  items.push_back({std::move(*shape), style});
  return true;
}

detail::SvgExtent SvgWriter::Drawing::extent(bool endless) const {
  detail::SvgExtent extent;
  for (const Item& item : items)
    if (detail::isEndless(item.shape) == endless) extent.add(item.shape);
  return extent;
}

ProcessingResult<detail::SvgFrame> SvgWriter::Drawing::frame() const {
  detail::SvgFrame frame{};
  frame.yDown = yAxis == eSYA_Down;
  if (view) {
    frame.view = *view;
  } else {
    detail::SvgExtent seen = extent(false);
    if (seen.isEmpty()) seen = extent(true);
    // A single place is given some room around it.
    const omReal64 side = std::max(seen.xMax - seen.xMin, seen.yMax - seen.yMin);
    const omReal64 place =
        std::max({std::abs(seen.xMin), std::abs(seen.xMax), std::abs(seen.yMin), std::abs(seen.yMax)});
    const omReal64 margin = side > 1e-12 * place ? 0.05 * side : std::max(1.0, 1e-9 * place);
    frame.view = {seen.xMin - margin, seen.yMin - margin, seen.xMax + margin, seen.yMax + margin};
  }
  frame.scale = size / std::max(frame.view.xMax - frame.view.xMin, frame.view.yMax - frame.view.yMin);
  if (std::isnormal(frame.scale)) return frame;
  return {frame, "The drawing's extent is too large or too small for a picture"};
}

SvgWriter::SvgWriter(omReal64 size) : _drawing(std::make_unique<Drawing>()) {
  if (std::isfinite(size) && size > 0) _drawing->size = size;
}
SvgWriter::~SvgWriter() = default;
SvgWriter::SvgWriter(SvgWriter&&) noexcept = default;
SvgWriter& SvgWriter::operator=(SvgWriter&&) noexcept = default;

SvgWriter::Drawing& SvgWriter::drawing() {
  if (!_drawing) _drawing = std::make_unique<Drawing>();
  return *_drawing;
}

BoolResult SvgWriter::setView(const BoundingBox2d<omReal64>& view) {
  const bool ordered = view.getXMin() < view.getXMax() && view.getYMin() < view.getYMax();
  if (!ordered || !std::isfinite(view.getXMax() - view.getXMin()) || !std::isfinite(view.getYMax() - view.getYMin()))
    return failure("The view of an SVG picture must be a finite box with a positive width and height");
  drawing().view = detail::SvgView{view.getXMin(), view.getYMin(), view.getXMax(), view.getYMax()};
  return true;
}

BoolResult SvgWriter::setScaleBar(const std::string& unit, omReal64 length) {
  if (!(length > 0) || !std::isfinite(length))
    return failure("A scale bar needs a unit of the coordinates that is finite and positive");
  if (!isUtf8(unit)) return failure("The unit of a scale bar is not UTF-8");
  drawing().barUnit = unit;
  drawing().barLength = length;
  return true;
}

void SvgWriter::setYAxis(eSvgYAxis axis) { drawing().yAxis = axis; }

BoolResult SvgWriter::draw(const BaseGeometryEntity2d& entity, const SvgStyle& style) {
  return drawing().add(entity.getClassName(), detail::svgShape(entity), style);
}

BoolResult SvgWriter::draw(const Vector2d& vector, const Point2dData<omReal64>& anchor, const SvgStyle& style) {
  return drawing().add(vector.getClassName(), detail::svgArrow(vector, anchor), style);
}

BoolResult SvgWriter::draw(const RowIntersections& pixels, const SvgStyle& style) {
  return drawing().add("set of pixels", detail::svgPixels(pixels), style);
}

BoolResult SvgWriter::drawImage(std::string_view file, const BoundingBox2d<omReal64>& box) {
  if (box.getXMin() > box.getXMax() || box.getYMin() > box.getYMax())
    return failure("Not drawn: the box of an image is inverted");
  auto image = detail::svgImage(file, std::as_const(box).getMinCornerPt(), std::as_const(box).getMaxCornerPt());
  if (!image) return failure("Not drawn: the bytes of an image are those of neither PNG nor JPEG");
  return drawing().add("image", std::move(image), {});
}

BoolResult SvgWriter::write(std::ostream& stream) const {
  static const Drawing empty;
  const Drawing& drawing = _drawing ? *_drawing : empty;
  const ProcessingResult<detail::SvgFrame> framed = drawing.frame();
  if (!framed.getMessage().empty()) return failure(framed.getMessage());
  const detail::SvgFrame& frame = framed.getResult();

  const auto put = [&stream](const detail::SvgElement& element) {
    stream.write(element.text().data(), static_cast<std::streamsize>(element.text().size()));
  };
  detail::SvgElement head;
  head << R"(<?xml version="1.0" encoding="UTF-8"?>)"
       << "\n"
       << R"(<svg xmlns="http://www.w3.org/2000/svg" width=")" << frame.width() << "\" height=\"" << frame.height()
       << "\" viewBox=\"0 0 " << frame.width() << " " << frame.height() << "\">\n"
       << R"(<rect width="100%" height="100%" fill="white"/>)"
       << "\n"
       << "<g stroke-linejoin=\"round\">\n";
  put(head);

  Annotations annotations(frame);
  if (drawing.barLength > 0) annotations.addBar(drawing.barLength, drawing.barUnit);
  for (const Drawing::Item& item : drawing.items) {
    detail::SvgElement element;
    const std::optional<detail::SvgPoint> middle = detail::writeShape(element, item.shape, frame, item.style);
    // What lies that far outside a given view cannot be seen, and has no coordinates in pixels.
    if (!element.isFinite()) continue;
    put(element);
    if (middle && !item.style.label.empty()) annotations.addLabel(*middle, item.style.label);
  }
  detail::SvgElement tail;
  tail << "</g>\n";
  annotations.writeInto(tail);
  tail << "</svg>\n";
  put(tail);
  stream.flush();
  return takenBy(stream);
}

BoolResult SvgWriter::write(const std::string& path) const {
  FileTarget target(path);
  BoolResult written = target.open();
  if (written) written = write(target.stream());
  if (written) written = target.commit();
  return written ? written : failure("Cannot write \"" + path + "\": " + written.getMessage());
}

}  // namespace ormix::geom
