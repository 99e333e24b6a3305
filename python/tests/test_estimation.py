"""Fits of entities and transforms to arrays, estimators, robust loops and refinement."""

import copy
import itertools
import os
import pickle
import signal
import threading
import time

import numpy as np
import pytest

import ormixgeometry as og

RANDOM = np.random.default_rng(3)
ANGLES = RANDOM.random(60) * 2 * np.pi
UNIT = np.c_[np.cos(ANGLES), np.sin(ANGLES)]
DIRECTIONS = (lambda v: v / np.linalg.norm(v, axis=1, keepdims=True))(RANDOM.normal(size=(60, 3)))
LINES = np.c_[ANGLES, 3 * np.cos(ANGLES) + 4 * np.sin(ANGLES)]
# What each fit takes, and the parameters that it must find.
SHAPES = {
    "circle": (UNIT * 2 + [3, 4], [3, 4, 2]),
    "ellipse": (UNIT * [3, 2] + [1, -1], [1, -1, 3, 2, 0]),
    "line": (np.c_[ANGLES, 0 * ANGLES + 2], [np.pi / 2, 2]),
    "intersection": (LINES, [3, 4, 1]),
    "plan": (np.c_[RANDOM.random((60, 2)), 0 * ANGLES + 2], [0, 0, 2]),
    "sphere": (DIRECTIONS * 2 + [3, 4, 5], [3, 4, 5, 2]),
    "ellipsoid": (DIRECTIONS * [4, 3, 2] + [1, 2, 3], [1, 2, 3, 4, 3, 2, 0, 0, 0]),
}
ESTIMATORS = {"circle": "Circle2d", "ellipse": "Ellipse2d", "line": "Line2d", "intersection": "Line2dIntersection", "plan": "Plan3d", "sphere": "Sphere3d", "ellipsoid": "Ellipsoid3d"}
TRANSFORMS = [
    og.TranslationTransform2d(1, 2),
    og.RigidTransform2d(0.4, 5, -6),
    og.SimilarityTransform2d(2, -2.5, 3, 4),
    og.HomographyTransform2d([[1, 0.2, 3], [0.1, 2, 1], [0.01, 0.02, 1]]),
    og.TranslationTransform3d(1, 2, 3),
    og.RigidTransform3d(0.4, 0.1, 2, 5, -6, 7),
    og.SimilarityTransform3d(2, -2.5, 0.7, 0.1, 3, 4, 5),
    og.HomographyTransform3d(np.eye(4) + 0.01 * np.arange(16).reshape(4, 4) % 0.07),
]


def fit_of(transform):
    name = type(transform).__name__
    return getattr(og, "fit_" + name.replace("Transform", "").lower())


def estimator_of(name):
    return getattr(og, ESTIMATORS[name] + "Estimator")()


@pytest.mark.parametrize("name", SHAPES)
def test_shapes_are_recovered(name):
    samples, wanted = SHAPES[name]
    fit, estimator = getattr(og, "fit_" + name), estimator_of(name)
    params = estimator.compute_estimation(samples)
    skipped = 6 if name == "ellipsoid" else 4 if name == "ellipse" else len(wanted)  # angles have several values
    np.testing.assert_allclose(params[:skipped], wanted[:skipped], atol=1e-9)
    found = fit(samples)
    assert found == estimator.model(params) and found == fit(samples.tolist())
    reordered = np.asfortranarray(samples.astype(">f8"))[::-1]
    assert fit(reordered) == fit(samples[::-1].copy())
    assert abs(estimator.compute_residuals(samples, params)).max() < 1e-7 and estimator.residual_scale(params) > 0
    assert estimator.nb_params == len(wanted) and estimator.sample_dimension == samples.shape[1]
    for again in (copy.copy(estimator), pickle.loads(pickle.dumps(estimator)), eval(repr(estimator), vars(og))):
        assert again == estimator and type(again) is type(estimator)
    robust = og.robust_estimation(estimator, samples, threshold=1e-6, seed=5)
    assert robust.nb_inliers == len(samples) and robust.inliers.all() and robust.inliers.dtype == bool
    again = og.robust_estimation(ESTIMATORS[name] + "Estimator", samples, threshold=1e-6, seed=5)
    assert (again.params == robust.params).all() and again.entity == robust.entity


@pytest.mark.parametrize("name", SHAPES)
def test_hostile_samples(name):
    samples, wanted = SHAPES[name]
    fit, estimator = getattr(og, "fit_" + name), estimator_of(name)
    for count in range(estimator.minimal_data_size):
        with pytest.raises(og.Error):
            fit(samples[:count])
    for number in (np.nan, np.inf):
        broken = samples.copy()
        broken[7, 1] = number
        for options in ({}, {"report": True}):
            with pytest.raises(og.Error, match=r"\(samples\[7\] is not finite\)$"):
                fit(broken, **options)
    with pytest.raises(og.Error) as caught:
        fit(np.tile(samples[0], (20, 1)))
    assert caught.value.class_name.endswith(ESTIMATORS[name] + "Estimator")
    for wrong in (samples[:, :1], samples.ravel(), np.zeros((3, 2, 2)), np.c_[samples, samples], 5, None, "ab", samples + 0j, [[1, 2], [3]]):
        for call in (fit, estimator.compute_estimation, lambda s: og.robust_estimation(estimator, s)):
            with pytest.raises((TypeError, ValueError)):
                call(wrong)
    for params in ([], [1] * 30, [[1]], "a"):
        for call in (lambda p: estimator.model(p), lambda p: estimator.residual_scale(p), lambda p: estimator.compute_residuals(samples, p)):
            with pytest.raises((og.Error, TypeError, ValueError)):
                call(params)


def test_linear_fits_are_those_of_least_squares():
    noisy = SHAPES["circle"][0] + RANDOM.normal(size=(60, 2)) * 0.1
    x, y = noisy.T
    a, b, c = np.linalg.lstsq(np.c_[2 * x, 2 * y, np.ones(60)], x * x + y * y, rcond=None)[0]
    params = og.Circle2dEstimator().compute_estimation(noisy)
    np.testing.assert_allclose(params, [a, b, np.sqrt(c + a * a + b * b)], rtol=1e-12)
    cloud = RANDOM.normal(size=(200, 3)) * [5, 3, 0.1] + [1, 2, 30]
    theta, phi, d = og.Plan3dEstimator().compute_estimation(cloud)
    normal = [np.sin(theta) * np.cos(phi), np.sin(theta) * np.sin(phi), np.cos(theta)]
    wanted = np.linalg.svd(cloud - cloud.mean(0))[2][2]
    np.testing.assert_allclose(abs(np.dot(normal, wanted)), 1, atol=1e-12)
    np.testing.assert_allclose(cloud.mean(0) @ normal, d, rtol=1e-12)


@pytest.mark.parametrize("transform", TRANSFORMS, ids=lambda t: type(t).__name__)
def test_transforms_are_recovered(transform):
    d = transform.matrix.shape[0] - 1
    sources = RANDOM.normal(size=(50, d))
    targets = transform @ sources
    fit = fit_of(transform)
    found = fit(sources, targets)
    assert type(found) is type(transform)
    np.testing.assert_allclose(found.matrix, transform.matrix / transform.matrix[d, d], atol=1e-9)
    estimator = getattr(og, type(transform).__name__ + "Estimator")()
    pairs = np.hstack([sources, targets])
    np.testing.assert_allclose(estimator.model(estimator.compute_estimation(pairs)).matrix, found.matrix, atol=1e-12)
    pairs[::5, d:] += RANDOM.normal(size=(10, d)) * 20
    robust = og.robust_estimation(estimator, pairs, threshold=1e-6)
    assert (robust.inliers == (np.arange(50) % 5 > 0)).all() and robust.end == og.eRobustEnd.eRO_Confident
    with pytest.raises(og.Error):
        fit(sources, targets[:-1])
    for wrong in (sources[:, :1], None, "ab"):
        with pytest.raises((TypeError, ValueError)):
            fit(sources, wrong)


def test_robust_methods_and_options():
    points = SHAPES["circle"][0].copy()
    points[:20] += RANDOM.normal(size=(20, 2)) * 5
    for method in og.eRobustMethod.__members__:
        found = og.robust_estimation("ormix::geom::Circle2dEstimator", points, method=method, threshold=0.01)
        assert found.inliers[20:].all() and found.entity == og.Circle2dEstimator().model(found.params)
        assert f"nb_inliers={found.nb_inliers}" in repr(found)
        assert found.nb_false_alarms < 1e-6 and found.sigma <= 0.01 and found.end == og.eRobustEnd.eRO_Confident
    noise = RANDOM.uniform(size=(100, 2))
    assert og.robust_estimation("Line2dEstimator", noise).end != og.eRobustEnd.eRO_Confident
    ranked = og.robust_estimation("Circle2dEstimator", points[::-1], method="eRM_Acontrario", is_ranked=True)
    assert ranked.nb_iterations < 20 and ranked.inliers[:-20].all()
    for wrong in ({"confidence": 2}, {"threshold": -1}, {"threshold": np.nan}, {"nb_max_iterations": 0}, {"max_false_alarms": 0}):
        with pytest.raises(og.Error):
            og.robust_estimation("Circle2dEstimator", points, **wrong)
    for wrong in ({"seed": -1}, {"method": "eRM_None"}, {"progress": 5}, {"nb_max_iterations": 1.5}):
        with pytest.raises(TypeError):
            og.robust_estimation("Circle2dEstimator", points, **wrong)
    for name, value in {"seed": -1, "method": "eRM_None", "nb_max_iterations": 1.5, "threshold": "a"}.items():
        with pytest.raises(TypeError, match=f"^robust: {name}: {value!r} is no value"):
            og.fit_circle(points, robust={name: value})
    for wrong in ("Circle2d", "nothing", "", "AreaMsr2d"):
        with pytest.raises(ValueError, match="estimator"):
            og.robust_estimation(wrong, points)


@pytest.mark.parametrize("name", ["circle", "sphere"])
def test_refinement_lowers_the_cost(name):
    samples, wanted = SHAPES[name]
    found = estimator_of(name).refine_estimation(samples, np.array(wanted) + 0.1)
    assert found.cost <= found.initial_cost and len(found.params) == len(wanted)
    for start in ([], [1, 2], [np.nan] * len(wanted)):
        with pytest.raises(og.Error):
            estimator_of(name).refine_estimation(samples, start)


def endless(progress):
    return og.robust_estimation("Circle2dEstimator", RANDOM.random((2000, 2)), threshold=1e-9, confidence=1 - 1e-15, nb_max_iterations=10**8, progress=progress)


def test_progress_stops_and_raises():
    fractions = []

    def watch(fraction):
        fractions.append(fraction)
        return len(fractions) < 3

    assert endless(watch).end == og.eRobustEnd.eRO_Stopped and len(fractions) == 3
    assert all(0 <= f <= 1 for f in fractions)
    with pytest.raises(ZeroDivisionError):
        endless(lambda fraction: 1 / 0)


def test_an_interrupt_ends_it_and_threads_run():
    count = itertools.count()
    ended = threading.Event()

    def run():
        while not ended.wait(0.001):
            next(count)
        os.kill(os.getpid(), signal.SIGINT)

    thread = threading.Thread(target=run)
    thread.start()
    threading.Timer(0.3, ended.set).start()
    begin = time.monotonic()
    with pytest.raises(KeyboardInterrupt):
        endless(None)
    thread.join()
    assert next(count) > 10 and time.monotonic() - begin < 30


@pytest.mark.parametrize("name, dimension", [("circle", 2), ("ellipse", 2), ("line", 2), ("plan", 3), ("sphere", 3), ("ellipsoid", 3)])
def test_fits_with_a_report(name, dimension):
    rng = np.random.default_rng(7)
    points = rng.normal(size=(200, dimension))
    points = points / np.linalg.norm(points, axis=1)[:, None] * np.array([5, 3, 2])[:dimension] if name.startswith("ell") else (
        np.c_[points[:, 1:], 0.5 * points[:, 1]] if name in ("line", "plan") else points / np.linalg.norm(points, axis=1)[:, None]
    )
    points += 0.01 * rng.normal(size=points.shape)
    fit = getattr(og, "fit_" + name)
    entity, report = fit(points, report=True)
    nb = len(report.parameter_names)
    assert type(entity) is type(fit(points)) and report.model in type(entity).__name__
    assert report.params.shape == (nb,) and report.covariance.shape == (nb, nb) and report.residuals.shape == (200,)
    assert 0.008 < report.sigma0 < 0.012 and np.allclose(report.sigma0, np.sqrt(np.sum(report.residuals**2) / report.degrees_of_freedom))
    assert report.status and report.status.code == og.eEstimationCode.eEC_Success
    assert pickle.loads(pickle.dumps(report)) == report
    assert f"{report.parameter_names[-1]} " in str(report) and "(k = 2)" in str(report)
    # A point of weight 0 is left out, and covariances are weights where they are round.
    weights = np.ones(200)
    weights[3] = 0
    rest, without = fit(np.delete(points, 3, axis=0), report=True)
    assert np.array_equal(fit(points, report=True, weights=weights)[1].params, without.params)
    covariances = np.tile(np.eye(dimension) * 1e-4, (200, 1, 1))
    assert np.allclose(fit(points, report=True, weights=covariances, sigma=1)[1].params, report.params, atol=1e-7)
    assert type(fit(points, method="eFM_Algebraic")) is type(entity)


def test_fits_refuse_wrong_options():
    points = np.array([[1, 0], [0, 1], [-1, 0], [0, -1.1]])
    for options, error in [
        ({"weights": [1, 2, 3]}, og.Error),
        ({"weights": [1, 2, 3, -1]}, og.Error),
        ({"weights": np.ones((4, 3))}, ValueError),
        ({"weights": []}, ValueError),
        ({"sigma": np.nan}, og.Error),
        ({"loss": "eLS_None"}, TypeError),
        ({"robust": {"treshold": 1}}, ValueError),
        ({"robust": 3}, TypeError),
        ({"nb_max_iterations": 0, "report": True}, og.Error),
        ({"method": "eFM_Algebraic", "loss": "eLS_Huber"}, og.Error),
    ]:
        with pytest.raises(error):
            og.fit_circle(points, **options)
    with pytest.raises(KeyError):
        og.fit_circle(points, report=True)[1].standard_uncertainty("rho")
    with pytest.raises(ZeroDivisionError):
        og.fit_circle(points, report=True, progress=lambda fraction: 1 / 0)


FORMS = {
    "planar_straightness": (2, lambda t, r, e: np.stack([9 * t, e], -1)),
    "spatial_straightness": (3, lambda t, r, e: np.stack([9 * t, e, e * r], -1)),
    "flatness": (3, lambda t, r, e: np.stack([9 * t, 5 * r, e], -1)),
    "roundness": (2, lambda t, r, e: (2 + e)[:, None] * np.stack([np.cos(6 * t), np.sin(6 * t)], -1)),
    "sphericity": (3, lambda t, r, e: (2 + e)[:, None] * np.stack(
        [np.cos(6 * t) * np.sqrt(1 - r * r), np.sin(6 * t) * np.sqrt(1 - r * r), r], -1)),
    "cylindricity": (3, lambda t, r, e: np.stack([(2 + e) * np.cos(6 * t), 7 * r, (2 + e) * np.sin(6 * t)], -1)),
}


@pytest.mark.parametrize("name", FORMS)
def test_forms_are_least_from_the_zone_and_refuse_what_is_none(name):
    dimension, make = FORMS[name]
    measure = getattr(og, name)
    draw = np.random.default_rng(14)
    points = make(draw.random(200), draw.uniform(-1, 1, 200), 0.01 * draw.uniform(-1, 1, 200))
    zone, least_squares = measure(points), measure(points, reference="eFR_LeastSquares")
    assert 0 < zone.deviation <= least_squares.deviation < 0.05
    assert zone.reference == og.eFormReference.eFR_MinimumZone and least_squares.outer_contacts == []
    assert zone.outer_contacts and max(zone.outer_contacts + zone.inner_contacts) < 200
    assert len(zone.point) == len(zone.direction) == dimension and "deviation=" in repr(zone)
    with pytest.raises(og.Error, match="eEC_TooFewSamples"):
        measure(points[:1])
    with pytest.raises(og.Error, match="sample 7"):
        measure(np.where(np.arange(200)[:, None] == 7, np.nan, points))
    with pytest.raises(ValueError):
        measure(points[:, :1])
