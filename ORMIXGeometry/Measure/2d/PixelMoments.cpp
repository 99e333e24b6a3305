#include <ORMIXGeometry/Measure/2d/PixelMoments.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace ormix::geom {

namespace {

__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 UInt128;

/// A sum of integers of 128 bits, of which 2^63 do not overflow it.
class WideSum {
 public:
  void add(Int128 value) {
    const auto bits = static_cast<UInt128>(value);
    _low += bits;
    _high += (_low < bits ? 1 : 0) - (value < 0 ? 1 : 0);
  }
  omReal64 toReal() const {
    const auto low = static_cast<Int128>(_low);
    if (_high == (low < 0 ? -1 : 0)) return static_cast<omReal64>(low);
    return std::ldexp(static_cast<omReal64>(_high), 128) + static_cast<omReal64>(_low);
  }

 private:
  UInt128 _low = 0;
  omInt64 _high = 0;
};

/// Columns of a set, and what determines its centroid.
struct Extent {
  omUInt32 begin = 0xFFFFFFFFu;
  omUInt32 end = 0;
  omUInt64 nbPixels = 0;
  UInt128 doubleColumns = 0;  // twice the sum of x over the pixels
  UInt128 rows = 0;           // the sum of the number of rows above over the pixels
};

Extent extentOf(const RowIntersections& set) {
  Extent extent;
  for (std::size_t j = 0; j < set.getNbRows(); ++j) {
    const RowIntersections::Row row = set.getRow(set.getStartRow() + j);
    if (row.empty()) continue;
    extent.begin = std::min(extent.begin, row.begin()->begin);
    extent.end = std::max(extent.end, row.end()[-1].end);
    omUInt64 nbPixels = 0;
    for (const PixelRun& run : row) {
      const omUInt64 length = run.end - run.begin;
      nbPixels += length;
      extent.doubleColumns += length * (omUInt64{run.begin} + run.end);
    }
    extent.nbPixels += nbPixels;
    extent.rows += UInt128{nbPixels} * j;
  }
  return extent;
}

/// The position nearest to the wanted one that is at most 2^31 away from both ends, so that the powers of what is
/// relative to it fit their types.
omInt64 nearEnough(omInt64 wanted, omInt64 begin, omInt64 end) {
  constexpr omInt64 most = omInt64{1} << 31;
  return std::clamp(wanted, end - most, begin + most);
}

/// The differences e^(p+1) − b^(p+1) over the runs [b, e) of a row, for p in 0 … 3: (p + 1) times the integral of x^p.
/// `Power` holds the fourth power of a column.
template <class Power>
std::array<Int128, 4> powersOfColumns(const RowIntersections::Row& row, omInt64 origin) {
  Power first = 0, second = 0, third = 0, fourth = 0;
  for (const PixelRun& run : row) {
    const Power b = run.begin - origin, e = run.end - origin;
    const Power bb = b * b, ee = e * e;
    first += e - b;
    second += ee - bb;
    third += ee * e - bb * b;
    fourth += ee * ee - bb * bb;
  }
  return {first, second, third, fourth};
}

/// The same of the row [j, j + 1).
std::array<Int128, 4> powersOfRow(omInt64 j) {
  const Int128 y = j;
  return {1, 2 * y + 1, 3 * y * (y + 1) + 1, 4 * y * y * y + 6 * y * y + 4 * y + 1};
}

/// (p + 1) (q + 1) m_pq about a pixel corner, `rowOrigin` counted from the first row. The bounds on both origins keep
/// each product within 128 bits: a column below 2^31 to the power p + 1, times that of a row, with p + q <= 3.
template <class Power>
std::array<WideSum, PlanarMoments::s_nbMoments> sumsAbout(const RowIntersections& set, omInt64 columnOrigin,
                                                          omInt64 rowOrigin) {
  std::array<WideSum, PlanarMoments::s_nbMoments> sums;
  for (std::size_t j = 0; j < set.getNbRows(); ++j) {
    const RowIntersections::Row row = set.getRow(set.getStartRow() + j);
    if (row.empty()) continue;
    const std::array<Int128, 4> columns = powersOfColumns<Power>(row, columnOrigin);
    const std::array<Int128, 4> rows = powersOfRow(static_cast<omInt64>(j) - rowOrigin);
    for (omUInt32 p = 0; p <= PlanarMoments::s_maxOrder; ++p)
      for (omUInt32 q = 0; p + q <= PlanarMoments::s_maxOrder; ++q)
        sums[PlanarMoments::index(p, q)].add(columns[p] * rows[q]);
  }
  return sums;
}

}  // namespace

Moments2dO3 moments(const RowIntersections& rows) {
  const Extent extent = extentOf(rows);
  if (extent.nbPixels == 0) return {};
  const auto nbRows = static_cast<omInt64>(rows.getNbRows());
  const omInt64 x =
      nearEnough(static_cast<omInt64>(extent.doubleColumns / 2 / extent.nbPixels), extent.begin, extent.end);
  const omInt64 y = nearEnough(static_cast<omInt64>(extent.rows / extent.nbPixels), 0, nbRows);
  constexpr omInt64 mostForSmall = omInt64{1} << 15;
  const bool isNarrow = x - extent.begin <= mostForSmall && extent.end - x <= mostForSmall;
  const auto sums = isNarrow ? sumsAbout<omInt64>(rows, x, y) : sumsAbout<Int128>(rows, x, y);
  PlanarMoments result;
  const Int128 row = Int128{rows.getStartRow()} + y;
  result.originX = static_cast<omReal64>(x);
  result.originY = static_cast<omReal64>(row);
  result.originYRest = static_cast<omReal64>(row - static_cast<Int128>(result.originY));
  for (omUInt32 p = 0; p <= PlanarMoments::s_maxOrder; ++p)
    for (omUInt32 q = 0; p + q <= PlanarMoments::s_maxOrder; ++q)
      result.about[PlanarMoments::index(p, q)] = sums[PlanarMoments::index(p, q)].toReal() / ((p + 1) * (q + 1));
  return Moments2dO3(result);
}

}  // namespace ormix::geom
