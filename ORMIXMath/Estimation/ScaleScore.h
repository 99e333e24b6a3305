#pragma once

#include <ORMIXMath/Estimation/ChanceModel.h>

#include <array>
#include <vector>

/// \file
/// The score of a model whose scale is not known; not installed.

namespace ormix::detail {

/// How little likely it is by accident that as many samples are as near to a model, at the distance where it is the
/// least likely. Distances are sorted into bins, each sqrt(2) times as far as the one before.
class ScaleScore {
 public:
  /// \param lowest  distances up to it are all the same, above 0
  explicit ScaleScore(omReal64 lowest) : _lowest(lowest) {}

  /// Adds the chance of a model, evaluated last; the mean of those added is used.
  void addChance(const ChanceModel& chance);
  void useChance();

  /// The number of samples that are scored, and how many of them determine a model.
  void setSizes(std::size_t nbSamples, std::size_t minimalDataSize);

  /// The least logarithm, over all distances, of a bound of the chance that as many are within; 0 where there are no
  /// more than by chance.
  struct Agreement {
    omReal64 logChance = 0;
    omReal64 distance = 0;
    std::size_t nbInliers = 0;
  };
  /// \param squares  of the distances, infinite or at least 0, as ModelDistances gives them; infinite ones agree with
  /// no model
  Agreement agreement(const std::vector<omReal64>& squares) const;

 private:
  // The last one is of distances that may be infinite, and never scored.
  static constexpr std::size_t s_nbBins = 128;

  /// The largest distance in a bin.
  omReal64 edge(std::size_t bin) const;

  omReal64 _lowest;
  std::size_t _nbModels = 0;
  std::array<omReal64, s_nbBins> _logChance{};
  std::array<omReal64, s_nbBins> _logMiss{};
  std::size_t _nbBinsUsed = 0;
  std::size_t _minimalDataSize = 0;
  std::vector<omReal64> _entropy;  ///< of as many of the samples
};

}  // namespace ormix::detail
