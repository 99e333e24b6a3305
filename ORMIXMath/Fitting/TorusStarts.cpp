#include <ORMIXMath/Algebra/EigenDecomposition.h>
#include <ORMIXMath/Fitting/DistanceDescent.h>
#include <ORMIXMath/Fitting/SurfaceStartParts.h>
#include <ORMIXMath/Fitting/SurfaceStarts.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace ormix::detail {

namespace {

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
