#pragma once

#include <ORMIXMath/Estimation/ChanceModel.h>
#include <ORMIXMath/Estimation/ModelScore.h>
#include <ORMIXMath/Estimation/RobustEstimation.h>
#include <ORMIXMath/Estimation/RobustModel.h>
#include <ORMIXMath/Estimation/SampleDraw.h>

#include <array>
#include <vector>

/// \file
/// The robust loop of eRM_Acontrario; not installed.

namespace ormix::detail {

/// One robust estimation. Models are scored on a part of the samples, chosen at random, which grows eightfold while no
/// consensus beats chance; of each model the distances of few samples are taken first, and those of the others only
/// where it may still be the best (MatasChum2004). The best is refitted to its inliers among all samples.
class AcontrarioLoop {
 public:
  /// Options and samples were checked.
  /// \param rounding distances up to it may be due to rounding of coordinates
  AcontrarioLoop(BaseEstimator& estimator, const SampleView& samples, const RobustOptions& options, omReal64 rounding);

  BoolResult run(RobustResult& result);

 private:
  // Bins of distances, each sqrt(2) times as far as the one before.
  static constexpr std::size_t s_nbBins = 128;

  /// A model and how the samples of the part agree with it.
  struct Hypothesis {
    RealVector params;
    omReal64 loss = 0;          ///< smaller is better
    omReal64 scale = 0;         ///< the distance of inliers
    std::size_t nbInliers = 0;  ///< in the part
  };

  bool isKnown() const { return _options.threshold > 0; }
  bool prepareChance();
  void choosePart(std::size_t size);
  bool estimate(const SampleView& samples, RealVector& params);
  bool drawModel();
  bool isPromising(const RealVector& params);
  bool score(Hypothesis& hypothesis);
  void scoreByScale(Hypothesis& hypothesis);
  void improve(Hypothesis& hypothesis);
  void take(Hypothesis& hypothesis);
  bool isSignificant();
  void considerInliers();
  omReal64 nbDrawsNeeded() const;
  void search();
  SampleView gather(const SampleView& rows, const std::vector<omReal64>& squares, omReal64 threshold);
  bool polish(RealVector& params, omReal64& threshold);
  BoolResult finish(RobustResult& result);

  BaseEstimator& _estimator;
  const RobustModel* _rough;
  SampleView _all;
  SampleView _samples;  ///< those that are finite
  std::vector<omReal64> _finite;
  const RobustOptions& _options;
  omReal64 _rounding;
  SampleDraw _draw;
  ChanceModel _chance;
  std::vector<std::size_t> _drawn;
  RankedDraw _ranked;
  std::vector<std::size_t> _order;  ///< of the samples, the part first
  std::vector<omReal64> _partRows;
  std::vector<omReal64> _gathered;
  std::size_t _partSize = 0;
  ModelDistances _first;  ///< of the first samples of the part
  ModelDistances _rest;
  std::vector<omReal64> _squares;  ///< of the part, of the hypothesis that was scored last
  std::array<omReal64, s_nbBins> _logChance{};
  std::array<omReal64, s_nbBins> _logMiss{};
  std::vector<omReal64> _entropy;
  std::size_t _nbBinsUsed = 0;
  std::size_t _nbFirstNeeded = 0;
  Hypothesis _trial, _refit, _best, _epochBest;
  omReal64 _bestShare = 0;
  omReal64 _determinedShare = 1;
  omReal64 _progress = 0;
  std::size_t _nbIterations = 0;
  std::size_t _nbDegenerate = 0;
  eRobustEnd _end = eRO_IterationLimit;
};

/// The standard deviation of one coordinate of the errors of samples, from their distances: of those within
/// `threshold`, with what the truncation takes and what outliers add taken into account. `threshold` becomes the
/// distance within which nearly all inliers are, at least `smallest` and at most `largest`. The chance model has
/// evaluated the same model.
omReal64 deviationWithin(const ModelDistances& distances, const ChanceModel& chance, std::size_t minimalDataSize,
                         omReal64 smallest, omReal64 largest, omReal64& threshold);

}  // namespace ormix::detail
