#include <ORMIXMath/Algebra/EigenBridge.h>
#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Fitting/CloudFrame.h>
#include <ORMIXMath/Fitting/DistanceDescent.h>
#include <ORMIXMath/Fitting/ShapesFromSamples.h>
#include <ORMIXMath/Fitting/SpatialShapesFromSamples.h>
#include <ORMIXMath/Fitting/SurfaceModels.h>
#include <ORMIXMath/Fitting/SurfaceStarts.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <Eigen/SVD>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace ormix {

namespace {

using namespace detail;

// Most samples on which starts are searched, and iterations from each start.
constexpr std::size_t s_nbStartSamples = 500;
constexpr std::size_t s_nbStartIterations = 30;
constexpr std::size_t s_nbMaxIterations = 200;
// A singular value of the Jacobian counts as zero up to this part of the largest one.
constexpr omReal64 s_rankThreshold = 1e-10;

/// Samples about their mean, divided by their extent, and what they span.
struct Cloud {
  CloudFrame<3> frame;
  std::vector<SpatialPoint> points;
  SpatialPoint mean{0, 0, 0};             ///< of the points
  std::array<SpatialPoint, 3> principal;  ///< directions, from the longest to the shortest
  std::array<omReal64, 3> deviation{};    ///< root mean square along each

  /// A point in the coordinates of the samples.
  SpatialPoint placed(const SpatialPoint& p) const {
    return {frame.origin[0] + frame.extent * p.x, frame.origin[1] + frame.extent * p.y,
            frame.origin[2] + frame.extent * p.z};
  }
  /// A point in the coordinates of the cloud.
  SpatialPoint framed(const SpatialPoint& p) const {
    return (p - SpatialPoint{frame.origin[0], frame.origin[1], frame.origin[2]}) / frame.extent;
  }
};

EstimationStatus notFinite(const SampleView& samples) {
  EstimationStatus status = failedStatus(eEC_InvalidInput, "coordinates that are not finite", 0, 0);
  for (std::size_t i = 0; i < samples.nbSamples; ++i) {
    const omReal64* sample = samples[i];
    if (std::all_of(sample, sample + samples.dimension, [](omReal64 value) { return std::isfinite(value); })) continue;
    status.value += 1;
    if (status.indices.size() < EstimationStatus::s_nbMaxIndices) status.indices.push_back(i);
  }
  return status;
}

/// Directions and lengths of points about their mean, from the triangle of their coordinates.
void spanOf(Cloud& cloud) {
  const auto nbPoints = static_cast<omReal64>(cloud.points.size());
  for (const SpatialPoint& p : cloud.points) cloud.mean = cloud.mean + p / nbPoints;
  TallQr<3> qr;
  std::size_t row = 0;
  for (std::size_t i = 0; i < cloud.points.size(); ++i) {
    const SpatialPoint p = cloud.points[i] - cloud.mean;
    qr.block(0)[row] = p.x;
    qr.block(1)[row] = p.y;
    qr.block(2)[row] = p.z;
    if (++row == qr.s_blockRows || i + 1 == cloud.points.size()) {
      qr.fold(row);
      row = 0;
    }
  }
  const Eigen::Matrix3d triangle(
      Eigen::Map<const Eigen::Matrix<omReal64, 3, 3, Eigen::RowMajor>>(qr.triangle().data()));
  const Eigen::JacobiSVD<Eigen::Matrix3d> svd(triangle, Eigen::ComputeFullV);
  for (int k = 0; k < 3; ++k) {
    const Eigen::Vector3d v = svd.matrixV().col(k);
    cloud.principal[static_cast<std::size_t>(k)] = {v(0), v(1), v(2)};
    cloud.deviation[static_cast<std::size_t>(k)] = svd.singularValues()(k) / std::sqrt(nbPoints);
  }
}

/// The cloud of samples of two or three coordinates, which must span `nbSpanned` dimensions.
EstimationStatus cloudOf(const SampleView& samples, std::size_t dimension, std::size_t nbLeast, int nbSpanned,
                         Cloud& cloud) {
  if (samples.dimension != dimension)
    return failedStatus(eEC_InvalidInput, "dimension of the samples", static_cast<omReal64>(samples.dimension),
                        static_cast<omReal64>(dimension));
  if (samples.nbSamples < nbLeast)
    return failedStatus(eEC_TooFewSamples, "number of samples", static_cast<omReal64>(samples.nbSamples),
                        static_cast<omReal64>(nbLeast));
  if (const EstimationStatus status = notFinite(samples); !status.indices.empty()) return status;
  if (dimension == 2) {
    const CloudFrame<2> flat = cloudFrame<2>(samples, samples.nbSamples);
    cloud.frame.origin = {flat.origin[0], flat.origin[1], 0};
    cloud.frame.extent = flat.extent;
    cloud.frame.coarseness = flat.coarseness;
  } else {
    cloud.frame = cloudFrame<3>(samples, samples.nbSamples);
  }
  if (!(cloud.frame.extent > 0)) return failedStatus(eEC_Coincident, "extent of the samples", cloud.frame.extent, 0);
  cloud.points.reserve(samples.nbSamples);
  const omReal64 scale = 1 / cloud.frame.extent;
  for (std::size_t i = 0; i < samples.nbSamples; ++i) {
    const omReal64* p = samples[i];
    cloud.points.push_back({(p[0] - cloud.frame.origin[0]) * scale, (p[1] - cloud.frame.origin[1]) * scale,
                            dimension == 2 ? 0 : (p[2] - cloud.frame.origin[2]) * scale});
  }
  spanOf(cloud);
  // What rounding of the coordinates alone may span.
  const omReal64 negligible = 4 * cloud.frame.coarseness;
  constexpr std::array<eEstimationCode, 3> codes{eEC_Coincident, eEC_Collinear, eEC_Coplanar};
  for (std::size_t k = 0; k < static_cast<std::size_t>(nbSpanned); ++k)
    if (!(cloud.deviation[k] > negligible))
      return failedStatus(codes[k], "ratio of the extent across to the extent along", cloud.deviation[k], negligible);
  return {};
}

EstimationStatus checkDescent(const Descent& descent) {
  if (!std::isfinite(descent.cost)) return failedStatus(eEC_NotFinite, "sum of squared distances", descent.cost, 0);
  if (!(descent.condition > s_rankThreshold))
    return failedStatus(eEC_RankDeficient, "ratio of the smallest to the largest singular value", descent.condition,
                        s_rankThreshold);
  if (!descent.hasConverged)
    return failedStatus(eEC_NoConvergence, "number of iterations", static_cast<omReal64>(descent.nbIterations),
                        static_cast<omReal64>(s_nbMaxIterations));
  return {};
}

/// Whether the descent has found a shape that can be reported; others are taken only where there is no such.
bool isRegular(const CylinderModel& /*model*/) { return true; }
bool isRegular(const ConeModel& /*model*/) { return true; }
bool isRegular(const TorusModel& model) { return model.minorRadius > 0 && model.majorRadius > model.minorRadius; }

/// Descends from each start on a part of the points, and from the two best ends on all of them.
template <class Model, class MakeStarts>
EstimationStatus descendFromStarts(const Cloud& cloud, const MakeStarts& makeStarts, Model& model) {
  struct End {
    Descent descent;
    Model model;
  };
  std::vector<SpatialPoint> part;
  if (cloud.points.size() <= s_nbStartSamples) {
    part = cloud.points;
  } else {
    // In steps of the golden ratio, as equal ones may coincide with a period of the samples.
    constexpr omReal64 golden = 0.6180339887498949;
    for (std::size_t k = 0; k < s_nbStartSamples; ++k) {
      const omReal64 turn = golden * static_cast<omReal64>(k);
      const auto index =
          static_cast<std::size_t>((turn - std::floor(turn)) * static_cast<omReal64>(cloud.points.size()));
      part.push_back(cloud.points[std::min(index, cloud.points.size() - 1)]);
    }
  }
  const omReal64 exact = std::pow(64 * std::max(cloud.frame.coarseness, 1e-15), 2) * static_cast<omReal64>(part.size());
  const auto isGood = [](const End& end) { return end.descent.condition > s_rankThreshold && isRegular(end.model); };
  std::vector<End> ends;
  for (const Model& start : makeStarts(part)) {
    End end{{}, start};
    end.descent = descend(part, end.model, s_nbStartIterations);
    if (!std::isfinite(end.descent.cost)) continue;
    ends.push_back(end);
    // Samples on such a shape: no other one is better.
    if (end.descent.cost <= exact && isGood(end)) break;
  }
  if (ends.empty()) return failedStatus(eEC_NoConvergence, "number of starts that can be followed", 0, 1);
  const auto isBetter = [&](const End& a, const End& b) {
    return isGood(a) != isGood(b) ? isGood(a) : a.descent.cost < b.descent.cost;
  };
  std::sort(ends.begin(), ends.end(), isBetter);
  End best{{}, ends.front().model};
  for (std::size_t k = 0; k < std::min<std::size_t>(2, ends.size()); ++k) {
    End end{{}, ends[k].model};
    end.descent = descend(cloud.points, end.model, s_nbMaxIterations);
    if (k == 0 || isBetter(end, best)) best = end;
    if (best.descent.cost <= exact) break;
  }
  model = best.model;
  return checkDescent(best.descent);
}

/// Fails with a code where a curvature, in the cloud's frame, bends no more than rounding of the coordinates does.
EstimationStatus checkCurved(const Cloud& cloud, omReal64 curvature, eEstimationCode code) {
  const omReal64 least = 16 * cloud.frame.coarseness;
  if (std::abs(curvature) > least) return {};
  return failedStatus(code, "curvature times extent", std::abs(curvature), least);
}

/// A direction with its component of largest magnitude positive.
SpatialPoint signedDirection(const SpatialPoint& v) {
  omReal64 largest = v.x;
  if (std::abs(v.y) > std::abs(largest)) largest = v.y;
  if (std::abs(v.z) > std::abs(largest)) largest = v.z;
  return largest < 0 ? v * -1.0 : v;
}

/// The circle of a plane with the least squares of distances to the points projected into it, from the algebraic one
/// (Kasa1976), as a model that hangs on one of its points.
template <class Model>
bool planarStart(const Cloud& cloud, const SpatialPoint& normal, const SpatialPoint& along, Model& model) {
  const SurfaceFrame plane = SurfaceFrame::of(cloud.mean, normal, along);
  std::vector<omReal64> flat;
  for (const SpatialPoint& point : cloud.points) {
    const FramePlace p = placeIn(plane, point);
    flat.push_back(p.x);
    flat.push_back(p.y);
  }
  omReal64 x = 0;
  omReal64 y = 0;
  omReal64 radius = 0;
  std::size_t rank = 0;
  if (!circleFromSamples(SampleView{flat.data(), cloud.points.size(), 2}, x, y, radius, rank)) return false;
  const omReal64 distance = euclideanNorm(x, y);
  const SpatialPoint inward =
      distance > 0 ? plane.normal * (x / distance) + plane.across * (y / distance) : plane.normal;
  model = {SurfaceFrame::of(plane.origin + inward * (distance - radius), plane.axis, inward), 1 / radius};
  return true;
}

/// The arc of the circle that holds the feet of all points: the rest of the widest gap.
void spanArc(const std::vector<SpatialPoint>& points, const SpatialPoint& center, PlanarArc& arc) {
  std::vector<omReal64> angles;
  for (const SpatialPoint& p : points) angles.push_back(std::atan2(p.y - center.y, p.x - center.x));
  std::sort(angles.begin(), angles.end());
  omReal64 widest = angles.front() + 2 * s_pi - angles.back();
  arc.startAngle = angles.front();
  for (std::size_t i = 1; i < angles.size(); ++i)
    if (angles[i] - angles[i - 1] > widest) {
      widest = angles[i] - angles[i - 1];
      arc.startAngle = angles[i];
    }
  arc.sweep = 2 * s_pi - widest;
}

/// \name What a descent has found, in the coordinates of the samples
/// @{
EstimationStatus place(const Cloud& cloud, const CylinderModel& model, SpatialCylinder& cylinder) {
  if (const EstimationStatus status = checkCurved(cloud, model.curvature, eEC_Coplanar); !status) return status;
  const SpatialPoint onAxis = model.frame.origin + model.frame.normal / model.curvature;
  const SpatialPoint& axis = model.frame.axis;
  cylinder = {cloud.placed(onAxis + axis * dot(cloud.mean - onAxis, axis)), signedDirection(axis),
              cloud.frame.extent / std::abs(model.curvature)};
  return {};
}

EstimationStatus place(const Cloud& cloud, const ConeModel& model, SpatialCone& cone) {
  if (const EstimationStatus status = checkCurved(cloud, model.curvature, eEC_Coplanar); !status) return status;
  // Its radius grows by `slope` a unit of height from 1 / curvature on.
  const omReal64 slope = model.curvature < 0 ? -std::tan(model.angle) : std::tan(model.angle);
  if (!(std::abs(slope) > 16 * cloud.frame.coarseness))
    return failedStatus(eEC_NotOfThisType, "slope of the surface against its axis", std::abs(slope),
                        16 * cloud.frame.coarseness);
  const SpatialPoint onAxis = model.frame.origin + model.frame.normal / model.curvature;
  cone.apex = cloud.placed(onAxis - model.frame.axis * (1 / (std::abs(model.curvature) * slope)));
  cone.direction = slope > 0 ? model.frame.axis : model.frame.axis * -1.0;
  cone.halfAngle = std::atan(std::abs(slope));
  return {};
}

EstimationStatus place(const Cloud& cloud, const TorusModel& model, SpatialTorus& torus) {
  if (!(model.minorRadius > 0)) return failedStatus(eEC_NullRadius, "radius of the tube", model.minorRadius, 0);
  if (!(model.majorRadius > model.minorRadius))
    return failedStatus(eEC_NotOfThisType, "ratio of the radius of the ring to that of the tube",
                        model.majorRadius / model.minorRadius, 1);
  torus = {cloud.placed(model.frame.origin), signedDirection(model.frame.axis), cloud.frame.extent * model.majorRadius,
           cloud.frame.extent * model.minorRadius};
  return {};
}
/// @}

/// \name The model of a shape, in the coordinates of the cloud
/// @{

/// A frame on the surface at a distance from an axis through a point, seen from a place where points are.
SurfaceFrame frameOnSurface(const SpatialPoint& place, const SpatialPoint& onAxis, const SpatialPoint& axis,
                            omReal64 radius) {
  SpatialPoint inward = onAxis - place;
  inward = inward - axis * dot(inward, axis);
  const omReal64 distance = std::sqrt(dot(inward, inward));
  inward = distance > 0 ? inward / distance : normalized(cross(axis, anyAcross(axis)));
  return SurfaceFrame::of(place + inward * (distance - radius), axis, inward);
}

CylinderModel modelOf(const Cloud& cloud, const SpatialCylinder& cylinder) {
  const omReal64 radius = cylinder.radius / cloud.frame.extent;
  return {frameOnSurface(cloud.mean, cloud.framed(cylinder.point), cylinder.direction, radius), 1 / radius};
}

ConeModel modelOf(const Cloud& cloud, const SpatialCone& cone) {
  const SpatialPoint apex = cloud.framed(cone.apex);
  // At the height of the points, in front of the apex.
  const omReal64 height = std::max(dot(cloud.mean - apex, cone.direction), 0.1);
  const omReal64 radius = height * std::tan(cone.halfAngle);
  const SpatialPoint beyond = cloud.mean + cone.direction * (height - dot(cloud.mean - apex, cone.direction));
  return {frameOnSurface(beyond, apex, cone.direction, radius), 1 / radius, cone.halfAngle};
}

TorusModel modelOf(const Cloud& cloud, const SpatialTorus& torus) {
  return {SurfaceFrame::of(cloud.framed(torus.center), torus.axis, anyAcross(torus.axis)),
          torus.majorRadius / cloud.frame.extent, torus.minorRadius / cloud.frame.extent};
}
/// @}

/// A shape from samples, descended to from the starts that `makeStarts` finds.
template <class Model, class MakeStarts, class Shape>
EstimationStatus surfaceFromSamples(const SampleView& samples, const MakeStarts& makeStarts, Shape& shape) {
  Cloud cloud;
  if (const EstimationStatus status = cloudOf(samples, 3, Model::s_nbParameters, 3, cloud); !status) return status;
  Model model{};
  if (const EstimationStatus status = descendFromStarts(cloud, makeStarts, model); !status) return status;
  return place(cloud, model, shape);
}

/// The same from a near shape.
template <class Shape>
EstimationStatus refinedSurface(const SampleView& samples, Shape& shape) {
  Cloud cloud;
  using Model = decltype(modelOf(cloud, shape));
  if (const EstimationStatus status = cloudOf(samples, 3, Model::s_nbParameters, 3, cloud); !status) return status;
  Model model = modelOf(cloud, shape);
  if (const EstimationStatus status = checkDescent(descend(cloud.points, model, s_nbMaxIterations)); !status)
    return status;
  return place(cloud, model, shape);
}

}  // namespace

EstimationStatus lineFromSamples(const SampleView& samples, SpatialLine& line) {
  Cloud cloud;
  if (const EstimationStatus status = cloudOf(samples, 3, 2, 1, cloud); !status) return status;
  line = {cloud.placed(cloud.mean), signedDirection(cloud.principal[0])};
  return {};
}

EstimationStatus planeFromSamples(const SampleView& samples, SpatialPoint& mean, SpatialPoint& normal) {
  Cloud cloud;
  if (const EstimationStatus status = cloudOf(samples, 3, 3, 2, cloud); !status) return status;
  mean = cloud.placed(cloud.mean);
  normal = signedDirection(cloud.principal[2]);
  return {};
}

EstimationStatus circleFromSamples(const SampleView& samples, SpatialCircle& circle) {
  Cloud cloud;
  if (const EstimationStatus status = cloudOf(samples, 3, 3, 2, cloud); !status) return status;
  CircleModel model{};
  if (!planarStart(cloud, cloud.principal[2], cloud.principal[0], model))
    return failedStatus(eEC_Collinear, "rank", 2, 3);
  if (const EstimationStatus status = checkDescent(descend(cloud.points, model, s_nbMaxIterations)); !status)
    return status;
  if (const EstimationStatus status = checkCurved(cloud, model.curvature, eEC_Collinear); !status) return status;
  circle = {cloud.placed(model.frame.origin + model.frame.normal / model.curvature), signedDirection(model.frame.axis),
            cloud.frame.extent / std::abs(model.curvature)};
  return {};
}

EstimationStatus arcFromSamples(const SampleView& samples, PlanarArc& arc) {
  Cloud cloud;
  if (const EstimationStatus status = cloudOf(samples, 2, 3, 2, cloud); !status) return status;
  PlanarCircleModel model{};
  if (!planarStart(cloud, {0, 0, 1}, {1, 0, 0}, model)) return failedStatus(eEC_Collinear, "rank", 2, 3);
  if (const EstimationStatus status = checkDescent(descend(cloud.points, model, s_nbMaxIterations)); !status)
    return status;
  if (const EstimationStatus status = checkCurved(cloud, model.curvature, eEC_Collinear); !status) return status;
  const SpatialPoint center = model.frame.origin + model.frame.normal / model.curvature;
  const SpatialPoint placed = cloud.placed(center);
  arc.center = {placed.x, placed.y};
  arc.radius = cloud.frame.extent / std::abs(model.curvature);
  spanArc(cloud.points, center, arc);
  return {};
}

EstimationStatus sphereFromSamples(const SampleView& samples, SpatialSphere& sphere) {
  Cloud cloud;
  if (const EstimationStatus status = cloudOf(samples, 3, 4, 3, cloud); !status) return status;
  std::vector<omReal64> local;
  for (const SpatialPoint& p : cloud.points) local.insert(local.end(), {p.x, p.y, p.z});
  SpatialPoint center{};
  omReal64 radius = 0;
  std::size_t rank = 0;
  if (!ormix::sphereFromSamples(SampleView{local.data(), cloud.points.size(), 3}, center.x, center.y, center.z, radius,
                                rank))
    return failedStatus(eEC_RankDeficient, "rank", static_cast<omReal64>(rank), 4);
  const SpatialPoint toCenter = center - cloud.mean;
  const SpatialPoint inward = dot(toCenter, toCenter) > 0 ? normalized(toCenter) : cloud.principal[0];
  SphereModel model{SurfaceFrame::of(center - inward * radius, cross(inward, anyAcross(inward)), inward), 1 / radius};
  if (const EstimationStatus status = checkDescent(descend(cloud.points, model, s_nbMaxIterations)); !status)
    return status;
  if (const EstimationStatus status = checkCurved(cloud, model.curvature, eEC_Coplanar); !status) return status;
  sphere = {cloud.placed(model.frame.origin + model.frame.normal / model.curvature),
            cloud.frame.extent / std::abs(model.curvature)};
  return {};
}

EstimationStatus cylinderFromSamples(const SampleView& samples, SpatialCylinder& cylinder) {
  return surfaceFromSamples<CylinderModel>(samples, cylinderStarts, cylinder);
}

EstimationStatus coneFromSamples(const SampleView& samples, SpatialCone& cone) {
  return surfaceFromSamples<ConeModel>(samples, coneStarts, cone);
}

EstimationStatus torusFromSamples(const SampleView& samples, SpatialTorus& torus) {
  return surfaceFromSamples<TorusModel>(samples, torusStarts, torus);
}

EstimationStatus refineCylinder(const SampleView& samples, SpatialCylinder& cylinder) {
  return refinedSurface(samples, cylinder);
}

EstimationStatus refineCone(const SampleView& samples, SpatialCone& cone) { return refinedSurface(samples, cone); }

EstimationStatus refineTorus(const SampleView& samples, SpatialTorus& torus) { return refinedSurface(samples, torus); }

}  // namespace ormix
