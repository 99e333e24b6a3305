#include <ORMIXGeometry/Estimation/2d/Circle2dCostFunction.h>

#include <boost/numeric/ublas/matrix.hpp>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <cstddef>
#include <string>

namespace ormix::geom {
namespace {

constexpr std::size_t s_nbParams = 3;
constexpr std::size_t s_dimension = 2;

BoolResult checkParams(const RealVector& params) {
  if (params.size() == s_nbParams) return {};
  return failure("Circle 2d cost function: " + std::to_string(params.size()) + " parameters were given, 3 are needed");
}

BoolResult checkPoint(const RealVector& point, std::size_t index) {
  if (point.size() != s_dimension)
    return failure("Point " + std::to_string(index) + " has " + std::to_string(point.size()) +
                   " coordinates, 2 are needed");
  if (!std::isfinite(point(0)) || !std::isfinite(point(1)))
    return failure("Point " + std::to_string(index) + " is NaN or infinite");
  return {};
}

}  // namespace

Circle2dCostFunction::Circle2dCostFunction() = default;
Circle2dCostFunction::~Circle2dCostFunction() = default;

BoolResult Circle2dCostFunction::init(const DataSet& dataSet) {
  clear();
  if (dataSet.empty()) return failure("There are no points");
  std::vector<Point2dData<omReal64>> points;
  points.reserve(dataSet.size());
  for (const RealVector& point : dataSet) {
    BoolResult checked = checkPoint(point, points.size());
    if (!checked) return checked;
    points.emplace_back(point(0), point(1));
  }
  _points.swap(points);
  initBase(_points.size(), s_dimension);
  return {};
}

BoolResult Circle2dCostFunction::processEquations(const RealVector& params, RealVector& values) const {
  BoolResult checked = checkParams(params);
  if (!checked) return checked;
  values.resize(getNbEquations(), false);
  for (std::size_t i = 0; i < _points.size(); ++i) {
    const omReal64 dx = _points[i].getX() - params(0);
    const omReal64 dy = _points[i].getY() - params(1);
    values(i) = dx * dx + dy * dy - params(2) * params(2);
  }
  return checked;
}

BoolResult Circle2dCostFunction::processJacobian(const RealVector& params, RealMatrix& jacobian) const {
  BoolResult checked = checkParams(params);
  if (!checked) return checked;
  jacobian.resize(getNbEquations(), s_nbParams, false);
  for (std::size_t i = 0; i < _points.size(); ++i) {
    // The last factors are intended: see the declaration.
    jacobian(i, 0) = -2 * (_points[i].getX() - params(0)) * params(0);
    jacobian(i, 1) = -2 * (_points[i].getY() - params(1)) * params(1);
    jacobian(i, 2) = -2 * params(2);
  }
  return checked;
}

void Circle2dCostFunction::clearDerived() { std::vector<Point2dData<omReal64>>().swap(_points); }

}  // namespace ormix::geom
