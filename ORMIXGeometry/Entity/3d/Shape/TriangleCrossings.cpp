#include <ORMIXGeometry/Entity/3d/Shape/TriangleCrossings.h>

#include <limits>

namespace ormix::geom::detail {

namespace {

constexpr omReal64 s_infinity = std::numeric_limits<omReal64>::infinity();

}  // namespace

// With u = 2^-53 and M the larger of |y| of both ends, each of the two differences, the slope, z - z0 and their product
// adds a relative error u to a number of at most 2 M, and the sum u M: together less than 12 u M. This needs
// differences that are finite and a slope that is not subnormal.
TriangleCrossings::Edge TriangleCrossings::edgeOf(const SpatialPoint& a, const SpatialPoint& b) {
  Edge edge{a, b, 0, 0};
  if (a.z > b.z) std::swap(edge.lower, edge.upper);
  const omReal64 across = edge.upper.y - edge.lower.y;
  const omReal64 height = edge.upper.z - edge.lower.z;
  edge.slope = across / height;
  const bool isUsual =
      height < s_infinity && std::abs(across) < s_infinity && (across == 0 || std::abs(edge.slope) >= 0x1p-900);
  edge.bound = isUsual ? 0x1p-48 * std::max(std::abs(a.y), std::abs(b.y)) : s_infinity;
  return edge;
}

/// The first row whose centre is at the edge or beyond it, where the edge passes z.
omInt64 TriangleCrossings::rowBehind(const Edge& edge, omReal64 z) const {
  const omReal64 y = edge.lower.y + (z - edge.lower.z) * edge.slope;
  const omInt64 guess = _y.first(y);
  const bool isBehind = guess == _y.nbCentres || _y.centre(guess) - y > edge.bound;
  const bool isFirst = guess == 0 || y - _y.centre(guess - 1) > edge.bound;
  if (isBehind && isFirst) return guess;
  return GridAxis::firstOf(0, _y.nbCentres, guess, [&](omInt64 row) {
    return ormix::orientation({edge.lower.y, edge.lower.z}, {edge.upper.y, edge.upper.z}, {_y.centre(row), z}) <= 0;
  });
}

// x = ax + (y - ay) slopeY + (z - az) slopeZ. A component n of the normal is a difference of two products; let B be the
// sum of their magnitudes. Then n is off by at most 4 u B, and with r = Bx / |nx| >= 1 a slope by at most 4 u r B /
// |nx| (1 + 4 u r + ...), which the rounding of the quotient, the product and the sums does not double where r is below
// 2^40. Products that underflow add less than 2^-400 in the range that is asked for.
void TriangleCrossings::setPlane(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c, int facing) {
  _a = a;
  _b = b;
  _c = c;
  _facing = facing;
  _firstColumn = _x.first(std::min({a.x, b.x, c.x}));
  _lastColumn = _x.first(std::max({a.x, b.x, c.x}));
  if (_firstColumn == _lastColumn) return;
  const SpatialPoint p{b.x - a.x, b.y - a.y, b.z - a.z};
  const SpatialPoint q{c.x - a.x, c.y - a.y, c.z - a.z};
  const omReal64 nx = p.y * q.z - p.z * q.y;
  const omReal64 size = std::abs(nx);
  const omReal64 ratio = (std::abs(p.y * q.z) + std::abs(p.z * q.y)) / size;
  _slopeY = -(p.z * q.x - p.x * q.z) / nx;
  _slopeZ = -(p.x * q.y - p.y * q.x) / nx;
  _boundY = 0x1p-48 * ratio * ((std::abs(p.z * q.x) + std::abs(p.x * q.z)) / size);
  _boundZ = 0x1p-48 * ratio * ((std::abs(p.x * q.y) + std::abs(p.y * q.x)) / size);
  const omReal64 largest = std::max({std::abs(a.x), std::abs(a.y), std::abs(a.z), std::abs(p.x), std::abs(p.y),
                                     std::abs(p.z), std::abs(q.x), std::abs(q.y), std::abs(q.z)});
  const bool isUsual = largest <= 0x1p200 && size >= 0x1p-400 && ratio <= 0x1p40;
  _bound = isUsual ? 0x1p-48 * std::abs(a.x) + 0x1p-400 : s_infinity;
}

/// The first column whose centre is at the plane or behind it, of the row through (y, z), which is in the triangle.
omInt64 TriangleCrossings::columnBehind(omReal64 y, omReal64 z) const {
  if (_firstColumn == _lastColumn) return _firstColumn;
  const omReal64 dy = y - _a.y;
  const omReal64 dz = z - _a.z;
  const omReal64 x = _a.x + dy * _slopeY + dz * _slopeZ;
  const omReal64 bound = _bound + std::abs(dy) * _boundY + std::abs(dz) * _boundZ;
  const omInt64 guess = std::clamp(_x.first(x), _firstColumn, _lastColumn);
  const bool isBehind = guess == _lastColumn || _x.centre(guess) - x > bound;
  const bool isFirst = guess == _firstColumn || x - _x.centre(guess - 1) > bound;
  if (isBehind && isFirst) return guess;
  return GridAxis::firstOf(_firstColumn, _lastColumn, guess, [&](omInt64 column) {
    return _facing * orientation3d(_a, _b, _c, {_x.centre(column), y, z}) >= 0;
  });
}

}  // namespace ormix::geom::detail
