#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Estimation/ReportedModels.h>
#include <ORMIXGeometry/Estimation/Uncertainty.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PerimeterMsr2d.h>
#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Distance/PlanarDistance.h>
#include <ORMIXGeometry/Tools/Distance/SpatialDistance.h>
#include <ORMIXMath/Algebra/EigenDecomposition.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <boost/numeric/ublas/matrix.hpp>
#include <cmath>
#include <functional>
#include <limits>
#include <ostream>
#include <utility>

namespace ormix::geom {

using detail::Values;

namespace {

constexpr omReal64 s_nan = std::numeric_limits<omReal64>::quiet_NaN();

/// Whether the parameters of a report are numbers and its covariance is one of them.
BoolResult checkReport(const FitReport& report) {
  const std::size_t n = report.params.size();
  if (n == 0 || report.covariance.size() != n * n)
    return failure("The report of a \"" + report.model + "\" has " + std::to_string(n) + " parameters and " +
                   std::to_string(report.covariance.size()) + " elements of a covariance");
  if (!std::all_of(report.params.begin(), report.params.end(), [](omReal64 value) { return std::isfinite(value); }))
    return failure("The report of a \"" + report.model + "\" has a parameter that is NaN or infinite");
  return {};
}

/// A step along a principal axis of a covariance, by one standard deviation.
struct PrincipalStep {
  Values step;
  std::size_t largest = 0;  ///< the parameter that moves most, in its standard deviations
};

/// The steps of a covariance; false where it is unknown.
bool principalSteps(const FitReport& report, std::vector<PrincipalStep>& steps) {
  const std::size_t n = report.params.size();
  // Parameters have different units: the axes are those of the correlations.
  Values deviations(n);
  for (std::size_t i = 0; i < n; ++i) deviations[i] = std::sqrt(report.covariance[i * (n + 1)]);
  RealMatrix correlations(n, n);
  for (std::size_t r = 0; r < n; ++r)
    for (std::size_t c = 0; c <= r; ++c) {
      const omReal64 product = deviations[r] * deviations[c];
      if (std::isnan(product)) return false;
      correlations(r, c) = correlations(c, r) = product > 0 ? report.covariance[r * n + c] / product : r == c;
    }
  RealVector values;
  RealMatrix vectors;
  if (!eigenDecomposition(correlations, values, vectors)) return false;
  for (std::size_t k = 0; k < n; ++k) {
    // What rounding leaves of directions that cannot move.
    if (!(values(k) > static_cast<omReal64>(n) * NumericLimits<omReal64>::s_eps * values(n - 1))) continue;
    PrincipalStep step{Values(n)};
    for (std::size_t i = 0; i < n; ++i) {
      step.step[i] = deviations[i] * vectors(i, k) * std::sqrt(values(k));
      if (std::abs(vectors(i, k)) > std::abs(vectors(step.largest, k))) step.largest = i;
    }
    if (step.step[step.largest] != 0) steps.push_back(std::move(step));
  }
  return true;
}

/// What part of a step is taken: a sixteenth, or what makes differences more than rounding.
omReal64 partOf(const Values& params, const PrincipalStep& step) {
  constexpr omReal64 roundings = 0x1p17;
  const omReal64 rounding = NumericLimits<omReal64>::s_eps * std::abs(params[step.largest]);
  return std::max(0.0625, roundings * rounding / std::abs(step.step[step.largest]));
}

/// A function of the parameters of one or two reports; false where it has no value, with the reason.
using Function = std::function<BoolResult(const std::vector<Values>& params, Values& values)>;
/// Moves values to the representation that is nearest to a reference, as angles are.
using Nearest = std::function<void(const Values& reference, Values& values)>;

/// The values of the function and their covariance, row-major.
BoolResult propagate(const std::vector<const FitReport*>& reports, const Function& function, const Nearest& nearest,
                     Values& values, Values& covariance) {
  std::vector<Values> params;
  for (const FitReport* report : reports) {
    const BoolResult checked = checkReport(*report);
    if (!checked) return checked;
    params.push_back(report->params);
  }
  // What has no direction, or no distance, throws.
  const auto evaluate = [&](Values& to) -> BoolResult {
    try {
      return function(params, to);
    } catch (const ORMIXGeometryException& exception) {
      return failure(exception.what());
    }
  };
  BoolResult result = evaluate(values);
  if (!result) return result;
  const std::size_t n = values.size();
  covariance.assign(n * n, 0);
  for (std::size_t r = 0; r < reports.size(); ++r) {
    std::vector<PrincipalStep> steps;
    if (!principalSteps(*reports[r], steps)) {
      covariance.assign(n * n, s_nan);
      break;
    }
    for (const PrincipalStep& step : steps) {
      const omReal64 part = partOf(params[r], step);
      Values above, below;
      const auto at = [&](omReal64 factor, Values& moved) {
        for (std::size_t i = 0; i < step.step.size(); ++i) params[r][i] = reports[r]->params[i] + factor * step.step[i];
        const BoolResult done = evaluate(moved);
        params[r] = reports[r]->params;
        if (done) nearest(values, moved);
        return done;
      };
      result = at(part, above);
      if (result) result = at(-part, below);
      if (!result) return result;
      for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j)
          covariance[i * n + j] += (above[i] - below[i]) * (above[j] - below[j]) / (4 * part * part);
    }
  }
  return {};
}

/// Calls `use` with the tag of the class of the reported entity.
template <class Use>
BoolResult withEntity(const FitReport& report, const Values& params, const Use& use) {
  BoolResult result = failure("A \"" + report.model + "\" with " + std::to_string(params.size()) +
                              " parameters is no entity that is fitted");
  detail::callReported(detail::ReportedEntities(), report.model, params.size(), [&](auto tag) { result = use(tag); });
  return result;
}

BoolResult endsMatter(const FitReport& report, const char* what) {
  return failure("A \"" + report.model + "\" is fitted without its ends, on which its " + what + " depends");
}

/// \name Measures: their names, whether an entity has them, and what they are.
/// @{
struct AreaOf {
  static constexpr const char* s_name = "area";
  template <class Entity>
  static constexpr bool isDefined() {
    if constexpr (detail::s_isPlanar<Entity>)
      return s_planarMeasuresOf<Entity>.area;
    else
      return s_spatialMeasuresOf<Entity>.area;
  }
  template <class Entity>
  static omReal64 measure(const Entity& entity) {
    if constexpr (detail::s_isPlanar<Entity>)
      return AreaMsr2d::measure(entity);
    else
      return AreaMsr3d::measure(entity);
  }
};
struct PerimeterOf {
  static constexpr const char* s_name = "perimeter";
  template <class Entity>
  static constexpr bool isDefined() {
    if constexpr (detail::s_isPlanar<Entity>)
      return s_planarMeasuresOf<Entity>.perimeter;
    else
      return false;
  }
  template <class Entity>
  static omReal64 measure(const Entity& entity) {
    return PerimeterMsr2d::measure(entity);
  }
};
struct VolumeOf {
  static constexpr const char* s_name = "volume";
  template <class Entity>
  static constexpr bool isDefined() {
    if constexpr (detail::s_isPlanar<Entity>)
      return false;
    else
      return s_spatialMeasuresOf<Entity>.volume;
  }
  template <class Entity>
  static omReal64 measure(const Entity& entity) {
    return VolumeMsr3d::measure(entity);
  }
};
/// @}

/// A measure of the entity.
template <class Measure>
BoolResult measured(const FitReport& report, UncertainValue& value) {
  const Function function = [&](const std::vector<Values>& params, Values& values) {
    return withEntity(report, params[0], [&](auto tag) -> BoolResult {
      using Entity = typename decltype(tag)::Type;
      if constexpr (!Measure::template isDefined<Entity>())
        return failure("A \"" + report.model + "\" has no " + Measure::s_name);
      else if constexpr (detail::s_hasOpenEnds<Entity>)
        return endsMatter(report, Measure::s_name);
      else
        values = {Measure::measure(detail::Reported<Entity>::made(params[0]))};
      return {};
    });
  };
  Values values, covariance;
  BoolResult result = propagate(
      {&report}, function, [](const Values&, Values&) {}, values, covariance);
  if (result) value = {values[0], std::sqrt(covariance[0])};
  return result;
}

/// The image of an entity by a transform as an object.
template <class Entity, class Transform>
BoolResult imageOf(const Values& params, const Transform& transform, Values& values) {
  if constexpr (!std::is_base_of_v<typename detail::SpaceOf<Entity>::Transform, Transform>)
    return failure("An entity and its transform must both be of the plane or of space");
  else if constexpr (isListed<Entity>(ClassList<Line3d, Cylinder3d<omReal64>, Cone3d<omReal64>>()))
    return detail::imageOfAxis<Entity>(params, transform, values);
  else
    return detail::imageOf<Entity>(params, transform, values);
}

/// Sets what the report on an image has.
BoolResult imageReport(const FitReport& report, const std::vector<const FitReport*>& reports, const Function& function,
                       FitReport& image) {
  FitReport found;
  const Nearest nearest = [&](const Values& reference, Values& values) {
    detail::nearestRepresentation(report.model, reference, values);
  };
  BoolResult result = propagate(reports, function, nearest, found.params, found.covariance);
  if (!result) return result;
  found.model = report.model;
  found.parameterNames = report.parameterNames;
  found.method = report.method;
  found.sigma0 = report.sigma0;
  found.degreesOfFreedom = report.degreesOfFreedom;
  image = std::move(found);
  return result;
}

template <class Transform>
BoolResult transformedBy(const FitReport& report, const Transform& transform, FitReport& image) {
  const Function function = [&](const std::vector<Values>& params, Values& values) {
    return withEntity(report, params[0],
                      [&](auto tag) { return imageOf<typename decltype(tag)::Type>(params[0], transform, values); });
  };
  return imageReport(report, {&report}, function, image);
}

/// Whether entities meet wherever they are not parallel, as rounding decides: what is between them then has no variance
/// of first order.
template <class First, class Second>
constexpr bool s_areParallelIfApart = (std::is_same_v<First, Plan3d> &&
                                       isListed<Second>(ClassList<Plan3d, Line3d>())) ||
                                      (std::is_same_v<First, Line3d> && std::is_same_v<Second, Plan3d>);

template <class First, class Second>
BoolResult distanceOf(const FitReport& a, const FitReport& b, const std::vector<Values>& params, Values& values) {
  if constexpr (detail::s_isPlanar<First> != detail::s_isPlanar<Second>) {
    return failure("A distance is of two entities of the plane or of two of space");
  } else if constexpr (std::is_same_v<First, Line2d> || std::is_same_v<Second, Line2d>) {
    return failure("Lines have no distance from other entities");
  } else if constexpr (detail::s_hasOpenEnds<First>) {
    return endsMatter(a, "distance");
  } else if constexpr (detail::s_hasOpenEnds<Second>) {
    return endsMatter(b, "distance");
  } else {
    using Entity = typename detail::SpaceOf<First>::Entity;
    const auto first = detail::Reported<First>::made(params[0]);
    const auto second = detail::Reported<Second>::made(params[1]);
    values = {distance(static_cast<const Entity&>(first), static_cast<const Entity&>(second))};
    return {};
  }
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const UncertainValue& value) {
  return stream << withUncertainty(value.value, value.standardUncertainty);
}

BoolResult transformed(const FitReport& report, const BaseGeometryTransform2d& transform, FitReport& image) {
  return transformedBy(report, transform, image);
}

BoolResult transformed(const FitReport& report, const BaseGeometryTransform3d& transform, FitReport& image) {
  return transformedBy(report, transform, image);
}

BoolResult transformed(const FitReport& report, const FitReport& ofTransform, FitReport& image) {
  const Function function = [&](const std::vector<Values>& params, Values& values) {
    BoolResult result = failure("A \"" + ofTransform.model + "\" is no transform that is fitted");
    detail::callReported(detail::ReportedTransforms(), ofTransform.model, params[1].size(), [&](auto transformTag) {
      const auto transform = detail::Reported<typename decltype(transformTag)::Type>::made(params[1]);
      result = withEntity(report, params[0], [&](auto tag) {
        return imageOf<typename decltype(tag)::Type>(params[0], transform, values);
      });
    });
    return result;
  };
  return imageReport(report, {&report, &ofTransform}, function, image);
}

BoolResult area(const FitReport& report, UncertainValue& value) { return measured<AreaOf>(report, value); }

BoolResult perimeter(const FitReport& report, UncertainValue& value) { return measured<PerimeterOf>(report, value); }

BoolResult volume(const FitReport& report, UncertainValue& value) { return measured<VolumeOf>(report, value); }

BoolResult distance(const FitReport& a, const FitReport& b, UncertainValue& value) {
  bool areParallel = false;
  const Function function = [&](const std::vector<Values>& params, Values& values) {
    return withEntity(a, params[0], [&](auto firstTag) {
      return withEntity(b, params[1], [&](auto secondTag) {
        using First = typename decltype(firstTag)::Type;
        using Second = typename decltype(secondTag)::Type;
        areParallel = s_areParallelIfApart<First, Second>;
        return distanceOf<First, Second>(a, b, params, values);
      });
    });
  };
  Values values, covariance;
  BoolResult result = propagate(
      {&a, &b}, function, [](const Values&, Values&) {}, values, covariance);
  if (!result) return result;
  const omReal64 whereApart = areParallel ? s_nan : std::sqrt(covariance[0]);
  value = {values[0], values[0] > 0 ? whereApart : 0};
  return result;
}

}  // namespace ormix::geom
