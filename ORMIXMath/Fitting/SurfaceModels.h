#pragma once

#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

/// \file
/// Round shapes in the form in which distances to them are minimised; not installed.
///
/// A model gives of each point one or two rows (signed components of its distance) with their derivatives by the steps
/// of its parameters, and moves by a step. Circles, cylinders and cones hang on a point of their own surface, and have
/// a curvature instead of a radius: short arcs, nearly flat and of uncertain radius, are then as well determined as
/// full turns, and a plane is no special case (the idea of Lukacs1998, here with exact distances).

namespace ormix::detail {

/// A right-handed frame: `across` is axis × normal.
struct SurfaceFrame {
  SpatialPoint origin;
  SpatialPoint axis;
  SpatialPoint normal;
  SpatialPoint across;

  /// A frame from an axis and a direction that is roughly normal to it; neither needs to have length 1.
  static SurfaceFrame of(const SpatialPoint& origin, const SpatialPoint& axis, const SpatialPoint& direction);

  /// Turned about the origin by a vector in this frame (radians about axis, normal, across) and then shifted.
  SurfaceFrame moved(const SpatialPoint& turn, omReal64 alongAxis, omReal64 alongNormal) const;
};

inline SpatialPoint normalized(const SpatialPoint& v) { return v / euclideanNorm(v.x, v.y, v.z); }

inline SurfaceFrame SurfaceFrame::of(const SpatialPoint& origin, const SpatialPoint& axis,
                                     const SpatialPoint& direction) {
  const SpatialPoint along = normalized(axis);
  const SpatialPoint across = normalized(cross(along, direction));
  return {origin, along, cross(across, along), across};
}

inline SurfaceFrame SurfaceFrame::moved(const SpatialPoint& turn, omReal64 alongAxis, omReal64 alongNormal) const {
  const omReal64 angle = euclideanNorm(turn.x, turn.y, turn.z);
  const omReal64 sine = angle > 0 ? std::sin(angle) / angle : 1;
  const omReal64 half = angle > 0 ? std::sin(angle / 2) / (angle / 2) : 1;
  const omReal64 versine = half * half / 2;
  const SpatialPoint about = axis * turn.x + normal * turn.y + across * turn.z;
  const auto turned = [&](const SpatialPoint& v) {
    const SpatialPoint once = cross(about, v);
    return v + once * sine + cross(about, once) * versine;
  };
  return of(origin + axis * alongAxis + normal * alongNormal, turned(axis), turned(normal));
}

/// Any direction across another one, of neither length 1 nor at a right angle: for frames.
inline SpatialPoint anyAcross(const SpatialPoint& axis) {
  const bool isAlongX = std::abs(axis.x) > std::abs(axis.y) && std::abs(axis.x) > std::abs(axis.z);
  return isAlongX ? SpatialPoint{0, 1, 0} : SpatialPoint{1, 0, 0};
}

/// Where a point is seen from a frame.
struct FramePlace {
  omReal64 height;  ///< along the axis
  omReal64 x;       ///< along the normal
  omReal64 y;       ///< across both
};

inline FramePlace placeIn(const SurfaceFrame& frame, const SpatialPoint& point) {
  const SpatialPoint offset = point - frame.origin;
  return {dot(offset, frame.axis), dot(offset, frame.normal), dot(offset, frame.across)};
}

/// The distance of a point of the plane from the circle through 0 with its centre on the x axis at 1/curvature,
/// positive outside, and its derivatives; of curvature 0, from the y axis. No cancellation where the radius is large.
struct CurvedDistance {
  omReal64 distance;
  omReal64 byX;
  omReal64 byY;
  omReal64 byCurvature;

  CurvedDistance(omReal64 curvature, omReal64 x, omReal64 y) {
    const omReal64 square = x * x + y * y;
    const omReal64 excess = curvature * square - 2 * x;
    // The distance from the centre over the radius; its square is 1 + curvature excess.
    const omReal64 ratio = std::sqrt((curvature * x - 1) * (curvature * x - 1) + curvature * y * (curvature * y));
    const omReal64 inverse = ratio > 0 ? 1 / ratio : 0;
    distance = excess / (1 + ratio);
    byX = (curvature * x - 1) * inverse;
    byY = curvature * y * inverse;
    byCurvature = (square - distance * (excess + curvature * square) * inverse / 2) / (1 + ratio);
  }
};

/// A circle of space. Steps: turns about axis, normal and across; shifts along axis and normal; curvature.
struct CircleModel {
  static constexpr std::size_t s_nbParameters = 6;
  static constexpr std::size_t s_nbRows = 2;
  SurfaceFrame frame;
  omReal64 curvature;

  /// The residuals of a point, and its derivatives row by row.
  void rows(const SpatialPoint& point, omReal64* residuals, omReal64* gradients) const {
    const FramePlace p = placeIn(frame, point);
    const CurvedDistance d(curvature, p.x, p.y);
    residuals[0] = d.distance;
    residuals[1] = p.height;
    const std::array<omReal64, 12> values{d.byX * p.y - d.byY * p.x,
                                          d.byY * p.height,
                                          -d.byX * p.height,
                                          0,
                                          -d.byX,
                                          d.byCurvature,
                                          0,
                                          -p.y,
                                          p.x,
                                          -1,
                                          0,
                                          0};
    std::copy(values.begin(), values.end(), gradients);
  }
  CircleModel moved(const omReal64* step) const {
    return {frame.moved({step[0], step[1], step[2]}, step[3], step[4]), curvature + step[5]};
  }
};

/// A circle of the plane z = 0, with the axis z. Steps: turn about the axis, shift along the normal, curvature.
struct PlanarCircleModel {
  static constexpr std::size_t s_nbParameters = 3;
  static constexpr std::size_t s_nbRows = 1;
  SurfaceFrame frame;
  omReal64 curvature;

  void rows(const SpatialPoint& point, omReal64* residuals, omReal64* gradients) const {
    const FramePlace p = placeIn(frame, point);
    const CurvedDistance d(curvature, p.x, p.y);
    residuals[0] = d.distance;
    gradients[0] = d.byX * p.y - d.byY * p.x;
    gradients[1] = -d.byX;
    gradients[2] = d.byCurvature;
  }
  PlanarCircleModel moved(const omReal64* step) const {
    return {frame.moved({step[0], 0, 0}, 0, step[1]), curvature + step[2]};
  }
};

/// A sphere. Steps: turns about axis and across, shift along the normal, curvature.
struct SphereModel {
  static constexpr std::size_t s_nbParameters = 4;
  static constexpr std::size_t s_nbRows = 1;
  SurfaceFrame frame;
  omReal64 curvature;

  void rows(const SpatialPoint& point, omReal64* residuals, omReal64* gradients) const {
    const FramePlace p = placeIn(frame, point);
    const omReal64 aside = std::sqrt(p.y * p.y + p.height * p.height);
    const CurvedDistance d(curvature, p.x, aside);
    const omReal64 byAside = aside > 0 ? d.byY / aside : 0;
    residuals[0] = d.distance;
    gradients[0] = (d.byX - byAside * p.x) * p.y;
    gradients[1] = (byAside * p.x - d.byX) * p.height;
    gradients[2] = -d.byX;
    gradients[3] = d.byCurvature;
  }
  SphereModel moved(const omReal64* step) const {
    return {frame.moved({step[0], 0, step[1]}, 0, step[2]), curvature + step[3]};
  }
};

/// A cylinder. Steps: turns about axis, normal and across; shift along the normal; curvature.
struct CylinderModel {
  static constexpr std::size_t s_nbParameters = 5;
  static constexpr std::size_t s_nbRows = 1;
  SurfaceFrame frame;
  omReal64 curvature;

  void rows(const SpatialPoint& point, omReal64* residuals, omReal64* gradients) const {
    const FramePlace p = placeIn(frame, point);
    const CurvedDistance d(curvature, p.x, p.y);
    residuals[0] = d.distance;
    gradients[0] = d.byX * p.y - d.byY * p.x;
    gradients[1] = d.byY * p.height;
    gradients[2] = -d.byX * p.height;
    gradients[3] = -d.byX;
    gradients[4] = d.byCurvature;
  }
  CylinderModel moved(const omReal64* step) const {
    return {frame.moved({step[0], step[1], step[2]}, 0, step[3]), curvature + step[4]};
  }
};

/// A cone, with the curvature of its section across the axis at the frame's origin, and the angle by which it widens
/// along the axis. Steps: those of a cylinder, then the angle. Distances are to the generating line of the same half
/// plane, behind the apex too.
struct ConeModel {
  static constexpr std::size_t s_nbParameters = 6;
  static constexpr std::size_t s_nbRows = 1;
  SurfaceFrame frame;
  omReal64 curvature;
  omReal64 angle;

  void rows(const SpatialPoint& point, omReal64* residuals, omReal64* gradients) const {
    const FramePlace p = placeIn(frame, point);
    const CurvedDistance d(curvature, p.x, p.y);
    // With a curvature below 0 distances are positive inside, and the angle turns its sign with them.
    const omReal64 cosine = std::cos(angle);
    const omReal64 sine = std::sin(angle);
    residuals[0] = cosine * d.distance - sine * p.height;
    gradients[0] = cosine * (d.byX * p.y - d.byY * p.x);
    gradients[1] = cosine * d.byY * p.height + sine * p.y;
    gradients[2] = -cosine * d.byX * p.height - sine * p.x;
    gradients[3] = -cosine * d.byX;
    gradients[4] = cosine * d.byCurvature;
    gradients[5] = -sine * d.distance - cosine * p.height;
  }
  ConeModel moved(const omReal64* step) const {
    return {frame.moved({step[0], step[1], step[2]}, 0, step[3]), curvature + step[4], angle + step[5]};
  }
};

/// A torus about the frame's axis, centred at its origin. Steps: turns about normal and across; shifts along axis,
/// normal and across; both radii.
struct TorusModel {
  static constexpr std::size_t s_nbParameters = 7;
  static constexpr std::size_t s_nbRows = 1;
  SurfaceFrame frame;
  omReal64 majorRadius;
  omReal64 minorRadius;

  void rows(const SpatialPoint& point, omReal64* residuals, omReal64* gradients) const {
    const FramePlace p = placeIn(frame, point);
    const omReal64 radius = std::sqrt(p.x * p.x + p.y * p.y);
    const omReal64 beyond = radius - majorRadius;
    const omReal64 tube = std::sqrt(beyond * beyond + p.height * p.height);
    const omReal64 outward = tube > 0 ? beyond / tube : 1;
    const omReal64 upward = tube > 0 ? p.height / tube : 0;
    const omReal64 inverse = radius > 0 ? 1 / radius : 0;
    const omReal64 byTilt = upward * majorRadius * inverse;
    residuals[0] = tube - minorRadius;
    gradients[0] = -byTilt * p.y;
    gradients[1] = byTilt * p.x;
    gradients[2] = -upward;
    gradients[3] = -outward * p.x * inverse;
    gradients[4] = -outward * p.y * inverse;
    gradients[5] = -outward;
    gradients[6] = -1;
  }
  TorusModel moved(const omReal64* step) const {
    SurfaceFrame next = frame.moved({0, step[0], step[1]}, 0, 0);
    next.origin = frame.origin + frame.axis * step[2] + frame.normal * step[3] + frame.across * step[4];
    return {next, majorRadius + step[5], minorRadius + step[6]};
  }
};

}  // namespace ormix::detail
