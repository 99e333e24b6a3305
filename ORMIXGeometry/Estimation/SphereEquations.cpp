#include <ORMIXGeometry/Estimation/SphereEquations.h>

#include <algorithm>
#include <boost/numeric/ublas/matrix.hpp>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <string>

namespace ormix::geom {
namespace {

template <std::size_t D>
BoolResult checkParams(const RealVector& params) {
  if (params.size() == D + 1) return {};
  return failure(std::string(D == 2 ? "Circle 2d" : "Sphere 3d") + " cost function: " + std::to_string(params.size()) +
                 " parameters were given, " + std::to_string(D + 1) + " are needed");
}

template <std::size_t D>
BoolResult checkPoint(const RealVector& point, std::size_t index) {
  if (point.size() != D)
    return failure("Point " + std::to_string(index) + " has " + std::to_string(point.size()) + " coordinates, " +
                   std::to_string(D) + " are needed");
  if (!std::all_of(point.begin(), point.end(), [](omReal64 value) { return std::isfinite(value); }))
    return failure("Point " + std::to_string(index) + " is NaN or infinite");
  return {};
}

}  // namespace

template <std::size_t D>
SphereEquations<D>::SphereEquations() = default;
template <std::size_t D>
SphereEquations<D>::~SphereEquations() = default;

template <std::size_t D>
BoolResult SphereEquations<D>::init(const DataSet& dataSet) {
  clear();
  if (dataSet.empty()) return failure("There are no points");
  std::vector<std::array<omReal64, D>> points;
  points.reserve(dataSet.size());
  for (const RealVector& point : dataSet) {
    BoolResult checked = checkPoint<D>(point, points.size());
    if (!checked) return checked;
    std::copy(point.begin(), point.end(), points.emplace_back().begin());
  }
  _points.swap(points);
  initBase(_points.size(), D);
  return {};
}

template <std::size_t D>
BoolResult SphereEquations<D>::processEquations(const RealVector& params, RealVector& values) const {
  BoolResult checked = checkParams<D>(params);
  if (!checked) return checked;
  values.resize(getNbEquations(), false);
  for (std::size_t i = 0; i < _points.size(); ++i) {
    omReal64 square = 0;
    for (std::size_t d = 0; d < D; ++d) square += (_points[i][d] - params(d)) * (_points[i][d] - params(d));
    values(i) = square - params(D) * params(D);
  }
  return checked;
}

template <std::size_t D>
BoolResult SphereEquations<D>::processJacobian(const RealVector& params, RealMatrix& jacobian) const {
  BoolResult checked = checkParams<D>(params);
  if (!checked) return checked;
  jacobian.resize(getNbEquations(), D + 1, false);
  for (std::size_t i = 0; i < _points.size(); ++i) {
    // The factor params(d) is intended, see the declaration.
    for (std::size_t d = 0; d < D; ++d) jacobian(i, d) = -2 * (_points[i][d] - params(d)) * params(d);
    jacobian(i, D) = -2 * params(D);
  }
  return checked;
}

template <std::size_t D>
void SphereEquations<D>::clearDerived() {
  std::vector<std::array<omReal64, D>>().swap(_points);
}

template class SphereEquations<2>;
template class SphereEquations<3>;

}  // namespace ormix::geom
