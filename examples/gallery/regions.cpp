// The regions of a mask: their contours with holes, equivalent ellipses (blue) and least Feret diameters (yellow).
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>

int main() {
  using namespace ormix;
  using namespace ormix::geom;

  // A mask of 300 x 180 pixels, not zero where some discs with blurred borders add up to neither too little nor too
  // much.
  constexpr std::size_t width = 300, height = 180;
  const double discs[][3] = {{45, 50, 24},  {88, 62, 15},   {150, 40, 27},  {232, 40, 18}, {250, 66, 17}, {40, 130, 18},
                             {70, 146, 13}, {130, 120, 30}, {172, 132, 14}, {212, 150, 9}, {258, 128, 26}};
  std::vector<omUInt8> mask(width * height);
  for (std::size_t y = 0; y < height; ++y)
    for (std::size_t x = 0; x < width; ++x) {
      double sum = 0;
      for (const auto& [centerX, centerY, radius] : discs)
        sum += std::pow(radius / std::hypot(static_cast<double>(x) - centerX, static_cast<double>(y) - centerY), 3);
      mask[y * width + x] = sum > 1 && sum < 14;
    }

  SvgWriter picture(640);
  picture.setYAxis(eSYA_Down);  // rows of an image run downwards
  for (const Shape2dPtr& shape : labelShapes(MaskView<omUInt8>{mask.data(), width, height, width})) {
    const RegionProperties region = regionProperties(*shape);
    const FeretDiameter& least = region.leastFeret;
    picture.draw(*shape, {"#2f4858", "#cfdde6", 1.5, std::to_string(region.nbPixels)});
    picture.draw(region.equivalentEllipse, {"#1f78b4", "none", 1.5, ""});
    picture.draw(Segment2d<double>(least.from.x, least.from.y, least.to.x, least.to.y), {"#e0a000", "none", 2, ""});
  }
  return picture.write("regions.svg") ? 0 : 1;
}
