#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/LabelShapes.h>
#include <command/frame/Arguments.h>

#include <string>
#include <vector>

namespace ormix::command {

/// A region of an image.
struct Region {
  omInt64 label = 0;       ///< as a label image has it; of a mask counted from 1
  geom::Shape2dPtr shape;  ///< never null
};

/// How regions are found in images: --threshold, --invert, --labels, --connectivity.
const std::vector<Option>& regionOptions();

/// The regions of a PNG image: by a threshold where one is given; the labels of an image that has labels, as those with
/// a palette or 16 bits do; else, of an image of two values at most, the connected regions of what is not zero.
/// \throw DataError where the image may be a photograph and nothing says how to part it
std::vector<Region> regionsOf(const Arguments& arguments, const std::string& image);

}  // namespace ormix::command
