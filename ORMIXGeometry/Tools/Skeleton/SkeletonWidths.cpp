#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Skeleton/SkeletonWidths.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace ormix::geom {

namespace {

/// Adds widths edge by edge.
class WidthSums {
 public:
  void add(const AxisCurve& curve) {
    const omReal64 length = curve.length();
    _length += length;
    _integral += length * meanRadius(curve);
    _least = std::min(_least, curve.leastRadius());
    _greatest = std::max({_greatest, curve.radius(0), curve.radius(1)});
  }

  SkeletonWidths result() const {
    SkeletonWidths widths;
    if (!std::isfinite(_least)) return widths;
    widths.least = 2 * _least;
    widths.greatest = 2 * _greatest;
    widths.mean = _length > 0 ? 2 * _integral / _length : widths.least;
    return widths;
  }

  /// Adds the lengths of an edge to the bins of its widths, in pieces of even width within one edge.
  static void addToHistogram(const AxisCurve& curve, SkeletonWidths& widths) {
    constexpr int s_nbPieces = 16;
    const omReal64 range = widths.greatest - widths.least;
    const auto nbBins = static_cast<omReal64>(widths.histogram.size());
    for (int i = 0; i < s_nbPieces; ++i) {
      const omReal64 from = omReal64(i) / s_nbPieces, to = omReal64(i + 1) / s_nbPieces;
      const omReal64 width = 2 * curve.radius((from + to) / 2);
      const omReal64 bin = range > 0 ? (width - widths.least) / range * nbBins : 0;
      widths.histogram[static_cast<std::size_t>(std::clamp(bin, 0.0, nbBins - 1))] += curve.length(from, to);
    }
  }

 private:
  /// The mean over the length, by Gauss's rule with five points in s; exact for radii that are linear in the length.
  static omReal64 meanRadius(const AxisCurve& curve) {
    constexpr std::array<omReal64, 5> nodes{0.046910077030668004, 0.23076534494715845, 0.5, 0.76923465505284155,
                                            0.953089922969332};
    constexpr std::array<omReal64, 5> weights{0.11846344252809454, 0.23931433524968324, 0.28444444444444444,
                                              0.23931433524968324, 0.11846344252809454};
    omReal64 sum = 0, total = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      const omReal64 s = nodes[i], weight = weights[i] * curve.speed(s);
      sum += weight * curve.radius(s);
      total += weight;
    }
    return total > 0 ? sum / total : curve.radius(0);
  }

  omReal64 _length = 0;
  omReal64 _integral = 0;
  omReal64 _least = std::numeric_limits<omReal64>::infinity();
  omReal64 _greatest = 0;
};

template <class VisitCurves>
SkeletonWidths widthsOf(VisitCurves visitCurves, std::size_t nbBins) {
  WidthSums sums;
  visitCurves([&sums](const AxisCurve& curve) { sums.add(curve); });
  SkeletonWidths widths = sums.result();
  widths.histogram.assign(nbBins, 0);
  if (nbBins > 0) visitCurves([&widths](const AxisCurve& curve) { WidthSums::addToHistogram(curve, widths); });
  return widths;
}

}  // namespace

SkeletonWidths widthsAlong(const Skeleton2d& skeleton, const SkeletonPath& path, std::size_t nbBins) {
  const auto visitCurves = [&](auto visit) {
    for (const SkeletonStep& step : path.steps) visit(skeleton.getCurve(step.edgeIdx));
  };
  return widthsOf(visitCurves, nbBins);
}

SkeletonWidths widthsAlong(const Skeleton2d& skeleton, std::size_t nbBins) {
  const auto visitCurves = [&](auto visit) {
    for (std::size_t e = 0; e < skeleton.getNbEdges(); ++e) visit(skeleton.getCurve(e));
  };
  return widthsOf(visitCurves, nbBins);
}

std::vector<Circle2d<omReal64>> samplePath(const Skeleton2d& skeleton, const SkeletonPath& path, omReal64 step) {
  constexpr omReal64 s_mostPoints = std::numeric_limits<omUInt32>::max();
  if (!(step > 0) || !(path.length / step < s_mostPoints))
    logAndThrow(
        "A path of length " + std::to_string(path.length) + " cannot be sampled with the step " + std::to_string(step),
        __func__, __FILE__, __LINE__);
  const SkeletonVertex2d& first = skeleton.getVertex(path.startVertexIdx);
  std::vector<Circle2d<omReal64>> samples{{first.getPoint(), first.getRadius()}};
  const omReal64 nbParts = std::ceil(path.length / step);
  omReal64 before = 0;  // length of the steps passed
  for (const SkeletonStep& at : path.steps) {
    const AxisCurve curve = skeleton.getCurve(at.edgeIdx);
    const omReal64 length = curve.length();
    while (static_cast<omReal64>(samples.size()) < nbParts) {
      const omReal64 next = path.length * (static_cast<omReal64>(samples.size()) / nbParts) - before;
      if (next > length) break;
      const omReal64 s = curve.parameterAt(at.isReversed ? length - next : next);
      const PlanarPoint point = curve.point(s);
      samples.emplace_back(Point2dData<omReal64>(point.x, point.y), curve.radius(s));
    }
    before += length;
  }
  if (path.steps.empty() || !(path.length > 0)) return samples;
  const SkeletonVertex2d& last = skeleton.getVertex(path.endVertexIdx);
  samples.emplace_back(last.getPoint(), last.getRadius());
  return samples;
}

}  // namespace ormix::geom
