#include <ORMIXGeometry/Tools/Svg/ColourScale.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace ormix::geom {

namespace {

using Colour = std::array<omReal64, 3>;

// Moreland's interpolation in polar CIELAB from (59, 76, 192) to (180, 4, 38) through an unsaturated (221, 221, 221).
constexpr std::array<omUInt32, 17> s_diverging{0x3b4cc0, 0x4e68d7, 0x6282ea, 0x779af7, 0x8db0fe, 0xa3c2ff,
                                               0xb8d0f9, 0xccd9ee, 0xdddddd, 0xecd3c6, 0xf5c4ad, 0xf7b194,
                                               0xf49a7b, 0xec7f63, 0xde614c, 0xcb3e38, 0xb40426};
// Sixteen colours of viridis.
constexpr std::array<omUInt32, 16> s_sequential{0x440154, 0x481a6c, 0x472f7d, 0x414487, 0x39568c, 0x31688e,
                                                0x2a788e, 0x23888e, 0x1f988b, 0x22a884, 0x35b779, 0x54c568,
                                                0x7ad151, 0xa5db36, 0xd2e21b, 0xfde725};

/// The colours of a scale, at equal distances.
struct Stops {
  const omUInt32* first;
  std::size_t count;
};
Stops stopsOf(bool isDiverging) {
  return isDiverging ? Stops{s_diverging.data(), s_diverging.size()} : Stops{s_sequential.data(), s_sequential.size()};
}

Colour components(omUInt32 colour) {
  return {omReal64(colour >> 16), omReal64(colour >> 8 & 0xff), omReal64(colour & 0xff)};
}

std::string text(const Colour& colour) {
  std::string result = "#";
  for (const omReal64 component : colour) {
    const auto value = static_cast<unsigned>(std::lround(component));
    result += "0123456789abcdef"[value / 16];
    result += "0123456789abcdef"[value % 16];
  }
  return result;
}

}  // namespace

ColourScale::ColourScale(omReal64 low, omReal64 high) : _low(std::min(low, high)), _high(std::max(low, high)) {
  if (!std::isfinite(low) || !std::isfinite(high)) {
    _low = 0;
    _high = 1;
  }
  if (isDiverging()) {
    _high = std::max(-_low, _high);
    _low = -_high;
  }
  if (_low == _high) {
    const omReal64 half = std::max(std::abs(_low) * 1e-3, 1e-300);
    _low -= _low > 0 || _low < 0 ? half : 0;
    _high += half;
  }
}

ColourScale ColourScale::over(const std::vector<omReal64>& values, omReal64 share) {
  std::vector<omReal64> finite;
  finite.reserve(values.size());
  std::copy_if(values.begin(), values.end(), std::back_inserter(finite), [](omReal64 v) { return std::isfinite(v); });
  if (finite.empty()) return {0, 1};
  const omReal64 outside = share > 0 && share < 1 ? (1 - share) / 2 : 0;
  const auto nbCut = static_cast<std::size_t>(outside * omReal64(finite.size() - 1));
  const auto first = finite.begin() + static_cast<std::ptrdiff_t>(nbCut);
  const auto last = finite.end() - 1 - static_cast<std::ptrdiff_t>(nbCut);
  std::nth_element(finite.begin(), first, finite.end());
  const omReal64 low = *first;
  std::nth_element(finite.begin(), last, finite.end());
  return {low, *last};
}

std::string ColourScale::colour(omReal64 value) const {
  if (std::isnan(value)) return "#808080";
  const Stops stops = stopsOf(isDiverging());
  const auto last = omReal64(stops.count - 1);
  // Halves, as the difference of the ends may overflow.
  const omReal64 inside = std::clamp((value / 2 - _low / 2) / (_high / 2 - _low / 2) * last, 0.0, last);
  const std::size_t stop = std::min(static_cast<std::size_t>(inside), stops.count - 2);
  const Colour a = components(stops.first[stop]), b = components(stops.first[stop + 1]);
  const omReal64 t = inside - omReal64(stop);
  return text({a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1]), a[2] + t * (b[2] - a[2])});
}

std::vector<std::string> ColourScale::stops() const {
  const Stops stops = stopsOf(isDiverging());
  std::vector<std::string> result;
  for (std::size_t k = 0; k < stops.count; ++k) result.push_back(text(components(stops.first[k])));
  return result;
}

std::vector<omReal64> ColourScale::ticks() const {
  const omReal64 length = _high / 6 - _low / 6, below = roundLength(length);
  std::vector<omReal64> result;
  if (below == 0) return {_low, _high};
  // The next round step that is not shorter than a sixth.
  omReal64 step = below;
  for (const omReal64 factor : {2.0, 2.5, 5.0, 10.0})
    if (step < length) step = roundLength(below * factor * (1 + 1e-9));
  const omReal64 first = std::ceil(_low / step - 1e-9), last = std::floor(_high / step + 1e-9);
  // Far from 0, steps may be too small to be counted.
  if (!(last - first < 8)) return {_low, _high};
  for (omReal64 k = first; k <= last; ++k) result.push_back(k * step + 0.0);
  return result;
}

omReal64 roundLength(omReal64 length) {
  if (!std::isfinite(length) || length < 1e-300) return 0;
  const omReal64 power = std::pow(10.0, std::floor(std::log10(length)));
  for (const omReal64 digit : {5.0, 2.0, 1.0})
    if (digit * power <= length * (1 + 1e-12)) return digit * power;
  return power / 2;
}

}  // namespace ormix::geom
