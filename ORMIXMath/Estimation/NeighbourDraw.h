#pragma once

#include <ORMIXMath/Estimation/SampleDraw.h>
#include <ORMIXMath/Estimation/SampleView.h>

#include <array>
#include <vector>

/// \file
/// Draws of samples that lie near each other; not installed.

namespace ormix::detail {

/// Draws a sample and others among those nearest to it, of neighbourhoods of three sizes in turn. Who is near is found
/// once for each sample, when it is first drawn: O(samples).
class NeighbourDraw {
 public:
  static constexpr std::size_t s_nbSizes = 3;

  /// \param samples  remain valid; few
  void assign(const SampleView& samples, std::size_t minimalDataSize);
  bool isUsable() const { return !_nearest.empty(); }

  /// Fills `drawn` with distinct indices, the first of any sample.
  void draw(SampleDraw& draw, std::vector<std::size_t>& drawn);

 private:
  const std::vector<std::size_t>& nearestTo(std::size_t sample);

  SampleView _samples;
  std::array<std::size_t, s_nbSizes> _sizes{};
  std::size_t _turn = 0;
  std::vector<std::vector<std::size_t>> _nearest;  ///< by size of neighbourhood; empty where not yet found
  std::vector<omReal64> _squares;
};

}  // namespace ormix::detail
