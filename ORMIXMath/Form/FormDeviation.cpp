#include <ORMIXMath/Enclosing/SmallestBall.h>
#include <ORMIXMath/Fitting/CloudFrame.h>
#include <ORMIXMath/Fitting/SpatialShapesFromSamples.h>
#include <ORMIXMath/Form/FormDeviation.h>

#include <algorithm>
#include <cmath>

#include "FormCandidates.h"
#include "FormModels.h"
#include "MinimaxDescent.h"
#include "ZoneSearch.h"

namespace ormix {

namespace {

using namespace detail;

/// Points about their middle, divided by their extent: where elements are searched.
struct FormCloud {
  CloudFrame<3> frame;
  std::vector<SpatialPoint> points;

  explicit FormCloud(const SampleView& samples) {
    if (samples.dimension == 2) {
      const CloudFrame<2> flat = cloudFrame<2>(samples, samples.nbSamples);
      frame.origin = {flat.origin[0], flat.origin[1], 0};
      frame.extent = flat.extent;
    } else {
      frame = cloudFrame<3>(samples, samples.nbSamples);
    }
    points.reserve(samples.nbSamples);
    const omReal64 scale = 1 / frame.extent;
    for (std::size_t i = 0; i < samples.nbSamples; ++i) {
      const omReal64* p = samples[i];
      points.push_back({(p[0] - frame.origin[0]) * scale, (p[1] - frame.origin[1]) * scale,
                        samples.dimension == 2 ? 0 : (p[2] - frame.origin[2]) * scale});
    }
  }

  SpatialPoint inside(const SpatialPoint& p) const {
    return SpatialPoint{p.x - frame.origin[0], p.y - frame.origin[1], p.z - frame.origin[2]} / frame.extent;
  }
  SpatialPoint placed(const SpatialPoint& p) const {
    return {frame.origin[0] + frame.extent * p.x, frame.origin[1] + frame.extent * p.y,
            frame.origin[2] + frame.extent * p.z};
  }
};

/// The goal of a reference; nothing is minimised for least squares.
MinimaxGoal goalOf(eFormReference reference) {
  return {reference == eFR_MaximumInscribed ? 0.0 : 1.0, reference == eFR_MinimumCircumscribed ? 0.0 : 1.0};
}

bool isOneOf(eFormReference reference, int nbReferences) { return reference >= 0 && reference < nbReferences; }

EstimationStatus noReference(eFormReference reference, int nbReferences) {
  return failedStatus(eEC_InvalidInput, "reference of the form", reference, nbReferences - 1);
}

/// The best of the elements to which descents from the starts lead; the first one itself for least squares.
template <class Model>
Model bestOf(const std::vector<SpatialPoint>& points, eFormReference reference, const std::vector<Model>& starts,
             eFormOptimum optimum, FormDeviation& form) {
  form.reference = reference;
  Model best = starts.front();
  if (reference != eFR_LeastSquares) {
    const MinimaxGoal goal = goalOf(reference);
    MinimaxEnd bestEnd;
    for (const Model& start : starts) {
      Model model = start;
      MinimaxEnd end = descendMinimax(points, goal, model);
      if (!(end.value < bestEnd.value)) continue;
      best = model;
      bestEnd = std::move(end);
    }
    form.optimum = optimum;
    form.imbalance = bestEnd.imbalance;
    for (const MinimaxContact& contact : bestEnd.contacts)
      form.contacts.push_back({contact.point, contact.side, contact.multiplier});
    std::sort(form.contacts.begin(), form.contacts.end(), [](const FormContact& a, const FormContact& b) {
      return a.side != b.side ? a.side > b.side : a.index < b.index;
    });
  }
  return best;
}

/// The centre of least squares, where it is so far away that distances differ by rounding only, moved nearer: the
/// points lie along a line or plane as well.
template <std::size_t D>
CenterModel<D> centerWithinReach(const FormCloud& cloud, const SpatialPoint& center, omReal64& radius) {
  constexpr omReal64 farthest = 1e6;
  const CenterModel<D> model{cloud.inside(center)};
  const omReal64 away = centerAway(model);
  if (!(away > farthest)) return model;
  radius -= (away - farthest) * cloud.frame.extent;
  return {model.center * (farthest / away)};
}

/// Moves a model to that of the best zone.
template <class Model>
eFormOptimum moveToBestZone(const std::vector<SpatialPoint>& points, Model& model) {
  descendMinimax(points, goalOf(eFR_MinimumZone), model);
  return findZone(points, model) ? eFO_Global : eFO_Local;
}

/// Sets distances and deviation of an element, in the unit of the points.
template <class Model>
void measure(const FormCloud& cloud, const Model& model, FormDeviation& form) {
  const DistanceRange range = rangeOf(model, cloud.points);
  form.lowest = range.lowest * cloud.frame.extent;
  form.highest = range.highest * cloud.frame.extent;
  form.deviation = (range.highest - range.lowest) * cloud.frame.extent;
}

/// Moves the reference point of a line or plane, from which distances along `across` were measured, to the middle.
void centre(FormDeviation& form, const SpatialPoint& across) {
  const omReal64 middle = form.reference == eFR_LeastSquares ? 0 : (form.lowest + form.highest) / 2;
  form.point = form.point + across * middle;
  form.lowest -= middle;
  form.highest -= middle;
}

void setRadius(FormDeviation& form, omReal64 leastSquaresRadius) {
  switch (form.reference) {
    case eFR_LeastSquares:
      form.radius = leastSquaresRadius;
      return;
    case eFR_MinimumZone:
      form.radius = (form.lowest + form.highest) / 2;
      return;
    case eFR_MaximumInscribed:
      form.radius = form.lowest;
      return;
    case eFR_MinimumCircumscribed:
      form.radius = form.highest;
      return;
  }
}

/// Whether an inscribed element has ended, and does not grow without end beside or between the points.
EstimationStatus checkInscribed(const FormDeviation& form) {
  // Of contacts that hold the element nothing but rounding remains.
  constexpr omReal64 largestImbalance = 1e-6;
  if (form.reference != eFR_MaximumInscribed || form.imbalance <= largestImbalance) return {};
  return failedStatus(eEC_NotOfThisType, "imbalance of the contacts of the inscribed element", form.imbalance,
                      largestImbalance);
}

/// Points of the plane as points of space, for the fits of lines.
std::vector<omReal64> raised(const SampleView& samples) {
  std::vector<omReal64> xyz;
  xyz.reserve(3 * samples.nbSamples);
  for (std::size_t i = 0; i < samples.nbSamples; ++i) xyz.insert(xyz.end(), {samples[i][0], samples[i][1], 0});
  return xyz;
}

}  // namespace

EstimationStatus planarStraightness(const SampleView& samples, eFormReference reference, FormDeviation& result) {
  if (!isOneOf(reference, 2)) return noReference(reference, 2);
  if (samples.dimension != 2)
    return failedStatus(eEC_InvalidInput, "dimension of the samples", static_cast<omReal64>(samples.dimension), 2);
  SpatialLine line;
  const std::vector<omReal64> xyz = raised(samples);
  if (EstimationStatus status = lineFromSamples({xyz.data(), samples.nbSamples, 3}, line); !status) return status;
  const FormCloud cloud(samples);
  const SpatialPoint up{0, 0, 1};
  const SpatialPoint mean = cloud.inside(line.point);
  std::vector<PlanarLineModel> starts{{SurfaceFrame::of(mean, up, cross(up, line.direction))}};
  if (reference == eFR_MinimumZone)
    for (const SpatialPoint& normal : thinnestDirectionsOfPlane(cloud.points))
      starts.push_back({SurfaceFrame::of(mean, up, normal)});
  FormDeviation form;
  const PlanarLineModel model = bestOf(cloud.points, reference, starts, eFO_Global, form);
  measure(cloud, model, form);
  form.point = cloud.placed(model.frame.origin);
  // Without zeros of negative sign.
  form.direction = cross(model.frame.normal, up) + SpatialPoint{0, 0, 0};
  centre(form, model.frame.normal);
  result = std::move(form);
  return {};
}

EstimationStatus spatialStraightness(const SampleView& samples, eFormReference reference, FormDeviation& result) {
  if (!isOneOf(reference, 2)) return noReference(reference, 2);
  SpatialLine line;
  if (EstimationStatus status = lineFromSamples(samples, line); !status) return status;
  const FormCloud cloud(samples);
  const AxisModel start{SurfaceFrame::of(cloud.inside(line.point), line.direction, anyAcross(line.direction))};
  FormDeviation form;
  const eFormReference zone = reference == eFR_LeastSquares ? eFR_LeastSquares : eFR_MinimumCircumscribed;
  const AxisModel model = bestOf<AxisModel>(cloud.points, zone, {start}, eFO_Local, form);
  measure(cloud, model, form);
  form.reference = reference;
  form.radius = form.highest;
  form.deviation = 2 * form.highest;
  form.point = cloud.placed(model.frame.origin);
  form.direction = model.frame.axis;
  result = std::move(form);
  return {};
}

EstimationStatus flatness(const SampleView& samples, eFormReference reference, FormDeviation& result) {
  if (!isOneOf(reference, 2)) return noReference(reference, 2);
  SpatialPoint mean{};
  SpatialPoint normal{};
  if (EstimationStatus status = planeFromSamples(samples, mean, normal); !status) return status;
  const FormCloud cloud(samples);
  PlaneModel start{SurfaceFrame::of(cloud.inside(mean), normal, anyAcross(normal))};
  const eFormOptimum optimum = reference == eFR_MinimumZone ? moveToBestZone(cloud.points, start) : eFO_None;
  FormDeviation form;
  const PlaneModel model = bestOf<PlaneModel>(cloud.points, reference, {start}, optimum, form);
  measure(cloud, model, form);
  form.point = cloud.placed(model.frame.origin);
  form.direction = model.frame.axis;
  centre(form, form.direction);
  result = std::move(form);
  return {};
}

EstimationStatus roundness(const SampleView& samples, eFormReference reference, FormDeviation& result) {
  if (!isOneOf(reference, 4)) return noReference(reference, 4);
  PlanarArc arc;
  if (EstimationStatus status = arcFromSamples(samples, arc); !status) return status;
  const FormCloud cloud(samples);
  using Model = CenterModel<2>;
  std::vector<Model> starts{centerWithinReach<2>(cloud, {arc.center.x, arc.center.y, 0}, arc.radius)};
  eFormOptimum optimum = eFO_Global;
  if (reference == eFR_MinimumZone) {
    optimum = moveToBestZone(cloud.points, starts.front());
  } else if (reference == eFR_MinimumCircumscribed) {
    EnclosingCircle circle;
    smallestEnclosingCircle(samples.data, samples.nbSamples, circle);
    starts = {{cloud.inside({circle.center[0], circle.center[1], 0})}};
  } else if (reference == eFR_MaximumInscribed) {
    const std::vector<SpatialPoint> centers = inscribedCenters(cloud.points, starts.front().center);
    if (centers.empty())
      return failedStatus(eEC_NotOfThisType, "number of empty circles that their points surround", 0, 1);
    starts.clear();
    for (const SpatialPoint& center : centers) starts.push_back({center});
  }
  FormDeviation form;
  const Model model = bestOf(cloud.points, reference, starts, optimum, form);
  measure(cloud, model, form);
  if (EstimationStatus status = checkInscribed(form); !status) return status;
  form.point = cloud.placed(model.center);
  setRadius(form, arc.radius);
  result = std::move(form);
  return {};
}

EstimationStatus sphericity(const SampleView& samples, eFormReference reference, FormDeviation& result) {
  if (!isOneOf(reference, 4)) return noReference(reference, 4);
  SpatialSphere sphere;
  if (EstimationStatus status = sphereFromSamples(samples, sphere); !status) return status;
  const FormCloud cloud(samples);
  using Model = CenterModel<3>;
  std::vector<Model> starts{centerWithinReach<3>(cloud, sphere.center, sphere.radius)};
  eFormOptimum optimum = eFO_Global;
  if (reference == eFR_MinimumZone) {
    optimum = moveToBestZone(cloud.points, starts.front());
  } else if (reference != eFR_LeastSquares) {
    EnclosingSphere ball;
    smallestEnclosingSphere(samples.data, samples.nbSamples, ball);
    const Model enclosing{cloud.inside({ball.center[0], ball.center[1], ball.center[2]})};
    if (reference == eFR_MinimumCircumscribed) starts.clear();
    if (reference == eFR_MaximumInscribed) optimum = eFO_Local;
    starts.push_back(enclosing);
  }
  FormDeviation form;
  const Model model = bestOf(cloud.points, reference, starts, optimum, form);
  measure(cloud, model, form);
  if (EstimationStatus status = checkInscribed(form); !status) return status;
  form.point = cloud.placed(model.center);
  setRadius(form, sphere.radius);
  result = std::move(form);
  return {};
}

EstimationStatus cylindricity(const SampleView& samples, eFormReference reference, FormDeviation& result) {
  if (!isOneOf(reference, 4)) return noReference(reference, 4);
  SpatialCylinder cylinder;
  if (EstimationStatus status = cylinderFromSamples(samples, cylinder); !status) return status;
  const FormCloud cloud(samples);
  const SpatialPoint& along = cylinder.direction;
  std::vector<AxisModel> starts{{SurfaceFrame::of(cloud.inside(cylinder.point), along, anyAcross(along))}};
  if (reference != eFR_LeastSquares)
    for (const eFormReference other : {eFR_MinimumZone, eFR_MaximumInscribed, eFR_MinimumCircumscribed}) {
      if (other == reference) continue;
      AxisModel model = starts.front();
      descendMinimax(cloud.points, goalOf(other), model);
      starts.push_back(model);
    }
  FormDeviation form;
  const AxisModel model = bestOf(cloud.points, reference, starts, eFO_Local, form);
  measure(cloud, model, form);
  if (EstimationStatus status = checkInscribed(form); !status) return status;
  form.point = cloud.placed(model.frame.origin);
  form.direction = model.frame.axis;
  setRadius(form, cylinder.radius);
  result = std::move(form);
  return {};
}

}  // namespace ormix
