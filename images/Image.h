#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <vector>

namespace ormix::images {

/// The pixels of an image of one channel, row by row, without gaps between rows.
template <class T>
struct Image {
  std::size_t width = 0;
  std::size_t height = 0;
  std::vector<T> pixels;  ///< width · height values
};

/// Gray values, from 0 (black) to 255 (white).
using GrayImage = Image<omUInt8>;

/// Values as a file has them, which may be labels.
struct ValueImage : Image<omUInt16> {
  unsigned nbBits = 8;     ///< of each value: 1, 2, 4, 8 or 16
  bool isIndexed = false;  ///< whether the values are indices of a palette
  bool hasColour = false;  ///< whether the values are the brightness of colours
};

}  // namespace ormix::images
