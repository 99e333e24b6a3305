#include "SurfaceStarts.h"

#include <ORMIXMath/Algebra/EigenDecomposition.h>
#include <ORMIXMath/Algebra/SvdSolve.h>
#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Fitting/DistanceDescent.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace ormix::detail {

namespace {

// Directions over the hemisphere, about 9 degrees apart.
constexpr std::size_t s_nbDirections = 256;
// Directions from which descents begin, beside the principal ones, and the cosine of the least angle between them.
constexpr std::size_t s_nbBestDirections = 4;
constexpr omReal64 s_cosineApart = 0.94;

/// Directions spread evenly over the hemisphere, on a spiral by the golden angle.
std::vector<SpatialPoint> hemisphere() {
  std::vector<SpatialPoint> directions;
  for (std::size_t i = 0; i < s_nbDirections; ++i) {
    const omReal64 height = (static_cast<omReal64>(i) + 0.5) / static_cast<omReal64>(s_nbDirections);
    const omReal64 radius = std::sqrt(1 - height * height);
    const omReal64 turn = 2.399963229728653 * static_cast<omReal64>(i);
    directions.push_back({radius * std::cos(turn), radius * std::sin(turn), height});
  }
  return directions;
}

/// The principal directions of points, from the one across which they are the flattest.
std::array<SpatialPoint, 3> principalDirections(const std::vector<SpatialPoint>& points) {
  SpatialPoint mean{0, 0, 0};
  for (const SpatialPoint& p : points) mean = mean + p / static_cast<omReal64>(points.size());
  std::array<omReal64, 6> sums{};
  for (const SpatialPoint& point : points) {
    const SpatialPoint p = point - mean;
    sums[0] += p.x * p.x;
    sums[1] += p.x * p.y;
    sums[2] += p.x * p.z;
    sums[3] += p.y * p.y;
    sums[4] += p.y * p.z;
    sums[5] += p.z * p.z;
  }
  omReal64 values[3] = {};
  omReal64 v[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
  eigenDecomposition(sums[0], sums[1], sums[2], sums[3], sums[4], sums[5], values, v);
  return {SpatialPoint{v[0], v[1], v[2]}, SpatialPoint{v[3], v[4], v[5]}, SpatialPoint{v[6], v[7], v[8]}};
}

/// The point nearest to the middle, on which a model hangs.
SpatialPoint middlePoint(const std::vector<SpatialPoint>& points) {
  return *std::min_element(points.begin(), points.end(),
                           [](const SpatialPoint& p, const SpatialPoint& q) { return dot(p, p) < dot(q, q); });
}

/// The least-squares solution of rows of up to 15 unknowns with their right-hand side behind them; unknowns that the
/// rows do not determine are 0 or small. `fill(i, row)` writes row i.
template <class Fill>
std::array<omReal64, 15> leastSquares(std::size_t nbRows, std::size_t nbUnknowns, const Fill& fill) {
  TallQr<16> qr;
  std::size_t inBlock = 0;
  for (std::size_t i = 0; i < nbRows; ++i) {
    std::array<omReal64, 16> row{};
    fill(i, row.data());
    for (std::size_t k = 0; k < row.size(); ++k) qr.block(k)[inBlock] = row[k];
    if (++inBlock == qr.s_blockRows || i + 1 == nbRows) {
      qr.fold(inBlock);
      inBlock = 0;
    }
  }
  std::array<omReal64, 15 * 15> matrix;
  std::array<omReal64, 15> right;
  std::array<omReal64, 15> solution{};
  for (std::size_t i = 0; i < nbUnknowns; ++i) {
    for (std::size_t k = 0; k < nbUnknowns; ++k) matrix[i * nbUnknowns + k] = qr(i, k);
    right[i] = qr(i, nbUnknowns);
  }
  svdSolveSmall(matrix.data(), nbUnknowns, nbUnknowns, right.data(), solution.data());
  return solution;
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

/// A flat patch by its principal curvatures, from the paraboloid over the plane of the points.
struct Patch {
  SurfaceFrame frame;        ///< on the patch; the axis is the direction of the lesser curvature
  omReal64 curvature;        ///< of greater magnitude, across the axis; positive towards the normal
  omReal64 lesserCurvature;  ///< along the axis
};

Patch patchOf(const std::vector<SpatialPoint>& points, const std::array<SpatialPoint, 3>& principal) {
  const SurfaceFrame frame = SurfaceFrame::of({0, 0, 0}, principal[2], principal[0]);
  const std::array<omReal64, 15> c = leastSquares(points.size(), 6, [&](std::size_t i, omReal64* row) {
    const FramePlace p = placeIn(frame, points[i]);
    row[0] = 1;
    row[1] = p.height;
    row[2] = p.y;
    row[3] = p.height * p.height / 2;
    row[4] = p.height * p.y;
    row[5] = p.y * p.y / 2;
    row[6] = p.x;
  });
  const omReal64 half = std::atan2(2 * c[4], c[3] - c[5]) / 2;
  const auto curvatureAlong = [&](omReal64 angle) {
    const omReal64 u = std::cos(angle);
    const omReal64 v = std::sin(angle);
    return c[3] * u * u + 2 * c[4] * u * v + c[5] * v * v;
  };
  const bool isFirst = std::abs(curvatureAlong(half)) <= std::abs(curvatureAlong(half + s_pi / 2));
  const omReal64 angle = isFirst ? half : half + s_pi / 2;
  const SpatialPoint along = frame.axis * std::cos(angle) + frame.across * std::sin(angle);
  const SpatialPoint axis = along + frame.normal * (c[1] * std::cos(angle) + c[2] * std::sin(angle));
  return {SurfaceFrame::of(frame.normal * c[0], axis, frame.normal), curvatureAlong(angle + s_pi / 2),
          curvatureAlong(angle)};
}

/// The torus that osculates a patch at the greatest or the least distance from its axis.
TorusModel patchTorus(const Patch& patch) {
  // A curvature of 0 would put the axis infinitely far away.
  constexpr omReal64 least = 1e-3;
  const auto bounded = [&](omReal64 k) { return std::abs(k) < least ? std::copysign(least, k) : k; };
  const omReal64 toAxis = 1 / bounded(patch.lesserCurvature);
  const omReal64 toTube = 1 / bounded(patch.curvature);
  return {SurfaceFrame::of(patch.frame.origin + patch.frame.normal * toAxis, patch.frame.across, patch.frame.normal),
          std::abs(toAxis - toTube), std::abs(toTube)};
}

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

/// A quadric of revolution's centre and shape, from s² = −s v·p − q(p): the torus of a cyclide.
bool cyclideTorus(const std::vector<SpatialPoint>& points, TorusModel& torus) {
  if (points.size() < 13) return false;
  SpatialPoint center{0, 0, 0};
  std::array<omReal64, 15> c{};
  // Once for the centre, and about it for the quadric.
  for (const std::size_t nbUnknowns : {13, 10}) {
    c = leastSquares(points.size(), nbUnknowns, [&](std::size_t i, omReal64* row) {
      const SpatialPoint p = points[i] - center;
      const omReal64 s = dot(p, p);
      const std::array<omReal64, 13> values{
          1,         p.x,           p.y,       p.z,     p.x * p.x, 2 * p.x * p.y, 2 * p.x * p.z,
          p.y * p.y, 2 * p.y * p.z, p.z * p.z, s * p.x, s * p.y,   s * p.z};
      std::copy_n(values.begin(), nbUnknowns, row);
      row[nbUnknowns] = s * s;
    });
    if (nbUnknowns == 13) center = SpatialPoint{c[10], c[11], c[12]} / 4;
  }
  omReal64 values[3] = {};
  omReal64 vectors[9] = {};
  if (!eigenDecomposition(c[4], c[5], c[6], c[7], c[8], c[9], values, vectors)) return false;
  // 2 (R² + r²) across the axis, 2 r² − 2 R² along it.
  const omReal64 across = (values[1] + values[2]) / 2;
  const omReal64 majorSquare = (across - values[0]) / 4;
  const omReal64 minorSquare = across / 2 - majorSquare;
  if (!(majorSquare > 0)) return false;
  const SpatialPoint direction{vectors[0], vectors[1], vectors[2]};
  const omReal64 major = std::sqrt(majorSquare);
  torus = {SurfaceFrame::of(center, direction, anyAcross(direction)), major,
           minorSquare > 0 ? std::sqrt(minorSquare) : major / 4};
  return true;
}

/// The torus of a tube that bends little: about the best cylinder, of which the distances of the points change with the
/// square of the height towards the side to which the tube bends.
bool bentTorus(const std::vector<SpatialPoint>& points, TorusModel& torus) {
  constexpr std::size_t nbIterations = 15;
  CylinderModel cylinder{};
  omReal64 least = std::numeric_limits<omReal64>::infinity();
  for (CylinderModel model : cylinderStarts(points)) {
    const Descent descent = descend(points, model, nbIterations);
    if (!(descent.cost < least)) continue;
    least = descent.cost;
    cylinder = model;
  }
  if (!std::isfinite(least) || cylinder.curvature == 0) return false;
  const SurfaceFrame& hung = cylinder.frame;
  SurfaceFrame frame = SurfaceFrame::of(hung.origin + hung.normal / cylinder.curvature, hung.axis, hung.normal);
  frame.origin = frame.origin - frame.axis * dot(frame.origin, frame.axis);
  const omReal64 tubeRadius = 1 / std::abs(cylinder.curvature);
  const std::array<omReal64, 15> c = leastSquares(points.size(), 7, [&](std::size_t i, omReal64* row) {
    const FramePlace p = placeIn(frame, points[i]);
    const omReal64 radius = std::max(std::sqrt(p.x * p.x + p.y * p.y), std::numeric_limits<omReal64>::min());
    row[0] = 1;
    row[1] = p.x / radius;
    row[2] = p.y / radius;
    for (std::size_t k = 3; k < 7; ++k) row[k] = row[k - 2] * p.height;
    row[7] = radius - tubeRadius;
  });
  const omReal64 bend = 2 * euclideanNorm(c[5], c[6]);
  if (!(bend > 0) || !std::isfinite(bend)) return false;
  const SpatialPoint towards = normalized(frame.normal * c[5] + frame.across * c[6]);
  const SpatialPoint onAxis = frame.origin + frame.normal * c[1] + frame.across * c[2];
  torus = {SurfaceFrame::of(onAxis + towards / bend, cross(frame.axis, towards), towards), 1 / bend, tubeRadius};
  return true;
}

/// The torus of a direction about the circle of the points projected along it (Kasa1976), with its score.
bool projectedTorus(const std::vector<SpatialPoint>& points, const SpatialPoint& direction, TorusModel& torus,
                    omReal64& score) {
  const SurfaceFrame frame = SurfaceFrame::of({0, 0, 0}, direction, anyAcross(direction));
  omReal64 height = 0;
  TallQr<4> qr;
  std::size_t inBlock = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const FramePlace p = placeIn(frame, points[i]);
    qr.block(0)[inBlock] = p.x;
    qr.block(1)[inBlock] = p.y;
    qr.block(2)[inBlock] = 1;
    qr.block(3)[inBlock] = p.x * p.x + p.y * p.y;
    height += p.height;
    if (++inBlock == qr.s_blockRows || i + 1 == points.size()) {
      qr.fold(inBlock);
      inBlock = 0;
    }
  }
  const std::array<omReal64, 3> c = solveTriangle<3>(qr);
  const auto nbPoints = static_cast<omReal64>(points.size());
  const omReal64 x = c[0] / 2;
  const omReal64 y = c[1] / 2;
  const omReal64 radiusSquare = c[2] + x * x + y * y;
  if (!(radiusSquare > 0) || !std::isfinite(radiusSquare)) return false;
  torus.frame = frame;
  torus.frame.origin = frame.axis * (height / nbPoints) + frame.normal * x + frame.across * y;
  torus.majorRadius = std::sqrt(radiusSquare);
  torus.minorRadius = 0;
  omReal64 sum = 0;
  omReal64 squares = 0;
  std::array<omReal64, 1> residual;
  std::array<omReal64, TorusModel::s_nbParameters> gradient;
  for (const SpatialPoint& point : points) {
    torus.rows(point, residual.data(), gradient.data());
    sum += residual[0];
    squares += residual[0] * residual[0];
  }
  torus.minorRadius = sum / nbPoints;
  score = squares - sum * torus.minorRadius;
  return true;
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

std::vector<TorusModel> torusStarts(const std::vector<SpatialPoint>& points) {
  struct Scored {
    omReal64 score;
    TorusModel torus;
  };
  std::vector<TorusModel> starts;
  TorusModel torus;
  if (cyclideTorus(points, torus)) starts.push_back(torus);
  const std::array<SpatialPoint, 3> principal = principalDirections(points);
  starts.push_back(patchTorus(patchOf(points, principal)));
  if (bentTorus(points, torus)) starts.push_back(torus);
  omReal64 score = 0;
  for (const SpatialPoint& direction : principal)
    if (projectedTorus(points, direction, torus, score)) starts.push_back(torus);
  std::vector<Scored> all;
  for (const SpatialPoint& direction : hemisphere())
    if (projectedTorus(points, direction, torus, score)) all.push_back({score, torus});
  std::sort(all.begin(), all.end(), [](const Scored& a, const Scored& b) { return a.score < b.score; });
  std::vector<TorusModel> best;
  for (const Scored& scored : all) {
    const auto isNear = [&](const TorusModel& other) {
      return std::abs(dot(scored.torus.frame.axis, other.frame.axis)) > s_cosineApart;
    };
    if (std::none_of(best.begin(), best.end(), isNear)) best.push_back(scored.torus);
    if (best.size() == s_nbBestDirections) break;
  }
  starts.insert(starts.end(), best.begin(), best.end());
  return starts;
}

}  // namespace ormix::detail
