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
/// Implementation of toDataSet() and toSamples() for the plane and for space; not installed. A function object
/// `sampleOf` returns the values of an entity as an array.

namespace ormix::geom::detail {

/// The values of the first array followed by those of the second.
template <std::size_t N>
std::array<omReal64, 2 * N> joined(const std::array<omReal64, N>& first, const std::array<omReal64, N>& second) {
  std::array<omReal64, 2 * N> both{};
  for (std::size_t d = 0; d < N; ++d) {
    both[d] = first[d];
    both[N + d] = second[d];
  }
  return both;
}

/// The samples `sampleAt(0)` to `sampleAt(nbSamples - 1)`, one vector each.
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

/// The samples `sampleAt(0)` to `sampleAt(nbSamples - 1)` in contiguous memory.
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

/// A function object that returns the sample of entity i.
template <class Entity, class SampleOf>
auto single(const std::vector<Entity>& entities, SampleOf sampleOf) {
  return [&entities, sampleOf](std::size_t i) { return sampleOf(entities[i]); };
}

/// A function object that returns the sample of pair i: the point i of both collections.
/// \throw as requireEqualSizes()
template <class Point, class SampleOf>
auto paired(const std::vector<Point>& first, const std::vector<Point>& second, SampleOf sampleOf) {
  requireEqualSizes(first, second);
  return [&first, &second, sampleOf](std::size_t i) { return joined(sampleOf(first[i]), sampleOf(second[i])); };
}

/// Samples that refer to the coordinates of the points when these are omReal64, and converted copies otherwise.
template <class Point, class SampleOf>
Samples samplesInPlace(const std::vector<Point>& points, SampleOf sampleOf) {
  if constexpr (std::is_same_v<typename Point::CoordinateType, omReal64>)
    return Samples(SampleView{coordinates(points), points.size(), sizeof(Point) / sizeof(omReal64)});
  else
    return samplesOf(points.size(), single(points, sampleOf));
}

}  // namespace ormix::geom::detail
