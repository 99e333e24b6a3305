#include <ORMIXGeometry/Estimation/2d/Estimation2dUtils.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <array>
#include <boost/numeric/ublas/vector.hpp>
#include <cstddef>
#include <type_traits>

namespace ormix::geom {
namespace {

template <class Point>
std::array<omReal64, 2> sampleOf(const Point& point) {
  return {static_cast<omReal64>(point.getX()), static_cast<omReal64>(point.getY())};
}

std::array<omReal64, 2> sampleOf(const Line2d& line) { return {line.getTheta(), line.getRho()}; }

template <class Point>
std::array<omReal64, 4> sampleOf(const Point& first, const Point& second) {
  const auto p = sampleOf(first);
  const auto q = sampleOf(second);
  return {p[0], p[1], q[0], q[1]};
}

/// A vector for each of `nbSamples` samples.
template <class SampleAt>
DataSet dataSetOf(std::size_t nbSamples, const SampleAt& sampleAt) {
  DataSet dataSet;
  dataSet.reserve(nbSamples);
  for (std::size_t i = 0; i < nbSamples; ++i) {
    const auto sample = sampleAt(i);
    RealVector& values = dataSet.emplace_back(sample.size());
    for (std::size_t d = 0; d < sample.size(); ++d) values(d) = sample[d];
  }
  return dataSet;
}

/// All samples in one run.
template <class SampleAt>
Samples2d samplesOf(std::size_t nbSamples, const SampleAt& sampleAt) {
  constexpr std::size_t dimension = std::tuple_size_v<decltype(sampleAt(0))>;
  std::vector<omReal64> values(dimension * nbSamples);
  for (std::size_t i = 0; i < nbSamples; ++i) {
    const auto sample = sampleAt(i);
    for (std::size_t d = 0; d < dimension; ++d) values[dimension * i + d] = sample[d];
  }
  return {std::move(values), dimension};
}

template <class Point>
void requireEqualSizes(const std::vector<Point>& first, const std::vector<Point>& second) {
  if (first.size() == second.size()) return;
  logAndThrow(
      formatMessage<eEstimationMessage>(eEstimationMessage::eEsM_CollectionSizeMismatch, first.size(), second.size()),
      __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

template <class Entity>
auto single(const std::vector<Entity>& entities) {
  return [&entities](std::size_t i) { return sampleOf(entities[i]); };
}

template <class Point>
auto paired(const std::vector<Point>& first, const std::vector<Point>& second) {
  requireEqualSizes(first, second);
  return [&first, &second](std::size_t i) { return sampleOf(first[i], second[i]); };
}

}  // namespace

template <class T>
DataSet toDataSet(const std::vector<Point2d<T>>& points) {
  return dataSetOf(points.size(), single(points));
}

template <class T>
DataSet toDataSet(const std::vector<Point2dData<T>>& points) {
  return dataSetOf(points.size(), single(points));
}

DataSet toDataSet(const std::vector<Line2d>& lines) { return dataSetOf(lines.size(), single(lines)); }

template <class T>
DataSet toDataSet(const std::vector<Point2d<T>>& first, const std::vector<Point2d<T>>& second) {
  return dataSetOf(first.size(), paired(first, second));
}

template <class T>
DataSet toDataSet(const std::vector<Point2dData<T>>& first, const std::vector<Point2dData<T>>& second) {
  return dataSetOf(first.size(), paired(first, second));
}

template <class T>
Samples2d toSamples(const std::vector<Point2d<T>>& points) {
  return samplesOf(points.size(), single(points));
}

template <class T>
Samples2d toSamples(const std::vector<Point2dData<T>>& points) {
  constexpr std::size_t dimension = 2;
  if constexpr (std::is_same_v<T, omReal64>)
    return Samples2d(SampleView{coordinates(points), points.size(), dimension});
  else
    return samplesOf(points.size(), single(points));
}

Samples2d toSamples(const std::vector<Line2d>& lines) { return samplesOf(lines.size(), single(lines)); }

template <class T>
Samples2d toSamples(const std::vector<Point2d<T>>& first, const std::vector<Point2d<T>>& second) {
  return samplesOf(first.size(), paired(first, second));
}

template <class T>
Samples2d toSamples(const std::vector<Point2dData<T>>& first, const std::vector<Point2dData<T>>& second) {
  return samplesOf(first.size(), paired(first, second));
}

#define ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(P)                               \
  template DataSet toDataSet(const std::vector<P>&);                        \
  template DataSet toDataSet(const std::vector<P>&, const std::vector<P>&); \
  template Samples2d toSamples(const std::vector<P>&);                      \
  template Samples2d toSamples(const std::vector<P>&, const std::vector<P>&);
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point2d<omInt32>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point2d<omUInt32>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point2d<omReal32>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point2d<omReal64>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point2dData<omInt32>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point2dData<omUInt32>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point2dData<omReal32>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point2dData<omReal64>)
#undef ORMIX_GEOMETRY_INSTANTIATE_SAMPLES

}  // namespace ormix::geom
