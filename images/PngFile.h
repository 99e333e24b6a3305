#pragma once

#include <images/Image.h>

#include <string>

/// \file
/// PNG images in memory. What is read is refused, before memory is taken for it, if it declares more pixels than its
/// bytes can hold, or than 2³⁰.

namespace ormix::images {

/// Whether the bytes begin as a PNG file does.
bool isPng(const std::string& bytes);

/// The gray values of an image of any kind; what is transparent is put on white.
/// \throw std::runtime_error that says why the bytes are no PNG image
GrayImage decodeGray(const std::string& bytes);

/// The values of a gray image, with all their bits, or the indices of one with a palette. Of colours the brightness;
/// transparency is left out.
/// \throw std::runtime_error as decodeGray()
ValueImage decodeValues(const std::string& bytes);

/// The bytes of a PNG file with these gray values.
/// \throw std::runtime_error when the image is too large for the format
std::string encodeGray(const GrayImage& image);

}  // namespace ormix::images
