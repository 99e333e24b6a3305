#include <ORMIXGeometry/Estimation/2d/Estimation2dUtils.h>
#include <ORMIXGeometry/Estimation/SamplesOfEntities.h>

#include <array>

namespace ormix::geom {
namespace {

constexpr auto coordinatesOf = [](const auto& point) {
  return std::array{static_cast<omReal64>(point.getX()), static_cast<omReal64>(point.getY())};
};

constexpr auto anglesAndDistancesOf = [](const Line2d& line) { return std::array{line.getTheta(), line.getRho()}; };

}  // namespace

template <class T>
DataSet toDataSet(const std::vector<Point2d<T>>& points) {
  return detail::dataSetOf(points.size(), detail::single(points, coordinatesOf));
}

template <class T>
DataSet toDataSet(const std::vector<Point2dData<T>>& points) {
  return detail::dataSetOf(points.size(), detail::single(points, coordinatesOf));
}

DataSet toDataSet(const std::vector<Line2d>& lines) {
  return detail::dataSetOf(lines.size(), detail::single(lines, anglesAndDistancesOf));
}

template <class T>
DataSet toDataSet(const std::vector<Point2d<T>>& first, const std::vector<Point2d<T>>& second) {
  return detail::dataSetOf(first.size(), detail::paired(first, second, coordinatesOf));
}

template <class T>
DataSet toDataSet(const std::vector<Point2dData<T>>& first, const std::vector<Point2dData<T>>& second) {
  return detail::dataSetOf(first.size(), detail::paired(first, second, coordinatesOf));
}

template <class T>
Samples toSamples(const std::vector<Point2d<T>>& points) {
  return detail::samplesOf(points.size(), detail::single(points, coordinatesOf));
}

template <class T>
Samples toSamples(const std::vector<Point2dData<T>>& points) {
  return detail::samplesInPlace(points, coordinatesOf);
}

Samples toSamples(const std::vector<Line2d>& lines) {
  return detail::samplesOf(lines.size(), detail::single(lines, anglesAndDistancesOf));
}

template <class T>
Samples toSamples(const std::vector<Point2d<T>>& first, const std::vector<Point2d<T>>& second) {
  return detail::samplesOf(first.size(), detail::paired(first, second, coordinatesOf));
}

template <class T>
Samples toSamples(const std::vector<Point2dData<T>>& first, const std::vector<Point2dData<T>>& second) {
  return detail::samplesOf(first.size(), detail::paired(first, second, coordinatesOf));
}

#define ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(P)                               \
  template DataSet toDataSet(const std::vector<P>&);                        \
  template DataSet toDataSet(const std::vector<P>&, const std::vector<P>&); \
  template Samples toSamples(const std::vector<P>&);                        \
  template Samples toSamples(const std::vector<P>&, const std::vector<P>&);
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
