#include <ORMIXGeometry/Entity/2d/Shape/LabelledRows.h>
#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>
#include <command/frame/Errors.h>
#include <command/io/Regions.h>
#include <images/PngFile.h>
#include <images/Threshold.h>

#include <algorithm>
#include <bitset>
#include <charconv>

namespace ormix::command {

namespace {

using namespace geom;

ePixelConnectivity connectivityOf(const Arguments& arguments) {
  return arguments.text("connectivity", "8") == "4" ? ePC_4 : ePC_8;
}

std::vector<Region> regionsOfMask(const Arguments& arguments, std::vector<omUInt8> mask, std::size_t width,
                                  std::size_t height) {
  if (arguments.has("invert")) images::invert(mask);
  std::vector<Region> regions;
  for (const Shape2dPtr& shape :
       labelShapes(MaskView<const omUInt8>{mask.data(), width, height, width}, connectivityOf(arguments)))
    regions.push_back({static_cast<omInt64>(regions.size()) + 1, shape});
  return regions;
}

std::vector<Region> regionsByThreshold(const Arguments& arguments, const std::string& bytes) {
  const images::GrayImage image = images::decodeGray(bytes);
  const std::string text = arguments.text("threshold");
  if (text == "otsu")
    return regionsOfMask(arguments, images::objectsOf(image, images::otsuThreshold(image)), image.width, image.height);
  int threshold = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), threshold);
  if (error != std::errc() || rest != text.data() + text.size() || threshold < 0 || threshold > 255)
    throw UsageError("option --threshold is \"" + text + "\", not a whole number from 0 to 255, or otsu");
  return regionsOfMask(arguments, images::brighterThan(image, threshold), image.width, image.height);
}

std::vector<Region> regionsOfLabels(const Arguments& arguments, const images::ValueImage& image) {
  std::vector<Region> regions;
  for (LabelledRows& label :
       labelledRows(MaskView<const omUInt16>{image.pixels.data(), image.width, image.height, image.width}))
    regions.push_back({label.label, makeShape(std::move(label.rows), connectivityOf(arguments))});
  return regions;
}

std::size_t countValues(const images::ValueImage& image) {
  std::bitset<65536> values;
  for (const omUInt16 value : image.pixels) values.set(value);
  return values.count();
}

}  // namespace

const std::vector<Option>& regionOptions() {
  static const std::vector<Option> options{
      {"threshold", 't', eOptionKind::Text, "T",
       "regions of an image are what is brighter than T (0 to 255); \"otsu\" finds T, and takes the part that has less "
       "of "
       "the border"},
      {"invert", 0, eOptionKind::Flag, "", "regions of an image are the rest of it"},
      {"labels", 0, eOptionKind::Flag, "",
       "each value but 0 is a region, as it is for images with a palette or of 16 bits"},
      {"connectivity", 'c', eOptionKind::Choice, "4|8",
       "whether pixels that touch at a corner belong together (8) or not; 8 when not given"}};
  return options;
}

std::vector<Region> regionsOf(const Arguments& arguments, const std::string& image) {
  if (arguments.has("threshold")) return regionsByThreshold(arguments, image);
  const images::ValueImage values = images::decodeValues(image);
  const std::size_t nbValues = countValues(values);
  const bool hasLabels = values.isIndexed || (values.nbBits == 16 && nbValues > 2);
  if (arguments.has("labels") || (hasLabels && !arguments.has("invert"))) return regionsOfLabels(arguments, values);
  if (nbValues > 2)
    throw DataError("it has " + std::to_string(nbValues) +
                    " different values: say by --threshold T what is inside, or " + "by --labels that they are labels");
  std::vector<omUInt8> mask(values.pixels.size());
  std::transform(values.pixels.begin(), values.pixels.end(), mask.begin(),
                 [](omUInt16 value) { return static_cast<omUInt8>(value != 0); });
  return regionsOfMask(arguments, std::move(mask), values.width, values.height);
}

}  // namespace ormix::command
