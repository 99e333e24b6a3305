"""Fits with reports, and what follows from them."""

import copy
import pickle

import numpy as np
import ormixgeometry as og
import pytest

RNG = np.random.default_rng(5)
SOURCES = RNG.uniform(-5, 5, (30, 2))
TURN = np.array([[0.8, -0.6], [0.6, 0.8]])
TARGETS = SOURCES @ TURN.T + [3, 4] + RNG.normal(0, 0.01, (30, 2))


@pytest.mark.parametrize("name", ["translation", "rigid", "similarity", "homography"])
@pytest.mark.parametrize("dimension", [2, 3])
def test_every_transform_has_a_report(name, dimension):
    fit = getattr(og, f"fit_{name}{dimension}d")
    sources = RNG.uniform(-5, 5, (30, dimension))
    targets = sources + 1 + RNG.normal(0, 0.01, sources.shape)
    transform, report = fit(sources, targets, report=True)
    n = len(report.params)
    assert type(transform).__name__ == report.model
    assert report.covariance.shape == (n, n) and len(report.parameter_names) == n
    assert np.linalg.matrix_rank(report.covariance, tol=1e-14) == n - (name == "homography")
    assert 0.007 < report.sigma0 < 0.013
    assert report.residuals.shape == (30,) and report.inliers.size == 0
    assert "(k = 2)" in str(report) and report.status.code == og.eEstimationCode.eEC_Success
    assert copy.deepcopy(report) == report == pickle.loads(pickle.dumps(report))
    assert fit(sources, targets) == fit(sources, targets, report=False)
    covariances = np.broadcast_to(np.eye(2 * dimension) * 1e-4, (30, 2 * dimension, 2 * dimension))
    _, symmetric = fit(sources, targets, report=True, weights=covariances, sigma=1)
    if name == "translation":
        np.testing.assert_allclose(symmetric.covariance, np.eye(dimension) * 2e-4 / 30, rtol=1e-9, atol=1e-20)


def test_weights_losses_and_outliers():
    weights = np.ones(30)
    damaged = TARGETS.copy()
    damaged[7] += 9
    weights[7] = 0
    _, without = og.fit_rigid2d(SOURCES, damaged, report=True, weights=weights)
    _, lossy = og.fit_rigid2d(SOURCES, damaged, report=True, loss="eLS_Tukey")
    _, robust = og.fit_rigid2d(SOURCES, damaged, report=True, robust={"threshold": 0.1})
    for report in (without, lossy, robust):
        assert report.weights[7] == 0
        assert abs(report.params[0] - np.arctan2(0.6, 0.8)) < 4 * report.standard_uncertainty("theta")
    assert list(np.flatnonzero(~robust.inliers)) == [7]
    for wrong in (np.ones(29), -np.ones(30), np.ones((30, 3)), np.full(30, np.nan)):
        with pytest.raises((og.Error, ValueError)):
            og.fit_rigid2d(SOURCES, TARGETS, weights=wrong)
    with pytest.raises(TypeError):
        og.fit_rigid2d(SOURCES, TARGETS, loss="eLS_None")
    with pytest.raises(ZeroDivisionError):
        og.fit_homography2d(SOURCES, TARGETS, weights=np.linspace(1, 2, 30), progress=lambda fraction: 1 / 0)


def test_uncertainty_goes_on():
    lines = [[a, 3 * np.cos(a) + 4 * np.sin(a) + e] for a, e in zip(np.linspace(0, 2, 9), RNG.normal(0, 0.01, 9))]
    point, report = og.fit_intersection(lines, report=True)
    transform, of_transform = og.fit_rigid2d(SOURCES, TARGETS, report=True)
    exact = og.transformed(report, transform)
    both = og.transformed(report, of_transform)
    np.testing.assert_allclose(both.params, exact.params)
    np.testing.assert_allclose(exact.covariance, TURN @ report.covariance @ TURN.T, rtol=1e-2)
    assert np.all(np.linalg.eigvalsh(both.covariance - exact.covariance) > 0)
    gap = og.uncertain_distance(report, both)
    assert gap.value == pytest.approx(np.hypot(*(both.params - report.params)))
    assert 0 < gap.standard_uncertainty < 0.1 and str(gap).endswith("(k = 2)")
    with pytest.raises(og.Error):
        og.uncertain_volume(report)
    with pytest.raises(og.Error):
        og.uncertain_area(of_transform)
    with pytest.raises(KeyError):
        report.standard_uncertainty("radius")
    with pytest.raises(IndexError):
        report.standard_uncertainty(2)
    for wrong, error in ((1.5, TypeError), (None, TypeError), (2**80, IndexError)):
        with pytest.raises(error):
            report.standard_uncertainty(wrong)


def test_estimators_say_why():
    estimator = og.RigidTransform2dEstimator()
    with pytest.raises(og.Error):
        estimator.compute_estimation(np.ones((4, 4)))
    assert estimator.status.code == og.eEstimationCode.eEC_Coincident
    assert estimator.status.indices == [1, 2, 3] and estimator.status.advice
