#pragma once

// Plugs this library into a comparison with other libraries: a program of benchmarks asks one template a workload
// (namespace lut, declared before this header is included) and gets one row for each that is specialised here. The
// comparison itself is a project of its own, as it needs all the other libraries; point it to this folder and to
// ORMIX::Geometry.

#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PerimeterMsr2d.h>
#include <ORMIXSerialization/Archive/CborIArchive.h>
#include <ORMIXSerialization/Archive/CborOArchive.h>
#include <ORMIXSerialization/Archive/JsonIArchive.h>
#include <ORMIXSerialization/Archive/JsonOArchive.h>

#include <istream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "../support/MemoryBuffer.h"

namespace lut {

/// A ring as this library holds it, copied from the comparison's own points.
template <class T>
struct OrmixRing {
  static constexpr bool available = true;
  using Ring = ormix::geom::Polygon2d<T>;

  static Ring make(const std::vector<data::P2<T>>& points) {
    Ring ring;
    ring.getPointColl().reserve(points.size());
    for (const auto& point : points) ring.getPointColl().emplace_back(point.x, point.y);
    return ring;
  }
};

/// Area and perimeter, by way of the measures.
template <class T>
struct OrmixRingMeasures : OrmixRing<T> {
  using typename OrmixRing<T>::Ring;

  static double area(const Ring& ring) { return ormix::geom::AreaMsr2d::measure(ring); }
  static double perimeter(const Ring& ring) { return ormix::geom::PerimeterMsr2d::measure(ring); }
};

template <>
struct RingMeasures<double> : OrmixRingMeasures<double> {};
template <>
struct RingMeasures<float> : OrmixRingMeasures<float> {};
template <>
struct RingMeasures<std::int32_t> : OrmixRingMeasures<std::int32_t> {};

/// Reading one ring in the syntax of Well-Known-Text.
template <>
struct Wkt<double> {
  static constexpr bool available = true;

  static std::size_t parse(const std::string& coordinateList) {
    ormix::geom::Polygon2d<double> ring;
    fromString(ring, coordinateList);
    return ring.getNbPoints();
  }
};

/// Archives in memory: CBOR as the binary form, JSON as the text.
template <>
struct Archives<double> : OrmixRing<double> {
  static std::string writeBinary(const Ring& ring) { return write<ormix::CborOArchive>(ring, packedSize(ring)); }
  static Ring readBinary(const std::string& bytes) { return read<ormix::CborIArchive>(bytes); }
  static std::string writeText(const Ring& ring) { return write<ormix::JsonOArchive>(ring, 0); }
  static Ring readText(const std::string& text) { return read<ormix::JsonIArchive>(text); }

 private:
  static void check(const ormix::BoolResult& result) {
    if (!result) throw std::runtime_error(result.getMessage());
  }
  /// A program that archives into memory knows about how much will come, and asks for it at once.
  static std::size_t packedSize(const Ring& ring) { return 2 * sizeof(double) * ring.getNbPoints() + 4096; }
  template <class OArchive>
  static std::string write(const Ring& ring, std::size_t expectedSize) {
    ormix::benchmarks::StringSink sink(expectedSize);
    std::ostream stream(&sink);
    OArchive archive(stream);
    check(ring.write(archive));
    check(archive.close());
    return sink.take();
  }
  template <class IArchive>
  static Ring read(const std::string& text) {
    ormix::benchmarks::StringSource source(text);
    std::istream stream(&source);
    IArchive archive(stream);
    Ring ring;
    check(ring.read(archive));
    return ring;
  }
};

}  // namespace lut
