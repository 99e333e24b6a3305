// Neighbours simplified together: borders that two regions share stay shared, and nothing crosses.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>

int main() {
  using namespace ormix;
  using namespace ormix::geom;

  // Labels of 12 fields with curved borders: the nearest seed, seen through waves.
  constexpr std::size_t size = 160;
  std::vector<omUInt8> labels(size * size);
  for (std::size_t y = 0; y < size; ++y)
    for (std::size_t x = 0; x < size; ++x) {
      const double u = static_cast<double>(x) + 5 * std::sin(0.11 * static_cast<double>(y));
      const double v = static_cast<double>(y) + 5 * std::sin(0.13 * static_cast<double>(x));
      double nearest = 2 * size;
      for (int seed = 0; seed < 12; ++seed) {
        const double distance = std::hypot(u - size * std::fmod(0.5 + 0.7548776662466927 * seed, 1),
                                           v - size * std::fmod(0.5 + 0.5698402909980532 * seed, 1));
        if (distance >= nearest) continue;
        nearest = distance;
        labels[y * size + x] = static_cast<omUInt8>(seed + 1);
      }
    }
  const Shape2dPtrColl fields = shapesOfLabels(MaskView<omUInt8>{labels.data(), size, size, size});

  // Within 2.5 pixels of where they were.
  const GeometryEntity2dPtrColl simple = SimplifyTransform2d::simplifyAll({fields.begin(), fields.end()}, 2.5);

  SvgWriter picture(720);
  picture.setYAxis(eSYA_Down);
  for (const Shape2dPtr& field : fields) picture.draw(*field, {"#2f4858", "#d8e8d0", 1, ""});
  for (const GeometryEntity2dPtr& field : simple)
    picture.draw(*TranslationTransform2d(size + 12, 0).apply(*field), {"#2f4858", "#f3ead9", 1.5, ""});
  return picture.write("simplification.svg") ? 0 : 1;
}
