#pragma once

#include <ORMIXMath/Estimation/ChanceModel.h>
#include <ORMIXMath/Estimation/ModelScore.h>
#include <ORMIXMath/Estimation/NeighbourDraw.h>
#include <ORMIXMath/Estimation/RobustEstimation.h>
#include <ORMIXMath/Estimation/RobustModel.h>
#include <ORMIXMath/Estimation/SampleDraw.h>
#include <ORMIXMath/Estimation/ScaleScore.h>

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
  SampleView copied(const SampleView& from);
  std::size_t estimateMinimal(const SampleView& samples);
  bool refine(const SampleView& samples, RealVector& params);
  std::size_t drawModels();
  void consider(omReal64& rawBest, omReal64& nbNeeded);
  bool isPromising(const RealVector& params);
  bool score(Hypothesis& hypothesis);
  void improve(Hypothesis& hypothesis);
  void drawNear(Hypothesis& hypothesis);
  void take(Hypothesis& hypothesis);
  bool isSignificant();
  void considerInliers();
  omReal64 rankedShare(const std::vector<std::size_t>& inliers) const;
  omReal64 determinedShare(const std::vector<std::size_t>& inliers);
  omReal64 evidence(const Hypothesis& hypothesis) const;
  bool leadsBack(std::size_t nbModels);
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
  ScaleScore _byScale;
  NeighbourDraw _near;  ///< of the part; not usable where models are not local
  bool _drawsNear = false;
  std::vector<RealVector> _models;  ///< the last ones through a minimal set
  std::size_t _nbFirstNeeded = 0;
  Hypothesis _trial, _refit, _inner, _best, _epochBest;
  omReal64 _bestShare = 0;
  omReal64 _determinedShare = 1;
  std::size_t _nbFinds = 0;  ///< models as good as the best one, itself included
  omReal64 _progress = 0;
  std::size_t _nbIterations = 0;
  std::size_t _nbDegenerate = 0;
  eRobustEnd _end = eRO_IterationLimit;
};

}  // namespace ormix::detail
