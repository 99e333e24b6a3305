#include <ORMIXMath/Algebra/EigenDecomposition.h>
#include <ORMIXMath/Algebra/SmallElimination.h>
#include <ORMIXMath/Fitting/MinimalShapes.h>
#include <ORMIXMath/Fitting/SurfaceModels.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/EllipseConic.h>

#include <algorithm>
#include <cmath>

namespace ormix::detail {
namespace {

// Pivots below this fraction of the largest coefficient are those of sets that determine no shape.
constexpr omReal64 s_negligible = 1e-12;

/// Points about their mean, the largest distance from it 1.
template <std::size_t N, std::size_t D>
struct FramedPoints {
  std::array<std::array<omReal64, D>, N> points{};
  std::array<omReal64, D> mean{};
  omReal64 extent = 0;

  explicit FramedPoints(const SampleView& samples) {
    for (std::size_t i = 0; i < N; ++i)
      for (std::size_t d = 0; d < D; ++d) mean[d] += samples[i][d] / static_cast<omReal64>(N);
    for (std::size_t i = 0; i < N; ++i) {
      omReal64 square = 0;
      for (std::size_t d = 0; d < D; ++d) {
        points[i][d] = samples[i][d] - mean[d];
        square += points[i][d] * points[i][d];
      }
      extent = std::max(extent, square);
    }
    extent = std::sqrt(extent);
    for (auto& point : points)
      for (omReal64& value : point) value /= extent;
  }

  bool isUsable() const { return extent > 0 && std::isfinite(extent); }
};

/// Points of space in their frame.
template <std::size_t N>
struct SpatialSet : FramedPoints<N, 3> {
  explicit SpatialSet(const SampleView& samples) : FramedPoints<N, 3>(samples) {}
  SpatialPoint operator[](std::size_t i) const { return {this->points[i][0], this->points[i][1], this->points[i][2]}; }
  SpatialPoint placed(const SpatialPoint& p) const {
    return SpatialPoint{this->mean[0], this->mean[1], this->mean[2]} + p * this->extent;
  }
};

/// The conic of axes of cylinders through five points, the first of them at the origin, and the cubic on it.
class AxisConic {
 public:
  /// False where the points lie in a plane or the conic has no points.
  template <class Points>
  bool assign(const Points& points) {
    std::array<SpatialPoint, 4> q;
    for (std::size_t i = 0; i < q.size(); ++i) q[i] = points[i + 1] - points[0];
    // Three of the four that span the most.
    std::size_t left = 0;
    omReal64 determinant = 0;
    for (std::size_t k = 0; k < q.size(); ++k) {
      const omReal64 volume = dot(q[(k + 1) % 4], cross(q[(k + 2) % 4], q[(k + 3) % 4]));
      if (std::abs(volume) > std::abs(determinant)) {
        determinant = volume;
        left = k;
      }
    }
    if (!(std::abs(determinant) > 1e-9)) return false;
    const SpatialPoint q1 = q[(left + 1) % 4], q2 = q[(left + 2) % 4], q3 = q[(left + 3) % 4], q4 = q[left];
    _inverse = {cross(q2, q3) / determinant, cross(q3, q1) / determinant, cross(q1, q2) / determinant};
    _squares = {dot(q1, q1), dot(q2, q2), dot(q3, q3)};
    for (std::size_t i = 0; i < 3; ++i)
      for (std::size_t k = 0; k < 3; ++k) _gram[i][k] = dot(_inverse[i], _inverse[k]);
    // |q4|² - (q4 d)² = 2 q4 c, with q4 = sum of a_i q_i: sum of a_i u_i² - (a u)² = (a s - |q4|²) u' G u.
    const SpatialPoint a{dot(_inverse[0], q4), dot(_inverse[1], q4), dot(_inverse[2], q4)};
    const omReal64 factor = dot(a, _squares) - dot(q4, q4);
    const auto entry = [&](omReal64 ai, omReal64 ak, std::size_t i, std::size_t k) {
      return (i == k ? ai : 0) - ai * ak - factor * _gram[i][k];
    };
    omReal64 values[3];
    omReal64 vectors[9];
    if (!eigenDecomposition(entry(a.x, a.x, 0, 0), entry(a.x, a.y, 0, 1), entry(a.x, a.z, 0, 2), entry(a.y, a.y, 1, 1),
                            entry(a.y, a.z, 1, 2), entry(a.z, a.z, 2, 2), values, vectors))
      return false;
    // Two eigenvalues of one sign, which the angle turns between, and one of the other.
    if (!(values[0] < 0 && values[2] > 0) || values[1] == 0) return false;
    const std::size_t other = values[1] < 0 ? 2 : 0;
    for (std::size_t k = 0; k < 3; ++k) {
      const std::size_t at = (other + k) % 3;
      const omReal64 scale = 1 / std::sqrt(std::abs(values[at]));
      _conic[k] = SpatialPoint{vectors[3 * at], vectors[3 * at + 1], vectors[3 * at + 2]} * scale;
    }
    return true;
  }

  /// What is 0 where the centre of the circle across the axis lies across it, too.
  omReal64 cubic(omReal64 cosine, omReal64 sine) const {
    const SpatialPoint u = at(cosine, sine);
    const SpatialPoint g = byGram(u);
    const omReal64 square = dot(u, g);
    return (_squares.x * square - u.x * u.x) * g.x + (_squares.y * square - u.y * u.y) * g.y +
           (_squares.z * square - u.z * u.z) * g.z;
  }

  /// The cylinder there, through the origin; false where it is none.
  bool cylinderAt(omReal64 cosine, omReal64 sine, SpatialCylinder& cylinder) const {
    SpatialPoint u = at(cosine, sine);
    const omReal64 square = dot(u, byGram(u));
    if (!(square > 0)) return false;
    u = u / std::sqrt(square);
    cylinder.direction = _inverse[0] * u.x + _inverse[1] * u.y + _inverse[2] * u.z;
    cylinder.point = (_inverse[0] * (_squares.x - u.x * u.x) + _inverse[1] * (_squares.y - u.y * u.y) +
                      _inverse[2] * (_squares.z - u.z * u.z)) /
                     2;
    cylinder.radius = std::sqrt(dot(cylinder.point, cylinder.point));
    return cylinder.radius > 0 && std::isfinite(cylinder.radius);
  }

 private:
  SpatialPoint at(omReal64 cosine, omReal64 sine) const { return _conic[0] + _conic[1] * cosine + _conic[2] * sine; }
  SpatialPoint byGram(const SpatialPoint& u) const {
    return {_gram[0][0] * u.x + _gram[0][1] * u.y + _gram[0][2] * u.z,
            _gram[1][0] * u.x + _gram[1][1] * u.y + _gram[1][2] * u.z,
            _gram[2][0] * u.x + _gram[2][1] * u.y + _gram[2][2] * u.z};
  }

  std::array<SpatialPoint, 3> _inverse{};  ///< d is their sum by the elements of u
  SpatialPoint _squares{};                 ///< of the lengths of q1 to q3
  std::array<std::array<omReal64, 3>, 3> _gram{};
  std::array<SpatialPoint, 3> _conic{};
};

using Turn = std::array<omReal64, 2>;  // cosine and sine

/// A zero of the cubic between two turns where it has the values, of different signs.
Turn zeroBetween(const AxisConic& conic, const Turn& from, const Turn& to, omReal64 atFrom, omReal64 atTo) {
  const omReal64 negligible = 1e-9 * (std::abs(atFrom) + std::abs(atTo));
  omReal64 low = 0, high = 1;
  Turn turn = from;
  // False position; the value at an end that stays twice is halved (the Illinois method).
  int lastMoved = 0;
  for (int round = 0; round < 12; ++round) {
    const omReal64 t = low + (high - low) * atFrom / (atFrom - atTo);
    turn = {from[0] + (to[0] - from[0]) * t, from[1] + (to[1] - from[1]) * t};
    const omReal64 length = std::sqrt(turn[0] * turn[0] + turn[1] * turn[1]);
    turn = {turn[0] / length, turn[1] / length};
    const omReal64 value = conic.cubic(turn[0], turn[1]);
    if (std::abs(value) < negligible) break;
    if ((value < 0) == (atFrom < 0)) {
      low = t;
      atFrom = value;
      if (lastMoved == 1) atTo /= 2;
      lastMoved = 1;
    } else {
      high = t;
      atTo = value;
      if (lastMoved == 2) atFrom /= 2;
      lastMoved = 2;
    }
  }
  return turn;
}

/// Cylinders through the first five points, in their frame.
template <class Points>
std::size_t framedCylinders(const Points& points, std::array<SpatialCylinder, 6>& found) {
  constexpr std::size_t nbTurns = 32;
  static const std::array<Turn, nbTurns> s_turns = [] {
    std::array<Turn, nbTurns> turns;
    for (std::size_t k = 0; k < nbTurns; ++k) {
      const omReal64 angle = 2 * s_pi * static_cast<omReal64>(k) / static_cast<omReal64>(nbTurns);
      turns[k] = {std::cos(angle), std::sin(angle)};
    }
    return turns;
  }();
  AxisConic conic;
  if (!conic.assign(points)) return 0;
  std::size_t nbFound = 0;
  const omReal64 first = conic.cubic(1, 0);
  omReal64 value = first;
  for (std::size_t k = 0; k < nbTurns && nbFound < found.size(); ++k) {
    const Turn& next = s_turns[(k + 1) % nbTurns];
    const omReal64 nextValue = k + 1 < nbTurns ? conic.cubic(next[0], next[1]) : first;
    if ((value < 0) != (nextValue < 0)) {
      const Turn zero = zeroBetween(conic, s_turns[k], next, value, nextValue);
      SpatialCylinder& cylinder = found[nbFound];
      if (conic.cylinderAt(zero[0], zero[1], cylinder)) {
        cylinder.point = cylinder.point + points[0];
        ++nbFound;
      }
    }
    value = nextValue;
  }
  return nbFound;
}

/// Newton's method for as many points as the model has parameters; steps are cut off at half the extent of the points.
template <class Model>
bool passThrough(const SpatialSet<Model::s_nbParameters>& points, Model& model) {
  constexpr std::size_t n = Model::s_nbParameters;
  constexpr std::size_t nbRounds = 12;
  constexpr omReal64 farthest = 0.5;
  for (std::size_t round = 0; round < nbRounds; ++round) {
    std::array<std::array<omReal64, n + 1>, n> system;
    omReal64 worst = 0;
    for (std::size_t i = 0; i < n; ++i) {
      model.rows(points[i], &system[i][n], system[i].data());
      worst = std::max(worst, std::abs(system[i][n]));
    }
    if (worst < 1e-8) return true;
    if (!solveSmall<n, 1>(system, s_negligible)) return false;
    omReal64 longest = 0;
    for (std::size_t k = 0; k < n; ++k) longest = std::max(longest, std::abs(system[k][n]));
    const omReal64 scale = longest > farthest ? farthest / longest : 1;
    std::array<omReal64, n> step;
    for (std::size_t k = 0; k < n; ++k) step[k] = -scale * system[k][n];
    model = model.moved(step.data());
  }
  return false;
}

}  // namespace

bool ellipseThrough(const SampleView& five, PlanarEllipse& ellipse) {
  const FramedPoints<5, 2> framed(five);
  if (!framed.isUsable()) return false;
  std::array<std::array<omReal64, 6>, 5> system;
  for (std::size_t i = 0; i < 5; ++i) {
    const auto [x, y] = framed.points[i];
    system[i] = {x * x, x * y, y * y, x, y, 1};
  }
  if (!solveSmall<5, 1>(system, s_negligible)) return false;
  const omReal64 xx = system[0][5], xy = system[1][5], yy = system[2][5];
  if (!(4 * xx * yy > xy * xy)) return false;
  const EllipseConic conic{xx, xy, yy, system[3][5], system[4][5], -1, 0, 0};
  PlanarEllipse found{};
  if (!ellipseFromConic(conic, found.centerX, found.centerY, found.major, found.minor, found.direction)) return false;
  ellipse = {framed.mean[0] + framed.extent * found.centerX, framed.mean[1] + framed.extent * found.centerY,
             framed.extent * found.major, framed.extent * found.minor, found.direction};
  return std::isfinite(ellipse.centerX + ellipse.centerY + ellipse.major) && ellipse.minor > 0;
}

bool ellipsoidThrough(const SampleView& nine, EllipsoidParameters& ellipsoid) {
  const FramedPoints<9, 3> framed(nine);
  if (!framed.isUsable()) return false;
  std::array<std::array<omReal64, 10>, 9> system;
  for (std::size_t i = 0; i < 9; ++i) {
    const auto [x, y, z] = framed.points[i];
    system[i] = {x * x, y * y, z * z, x * y, x * z, y * z, x, y, z, 1};
  }
  if (!solveSmall<9, 1>(system, s_negligible)) return false;
  std::array<omReal64, 9> q;
  for (std::size_t k = 0; k < 9; ++k) q[k] = system[k][9];
  // Definite by its principal minors.
  const omReal64 minor = 4 * q[0] * q[1] - q[3] * q[3];
  const omReal64 determinant =
      4 * q[0] * q[1] * q[2] + q[3] * q[4] * q[5] - q[0] * q[5] * q[5] - q[1] * q[4] * q[4] - q[2] * q[3] * q[3];
  if (!(minor > 0) || !(q[0] > 0 ? determinant > 0 : determinant < 0)) return false;
  EllipsoidParameters found;
  if (!convertEllipsoidFromQuadratic({q[0], q[1], q[2], q[3], q[4], q[5], q[6], q[7], q[8], -1, 0, 0, 0}, found))
    return false;
  found.cx = framed.mean[0] + framed.extent * found.cx;
  found.cy = framed.mean[1] + framed.extent * found.cy;
  found.cz = framed.mean[2] + framed.extent * found.cz;
  for (omReal64* radius : {&found.a, &found.b, &found.c}) *radius *= framed.extent;
  if (!std::isfinite(found.cx + found.cy + found.cz + found.a) || !(found.c > 0)) return false;
  ellipsoid = found;
  return true;
}

std::size_t cylindersThrough(const SampleView& five, std::array<SpatialCylinder, 6>& found) {
  const SpatialSet<5> framed(five);
  if (!framed.isUsable()) return 0;
  const std::size_t nbFound = framedCylinders(framed, found);
  for (std::size_t k = 0; k < nbFound; ++k) {
    found[k].point = framed.placed(found[k].point);
    found[k].radius *= framed.extent;
  }
  return nbFound;
}

std::size_t conesThrough(const SampleView& six, std::array<SpatialCone, 6>& found) {
  const SpatialSet<6> framed(six);
  std::array<SpatialCylinder, 6> cylinders;
  const std::size_t nbCylinders = framed.isUsable() ? framedCylinders(framed, cylinders) : 0;
  std::size_t nbFound = 0;
  for (std::size_t k = 0; k < nbCylinders; ++k) {
    const SpatialCylinder& start = cylinders[k];
    SpatialPoint inward = start.point - framed[5];
    inward = inward - start.direction * dot(inward, start.direction);
    const omReal64 distance = std::sqrt(dot(inward, inward));
    if (!(distance > 0)) continue;
    ConeModel model{
        SurfaceFrame::of(framed[5] + inward * ((distance - start.radius) / distance), start.direction, inward),
        1 / start.radius, 0};
    if (!passThrough(framed, model)) continue;
    const omReal64 slope = std::tan(model.curvature < 0 ? -model.angle : model.angle);
    const SpatialPoint onAxis = model.frame.origin + model.frame.normal / model.curvature;
    const SpatialPoint apex = onAxis - model.frame.axis * (1 / (std::abs(model.curvature) * slope));
    const SpatialCone cone{framed.placed(apex), slope > 0 ? model.frame.axis : model.frame.axis * -1.0,
                           std::atan(std::abs(slope))};
    if (std::isfinite(dot(cone.apex, cone.apex)) && cone.halfAngle > 0) found[nbFound++] = cone;
  }
  return nbFound;
}

std::size_t toriThrough(const SampleView& seven, std::array<SpatialTorus, 12>& found) {
  const SpatialSet<7> framed(seven);
  std::array<SpatialCylinder, 6> cylinders;
  const std::size_t nbCylinders = framed.isUsable() ? framedCylinders(framed, cylinders) : 0;
  std::size_t nbFound = 0;
  // The ring may lie to any side: two opposite ones, others for each cylinder.
  constexpr omReal64 goldenAngle = 2.399963229728653;
  constexpr omReal64 widest = 1.5;
  for (std::size_t k = 0; k < 2 * nbCylinders; ++k) {
    const SpatialCylinder& tube = cylinders[k / 2];
    if (tube.radius > widest) continue;
    const SurfaceFrame across = SurfaceFrame::of({0, 0, 0}, tube.direction, anyAcross(tube.direction));
    const omReal64 angle = goldenAngle * static_cast<omReal64>(k / 2);
    const omReal64 side = k % 2 == 0 ? 1 : -1;
    const SpatialPoint outward = (across.normal * std::cos(angle) + across.across * std::sin(angle)) * side;
    const SpatialPoint middle = tube.point - tube.direction * dot(tube.point, tube.direction);
    const omReal64 ring = std::max(1.0, 1.2 * tube.radius);
    TorusModel model{SurfaceFrame::of(middle + outward * ring, cross(tube.direction, outward), outward), ring,
                     tube.radius};
    if (!passThrough(framed, model)) continue;
    if (!(model.minorRadius > 0 && model.majorRadius > model.minorRadius)) continue;
    found[nbFound++] = {framed.placed(model.frame.origin), model.frame.axis, framed.extent * model.majorRadius,
                        framed.extent * model.minorRadius};
  }
  return nbFound;
}

}  // namespace ormix::detail
