// Draws of the loop, and how many of them are needed.

#include <ORMIXMath/Estimation/AcontrarioLoop.h>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <limits>

namespace ormix::detail {

namespace {

// Sets of inliers of which the share that leads to the best model is taken.
constexpr std::size_t s_nbTries = 16;

}  // namespace

/// The drawn ones of some samples, copied.
SampleView AcontrarioLoop::copied(const SampleView& from) {
  _gathered.resize(std::max(_gathered.size(), _drawn.size() * from.dimension));
  auto target = _gathered.begin();
  for (const std::size_t i : _drawn) target = std::copy(from[i], from[i] + from.dimension, target);
  return {_gathered.data(), _drawn.size(), from.dimension};
}

/// Makes the models through a minimal set the first of `_models`; their number.
std::size_t AcontrarioLoop::estimateMinimal(const SampleView& samples) {
  const std::size_t nbParams = _estimator.getNbParams();
  if (_rough) return _rough->estimateMinimal(samples, nbParams, _models);
  if (_models.empty()) _models.resize(1, RealVector(nbParams));
  return _estimator.processViewEstimation(samples, _models.front()) ? 1 : 0;
}

/// Draws a minimal set of samples, makes the models through it the first of `_models` and returns their number.
std::size_t AcontrarioLoop::drawModels() {
  if (_drawsNear && _nbIterations % 2 == 0) {
    _near.draw(_draw, _drawn);
    return estimateMinimal(copied({_partRows.data(), _partSize, _samples.dimension}));
  }
  if (_options.isRanked)
    _ranked.draw(_draw, _drawn);
  else
    _draw.draw(_samples.nbSamples, _drawn);
  return estimateMinimal(copied(_samples));
}

/// Sets what share of draws lead to the best model once they are of its inliers, and where samples are ranked the
/// largest share of inliers among the first of them.
void AcontrarioLoop::considerInliers() {
  _determinedShare = 1;
  if (!_first.evaluate(_estimator, _best.params) || !score(_best)) return;
  std::vector<std::size_t> inliers;
  for (std::size_t i = 0; i < _partSize; ++i)
    if (_squares[i] <= _best.scale * _best.scale) inliers.push_back(i);
  if (inliers.size() < _drawn.size()) return;
  if (_options.isRanked) _bestShare = std::max(_bestShare, rankedShare(inliers));
  _determinedShare = determinedShare(inliers);
}

/// The largest share of inliers among the first of ranked samples, at least as many as draws were from.
omReal64 AcontrarioLoop::rankedShare(const std::vector<std::size_t>& inliers) const {
  constexpr std::size_t fewest = 20;
  omReal64 share = 0;
  for (std::size_t count = _samples.nbSamples; count >= std::max(_ranked.pool(), fewest); count -= count / 5) {
    const auto isAmong = [&](std::size_t i) { return _order[i] < count; };
    const auto nbAmong = std::count_if(_order.begin(), _order.begin() + static_cast<std::ptrdiff_t>(_partSize),
                                       [&](std::size_t rank) { return rank < count; });
    const auto nbInliers = std::count_if(inliers.begin(), inliers.end(), isAmong);
    if (static_cast<std::size_t>(nbAmong) < fewest) break;
    share = std::max(share, static_cast<omReal64>(nbInliers) / static_cast<omReal64>(nbAmong));
  }
  return share;
}

/// The share of minimal sets of inliers that determine a model; where neighbours are drawn, one near to the best.
omReal64 AcontrarioLoop::determinedShare(const std::vector<std::size_t>& inliers) {
  omReal64 nbFound = 0;
  for (std::size_t k = 0; k < s_nbTries; ++k) {
    _draw.draw(inliers.size(), _drawn);
    for (std::size_t& index : _drawn) index = inliers[index];
    const std::size_t nbModels = estimateMinimal(copied({_partRows.data(), _partSize, _samples.dimension}));
    nbFound += _near.isUsable() ? leadsBack(nbModels) : nbModels > 0;
  }
  return std::max(nbFound, 0.5) / static_cast<omReal64>(s_nbTries);
}

/// Whether one of the last models is so much better than chance that refits improve it to the best one.
bool AcontrarioLoop::leadsBack(std::size_t nbModels) {
  constexpr omReal64 enough = 0.25;
  for (std::size_t k = 0; k < nbModels; ++k) {
    _refit.params.swap(_models[k]);
    if (isPromising(_refit.params) && score(_refit) && evidence(_refit) >= enough * evidence(_best)) return true;
  }
  return false;
}

/// The number of draws after which, with the confidence asked for, one led to the best model. Where models are local
/// none are needed any more once it was found so often: had others as good a chance, one of them would have been, too.
omReal64 AcontrarioLoop::nbDrawsNeeded() const {
  if (!(_bestShare > 0)) return std::numeric_limits<omReal64>::infinity();
  if (_near.isUsable() && static_cast<omReal64>(_nbFinds) >= -std::log1p(-_options.confidence)) return 1;
  omReal64 allInliers = _determinedShare;
  for (std::size_t k = 0; k < _drawn.size(); ++k) allInliers *= _bestShare;
  if (allInliers >= 1) return 1;
  if (!(allInliers > 0)) return std::numeric_limits<omReal64>::infinity();
  // Where neighbours are drawn every other draw is one from all.
  return (_drawsNear ? 2 : 1) * std::ceil(std::log1p(-_options.confidence) / std::log1p(-allInliers));
}

}  // namespace ormix::detail
