#pragma once

#include <ORMIXMath/Fitting/SurfaceModels.h>

#include <array>
#include <cstddef>

/// \file
/// What form deviations are measured from, as descendMinimax() takes them; not installed.

namespace ormix::detail {

/// How far the centre or axis of a model is from 0; 0 where it has none.
template <class Model>
omReal64 centerAway(const Model&) {
  return 0;
}

/// A line of the plane z = 0 with the frame's normal; its axis is z. Step: the turn about z.
struct PlanarLineModel {
  static constexpr std::size_t s_nbParameters = 1;
  SurfaceFrame frame;

  omReal64 distance(const SpatialPoint& point) const { return placeIn(frame, point).x; }
  std::array<omReal64, 1> gradient(const SpatialPoint& point) const { return {placeIn(frame, point).y}; }
  PlanarLineModel moved(const omReal64* step) const { return {frame.moved({step[0], 0, 0}, 0, 0)}; }
};

/// A plane across the frame's axis. Steps: turns about normal and across.
struct PlaneModel {
  static constexpr std::size_t s_nbParameters = 2;
  SurfaceFrame frame;

  omReal64 distance(const SpatialPoint& point) const { return placeIn(frame, point).height; }
  std::array<omReal64, 2> gradient(const SpatialPoint& point) const {
    const FramePlace p = placeIn(frame, point);
    return {-p.y, p.x};
  }
  PlaneModel moved(const omReal64* step) const { return {frame.moved({0, step[0], step[1]}, 0, 0)}; }
};

/// The centre of circles (D = 2, in the plane z = 0) or spheres. Steps: its coordinates.
template <std::size_t D>
struct CenterModel {
  static constexpr std::size_t s_nbParameters = D;
  SpatialPoint center;

  omReal64 distance(const SpatialPoint& point) const {
    const SpatialPoint offset = point - center;
    return std::sqrt(dot(offset, offset));
  }
  std::array<omReal64, D> gradient(const SpatialPoint& point) const {
    const omReal64 length = distance(point);
    const SpatialPoint inward = length > 0 ? (center - point) / length : SpatialPoint{0, 0, 0};
    if constexpr (D == 2)
      return {inward.x, inward.y};
    else
      return {inward.x, inward.y, inward.z};
  }
  CenterModel moved(const omReal64* step) const {
    return {center + SpatialPoint{step[0], step[1], D == 3 ? step[D - 1] : 0}};
  }
};

/// The axis of cylinders, the frame's. Steps: shifts along normal and across, turns about them.
struct AxisModel {
  static constexpr std::size_t s_nbParameters = 4;
  SurfaceFrame frame;

  omReal64 distance(const SpatialPoint& point) const {
    const FramePlace p = placeIn(frame, point);
    return std::sqrt(p.x * p.x + p.y * p.y);
  }
  std::array<omReal64, 4> gradient(const SpatialPoint& point) const {
    const FramePlace p = placeIn(frame, point);
    const omReal64 radius = std::sqrt(p.x * p.x + p.y * p.y);
    const omReal64 u = radius > 0 ? p.x / radius : 0;
    const omReal64 v = radius > 0 ? p.y / radius : 0;
    return {-u, -v, v * p.height, -u * p.height};
  }
  AxisModel moved(const omReal64* step) const {
    SurfaceFrame next = frame.moved({0, step[2], step[3]}, 0, 0);
    next.origin = frame.origin + frame.normal * step[0] + frame.across * step[1];
    return {next};
  }
};

template <std::size_t D>
omReal64 centerAway(const CenterModel<D>& model) {
  return std::sqrt(dot(model.center, model.center));
}

inline omReal64 centerAway(const AxisModel& model) {
  const SpatialPoint across = cross(model.frame.axis, model.frame.origin);
  return std::sqrt(dot(across, across));
}

}  // namespace ormix::detail
