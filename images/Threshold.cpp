#include <images/Threshold.h>

#include <algorithm>
#include <array>

namespace ormix::images {

int otsuThreshold(const GrayImage& image) {
  std::array<double, 256> counts{};
  for (const omUInt8 gray : image.pixels) ++counts[gray];
  double sum = 0, sumDark = 0, nbDark = 0, best = -1;
  for (int gray = 0; gray < 256; ++gray) sum += gray * counts[static_cast<std::size_t>(gray)];
  const auto nbPixels = static_cast<double>(image.pixels.size());
  int threshold = 0;
  for (int gray = 0; gray < 255; ++gray) {
    nbDark += counts[static_cast<std::size_t>(gray)];
    sumDark += gray * counts[static_cast<std::size_t>(gray)];
    const double nbBright = nbPixels - nbDark;
    if (nbDark == 0 || nbBright == 0) continue;
    const double difference = sumDark / nbDark - (sum - sumDark) / nbBright;
    const double between = nbDark * nbBright * difference * difference;
    if (between > best) {
      best = between;
      threshold = gray;
    }
  }
  return threshold;
}

std::vector<omUInt8> brighterThan(const GrayImage& image, int threshold) {
  std::vector<omUInt8> mask(image.pixels.size());
  std::transform(image.pixels.begin(), image.pixels.end(), mask.begin(),
                 [threshold](omUInt8 gray) { return static_cast<omUInt8>(gray > threshold); });
  return mask;
}

void invert(std::vector<omUInt8>& mask) {
  for (omUInt8& inside : mask) inside = static_cast<omUInt8>(1 - inside);
}

std::vector<omUInt8> objectsOf(const GrayImage& image, int threshold) {
  std::vector<omUInt8> mask = brighterThan(image, threshold);
  std::size_t nbOnBorder = 0;
  for (std::size_t x = 0; x < image.width; ++x)
    nbOnBorder += mask[x] + std::size_t{*(mask.end() - 1 - std::ptrdiff_t(x))};
  for (std::size_t y = 0; y < image.height; ++y)
    nbOnBorder += mask[y * image.width] + std::size_t{mask[(y + 1) * image.width - 1]};
  if (nbOnBorder > image.width + image.height) invert(mask);
  return mask;
}

}  // namespace ormix::images
