#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <string>
#include <vector>

namespace ormix::geom {

/// Colours for values, as legends have them: equal steps of the values look equally large, to colour-blind people too.
///
/// A scale with negative and positive values diverges from a light grey at 0, to blue below and to red above, and
/// reaches as far to either side (Moreland2009). Others run from dark violet to light yellow (Smith2015).
class ORMIX_GEOMETRY_API ColourScale {
 public:
  /// From `low` to `high`; diverging, and then extended to be symmetric around 0, where 0 lies between them.
  /// Exchanged bounds are put in order, equal ones are parted, and what is not finite counts as 0 and 1.
  ColourScale(omReal64 low, omReal64 high);

  /// The scale over the finite values, for all of them or for the given share around the median (in (0, 1]), so that
  /// a few outliers do not take the colours from the others. 0 to 1 where there is no finite value.
  /// Linear in the values.
  static ColourScale over(const std::vector<omReal64>& values, omReal64 share = 1);

  /// Where the scale begins and ends. What lies beyond has the colour of the end.
  /// @{
  omReal64 low() const { return _low; }
  omReal64 high() const { return _high; }
  /// @}

  /// The colour of a value as "#rrggbb"; a middle grey for NaN.
  std::string colour(omReal64 value) const;

  /// Colours at equal distances from `low` to `high`; between them it is interpolated in sRGB.
  std::vector<std::string> stops() const;

  /// Round numbers within the scale, at most seven, ascending.
  std::vector<omReal64> ticks() const;

 private:
  bool isDiverging() const { return _low < 0 && _high > 0; }

  omReal64 _low;
  omReal64 _high;
};

/// The largest of 1, 2 and 5 times a power of ten that is at most `length`, for scale bars and ticks; 0 where the
/// length is not positive, not finite or below 1e-300.
ORMIX_GEOMETRY_API omReal64 roundLength(omReal64 length);

}  // namespace ormix::geom
