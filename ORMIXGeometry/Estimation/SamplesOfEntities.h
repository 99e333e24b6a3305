#pragma once

#include <ORMIXGeometry/Estimation/Samples.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>

#include <array>
#include <boost/numeric/ublas/vector.hpp>
#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

/// \file
/// What toDataSet() and toSamples() share in the plane and in space; not installed. A function object `sampleOf` gives
/// the array of an entity's values.

namespace ormix::geom::detail {

/// The values of the one, then of the other.
template <std::size_t N>
std::array<omReal64, 2 * N> joined(const std::array<omReal64, N>& first, const std::array<omReal64, N>& second) {
  std::array<omReal64, 2 * N> both{};
  for (std::size_t d = 0; d < N; ++d) {
    both[d] = first[d];
    both[N + d] = second[d];
  }
  return both;
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
Samples samplesOf(std::size_t nbSamples, const SampleAt& sampleAt) {
  constexpr std::size_t dimension = std::tuple_size_v<decltype(sampleAt(0))>;
  std::vector<omReal64> values(dimension * nbSamples);
  for (std::size_t i = 0; i < nbSamples; ++i) {
    const auto sample = sampleAt(i);
    for (std::size_t d = 0; d < dimension; ++d) values[dimension * i + d] = sample[d];
  }
  return {std::move(values), dimension};
}

/// \throw ORMIXGeometryException, logged first, when the collections have different sizes
template <class Point>
void requireEqualSizes(const std::vector<Point>& first, const std::vector<Point>& second) {
  if (first.size() == second.size()) return;
  logAndThrow(
      formatMessage<eEstimationMessage>(eEstimationMessage::eEsM_CollectionSizeMismatch, first.size(), second.size()),
      __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

/// The sample number i of single entities.
template <class Entity, class SampleOf>
auto single(const std::vector<Entity>& entities, SampleOf sampleOf) {
  return [&entities, sampleOf](std::size_t i) { return sampleOf(entities[i]); };
}

/// The sample number i of points of two collections.
/// \throw as requireEqualSizes()
template <class Point, class SampleOf>
auto paired(const std::vector<Point>& first, const std::vector<Point>& second, SampleOf sampleOf) {
  requireEqualSizes(first, second);
  return [&first, &second, sampleOf](std::size_t i) { return joined(sampleOf(first[i]), sampleOf(second[i])); };
}

/// The coordinates of points where they are, when they are omReal64; else as samplesOf().
template <class Point, class SampleOf>
Samples samplesInPlace(const std::vector<Point>& points, SampleOf sampleOf) {
  if constexpr (std::is_same_v<typename Point::CoordinateType, omReal64>)
    return Samples(SampleView{coordinates(points), points.size(), sizeof(Point) / sizeof(omReal64)});
  else
    return samplesOf(points.size(), single(points, sampleOf));
}

}  // namespace ormix::geom::detail
