// Which cells of a tissue touch: the borders that two cells share, drawn the wider the longer they are.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>

int main() {
  using namespace ormix;
  using namespace ormix::geom;

  // An image of labels: each pixel has the number of the nearest of 30 seeds, or 0 where none is near.
  constexpr std::size_t width = 192, height = 120;
  std::vector<omUInt16> labels(width * height);
  for (std::size_t y = 0; y < height; ++y)
    for (std::size_t x = 0; x < width; ++x) {
      double nearest = 15.5;
      for (int seed = 0; seed < 30; ++seed) {
        // Multiples of two irrational numbers spread evenly.
        const double dx = static_cast<double>(x) - width * std::fmod(0.5 + 0.7548776662466927 * seed, 1);
        const double dy = static_cast<double>(y) - height * std::fmod(0.5 + 0.5698402909980532 * seed, 1);
        if (dx * dx + dy * dy >= nearest * nearest) continue;
        nearest = std::sqrt(dx * dx + dy * dy);
        labels[y * width + x] = static_cast<omUInt16>(seed + 1);
      }
    }

  SvgWriter picture(640);
  picture.setYAxis(eSYA_Down);
  const Shape2dPtrColl cells = shapesOfLabels(MaskView<omUInt16>{labels.data(), width, height, width});
  for (const Shape2dPtr& cell : cells) picture.draw(*cell, {"#7d8a94", "#f3ead9", 1, ""});
  for (const RegionContact& pair : contacts(cells, 0).contacts)  // gap 0: the pixel edges that both have
    for (const ContactPiece2d& piece : contact(*cells[pair.first], *cells[pair.second], 0).onA.pieces) {
      Polygon2d<double> border;
      for (const Segment2d<double>& segment : piece) border.getPointColl().push_back(segment.getPoint0());
      border.getPointColl().push_back(piece.back().getPoint1());
      picture.draw(border, {"#c8402f", "none", 1 + pair.length() / 8, ""});
    }
  return picture.write("contacts.svg") ? 0 : 1;
}
