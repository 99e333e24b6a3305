#pragma once

#include <images/Image.h>

namespace ormix::images {

/// The gray value that parts the image into two classes with the least variance within them, the brighter ones above it
/// (Otsu1979). Linear in the pixels.
int otsuThreshold(const GrayImage& image);

/// Ones where a pixel is brighter than the threshold, else zeros.
std::vector<omUInt8> brighterThan(const GrayImage& image, int threshold);

/// Makes ones of zeros and zeros of ones.
void invert(std::vector<omUInt8>& mask);

/// Where the objects are, as ones: of the two classes the one that has the smaller share of the image's border.
std::vector<omUInt8> objectsOf(const GrayImage& image, int threshold);

}  // namespace ormix::images
