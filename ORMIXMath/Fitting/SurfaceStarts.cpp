#include "SurfaceStarts.h"

#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Fitting/SurfaceStartParts.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace ormix::detail {

namespace {

/// The point nearest to the middle, on which a model hangs.
SpatialPoint middlePoint(const std::vector<SpatialPoint>& points) {
  return *std::min_element(points.begin(), points.end(),
                           [](const SpatialPoint& p, const SpatialPoint& q) { return dot(p, p) < dot(q, q); });
}

/// The least-squares solution of ten rows of few unknowns by orthogonalisation of the columns, which are overwritten,
/// and the sum of squares that remains; a column that depends on the others gets 0.
template <std::size_t NbUnknowns>
omReal64 solveTenRows(std::array<std::array<omReal64, 10>, NbUnknowns>& columns, std::array<omReal64, 10>& right,
                      std::array<omReal64, NbUnknowns>& solution) {
  using Column = std::array<omReal64, 10>;
  const auto product = [](const Column& a, const Column& b) {
    omReal64 sum = 0;
    for (std::size_t i = 0; i < 10; ++i) sum += a[i] * b[i];
    return sum;
  };
  const auto subtract = [](Column& a, omReal64 factor, const Column& b) {
    for (std::size_t i = 0; i < 10; ++i) a[i] -= factor * b[i];
  };
  std::array<std::array<omReal64, NbUnknowns>, NbUnknowns> triangle{};
  for (std::size_t k = 0; k < NbUnknowns; ++k) {
    const omReal64 before = product(columns[k], columns[k]);
    // Twice, so that rounding leaves the columns orthogonal.
    for (int pass = 0; pass < 2; ++pass)
      for (std::size_t j = 0; j < k; ++j) {
        const omReal64 part = product(columns[j], columns[k]);
        triangle[j][k] += part;
        subtract(columns[k], part, columns[j]);
      }
    const omReal64 square = product(columns[k], columns[k]);
    const omReal64 length = square > 1e-24 * before ? std::sqrt(square) : 0;
    triangle[k][k] = length;
    for (omReal64& value : columns[k]) value = length > 0 ? value / length : 0;
  }
  for (std::size_t k = 0; k < NbUnknowns; ++k) {
    solution[k] = product(columns[k], right);
    subtract(right, solution[k], columns[k]);
  }
  for (std::size_t k = NbUnknowns; k-- > 0;) {
    for (std::size_t j = k + 1; j < NbUnknowns; ++j) solution[k] -= triangle[k][j] * solution[j];
    solution[k] = triangle[k][k] > 0 ? solution[k] / triangle[k][k] : 0;
  }
  return product(right, right);
}

/// Sums of the products of the monomials 1, x, y, z, xx, xy, xz, yy, yz, zz, as the triangle of their matrix: with it
/// the algebraic surface about any direction is found without the points.
class Monomials {
 public:
  explicit Monomials(const std::vector<SpatialPoint>& points) {
    TallQr<10> qr;
    std::size_t row = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
      const SpatialPoint& p = points[i];
      const std::array<omReal64, 10> values{1,         p.x,       p.y,       p.z,       p.x * p.x,
                                            p.x * p.y, p.x * p.z, p.y * p.y, p.y * p.z, p.z * p.z};
      for (std::size_t k = 0; k < 10; ++k) qr.block(k)[row] = values[k];
      if (++row == qr.s_blockRows || i + 1 == points.size()) {
        qr.fold(row);
        row = 0;
      }
    }
    _triangle = qr.triangle();
  }

  /// A cylinder or cone about the direction: its axis passes `center`, where its radius is `radius` and grows by
  /// `slope` a unit of height.
  struct Surface {
    omReal64 score = std::numeric_limits<omReal64>::infinity();  ///< about the sum of squared distances
    SpatialPoint direction{};
    SpatialPoint center{};
    omReal64 radius = 0;
    omReal64 slope = 0;
  };

  /// X² + Y² = 2 a X + 2 b Y + c with coordinates X, Y across the direction and H along it; of a cone + d H + e H².
  template <std::size_t NbUnknowns>
  Surface surfaceAbout(const SpatialPoint& direction) const {
    static_assert(NbUnknowns == 3 || NbUnknowns == 5);
    const SurfaceFrame frame = SurfaceFrame::of({0, 0, 0}, direction, anyAcross(direction));
    const SpatialPoint& a = frame.axis;
    using Column = std::array<omReal64, 10>;
    const auto linear = [&](const SpatialPoint& v) { return times({0, v.x, v.y, v.z, 0, 0, 0, 0, 0, 0}); };
    const Column heightSquare{0, 0, 0, 0, a.x * a.x, 2 * a.x * a.y, 2 * a.x * a.z, a.y * a.y, 2 * a.y * a.z, a.z * a.z};
    Column square{0, 0, 0, 0, 1, 0, 0, 1, 0, 1};
    for (std::size_t k = 0; k < 10; ++k) square[k] -= heightSquare[k];
    std::array<Column, NbUnknowns> columns;
    columns[0] = linear(frame.normal);
    columns[1] = linear(frame.across);
    columns[2] = times({1, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    if constexpr (NbUnknowns == 5) {
      columns[3] = linear(a);
      columns[4] = times(heightSquare);
    }
    Column right = times(square);
    std::array<omReal64, NbUnknowns> solution{};
    const omReal64 rest = solveTenRows<NbUnknowns>(columns, right, solution);
    Surface surface;
    const omReal64 x = solution[0] / 2;
    const omReal64 y = solution[1] / 2;
    const omReal64 radiusSquare = solution[2] + x * x + y * y;
    if (!(radiusSquare > 0) || !std::isfinite(radiusSquare)) return surface;
    surface.direction = a;
    surface.center = frame.normal * x + frame.across * y;
    surface.radius = std::sqrt(radiusSquare);
    if constexpr (NbUnknowns == 5) surface.slope = solution[3] / (2 * surface.radius);
    surface.score = rest / (4 * radiusSquare);
    return surface;
  }

  /// The surfaces about the principal directions, and the best ones over the hemisphere.
  template <std::size_t NbUnknowns>
  std::vector<Surface> surfaces(const std::array<SpatialPoint, 3>& principal) const {
    std::vector<Surface> chosen;
    for (const SpatialPoint& direction : principal) chosen.push_back(surfaceAbout<NbUnknowns>(direction));
    static const std::vector<SpatialPoint> s_directions = hemisphere();
    std::vector<Surface> all;
    for (const SpatialPoint& direction : s_directions) all.push_back(surfaceAbout<NbUnknowns>(direction));
    std::sort(all.begin(), all.end(), [](const Surface& a, const Surface& b) { return a.score < b.score; });
    std::vector<Surface> best;
    for (const Surface& surface : all) {
      const auto isNear = [&](const Surface& other) {
        return std::abs(dot(surface.direction, other.direction)) > s_cosineApart;
      };
      if (std::none_of(best.begin(), best.end(), isNear)) best.push_back(surface);
      if (best.size() == s_nbBestDirections) break;
    }
    chosen.insert(chosen.end(), best.begin(), best.end());
    chosen.erase(std::remove_if(chosen.begin(), chosen.end(),
                                [](const Surface& surface) { return !std::isfinite(surface.score); }),
                 chosen.end());
    return chosen;
  }

 private:
  /// The triangle times the coefficients of a quadratic function.
  std::array<omReal64, 10> times(const std::array<omReal64, 10>& function) const {
    std::array<omReal64, 10> result{};
    for (std::size_t i = 0; i < 10; ++i)
      for (std::size_t k = i; k < 10; ++k) result[i] += _triangle[10 * i + k] * function[k];
    return result;
  }

  std::array<omReal64, 100> _triangle;
};

/// A surface about an axis as a cone that hangs on its point beside the middle one.
ConeModel hungOn(const SpatialPoint& middle, const Monomials::Surface& surface) {
  const SpatialPoint offset = middle - surface.center;
  const omReal64 height = dot(offset, surface.direction);
  SpatialPoint outward = offset - surface.direction * height;
  if (!(dot(outward, outward) > 0)) outward = cross(surface.direction, anyAcross(surface.direction));
  outward = normalized(outward);
  const omReal64 radius = std::max(surface.radius + surface.slope * height, 0.05 * surface.radius);
  const SpatialPoint origin = surface.center + surface.direction * height + outward * radius;
  return {SurfaceFrame::of(origin, surface.direction, outward * -1.0), 1 / radius, std::atan(surface.slope)};
}

}  // namespace

std::vector<CylinderModel> cylinderStarts(const std::vector<SpatialPoint>& points) {
  const std::array<SpatialPoint, 3> principal = principalDirections(points);
  const SpatialPoint middle = middlePoint(points);
  std::vector<CylinderModel> starts;
  for (const Monomials::Surface& surface : Monomials(points).surfaces<3>(principal)) {
    const ConeModel hung = hungOn(middle, surface);
    starts.push_back({hung.frame, hung.curvature});
  }
  const Patch patch = patchOf(points, principal);
  starts.push_back({patch.frame, patch.curvature});
  return starts;
}

std::vector<ConeModel> coneStarts(const std::vector<SpatialPoint>& points) {
  const std::array<SpatialPoint, 3> principal = principalDirections(points);
  const SpatialPoint middle = middlePoint(points);
  const Monomials monomials(points);
  std::vector<ConeModel> starts;
  for (const Monomials::Surface& surface : monomials.surfaces<5>(principal)) starts.push_back(hungOn(middle, surface));
  for (const Monomials::Surface& surface : monomials.surfaces<3>(principal)) starts.push_back(hungOn(middle, surface));
  const Patch patch = patchOf(points, principal);
  starts.push_back({patch.frame, patch.curvature, 0});
  return starts;
}

}  // namespace ormix::detail
