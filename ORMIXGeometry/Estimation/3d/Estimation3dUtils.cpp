#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Estimation/3d/Estimation3dUtils.h>
#include <ORMIXGeometry/Estimation/SamplesOfEntities.h>

#include <array>

namespace ormix::geom {
namespace {

constexpr auto coordinatesOf = [](const auto& point) {
  return std::array{static_cast<omReal64>(point.getX()), static_cast<omReal64>(point.getY()),
                    static_cast<omReal64>(point.getZ())};
};

}  // namespace

template <class T>
DataSet toDataSet(const std::vector<Point3d<T>>& points) {
  return detail::dataSetOf(points.size(), detail::single(points, coordinatesOf));
}

template <class T>
DataSet toDataSet(const std::vector<Point3dData<T>>& points) {
  return detail::dataSetOf(points.size(), detail::single(points, coordinatesOf));
}

template <class T>
DataSet toDataSet(const std::vector<Point3d<T>>& first, const std::vector<Point3d<T>>& second) {
  return detail::dataSetOf(first.size(), detail::paired(first, second, coordinatesOf));
}

template <class T>
DataSet toDataSet(const std::vector<Point3dData<T>>& first, const std::vector<Point3dData<T>>& second) {
  return detail::dataSetOf(first.size(), detail::paired(first, second, coordinatesOf));
}

template <class T>
Samples toSamples(const std::vector<Point3d<T>>& points) {
  return detail::samplesOf(points.size(), detail::single(points, coordinatesOf));
}

template <class T>
Samples toSamples(const std::vector<Point3dData<T>>& points) {
  return detail::samplesInPlace(points, coordinatesOf);
}

template <class T>
Samples toSamples(const std::vector<Point3d<T>>& first, const std::vector<Point3d<T>>& second) {
  return detail::samplesOf(first.size(), detail::paired(first, second, coordinatesOf));
}

template <class T>
Samples toSamples(const std::vector<Point3dData<T>>& first, const std::vector<Point3dData<T>>& second) {
  return detail::samplesOf(first.size(), detail::paired(first, second, coordinatesOf));
}

#define ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(P)                               \
  template DataSet toDataSet(const std::vector<P>&);                        \
  template DataSet toDataSet(const std::vector<P>&, const std::vector<P>&); \
  template Samples toSamples(const std::vector<P>&);                        \
  template Samples toSamples(const std::vector<P>&, const std::vector<P>&);
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point3d<omInt32>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point3d<omUInt32>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point3d<omReal32>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point3d<omReal64>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point3dData<omInt32>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point3dData<omUInt32>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point3dData<omReal32>)
ORMIX_GEOMETRY_INSTANTIATE_SAMPLES(Point3dData<omReal64>)
#undef ORMIX_GEOMETRY_INSTANTIATE_SAMPLES

}  // namespace ormix::geom
