"""Fits of chunked points.

The rows of a least-squares problem are merged through their triangular factors: the factor of two chunks is that of
their factors, one above the other (TSQR, Demmel2012). Unlike sums of products this keeps all digits. Points are moved to
their mean and scaled first, which takes one pass of its own.
"""

from dataclasses import dataclass
from typing import Any

import dask
import dask.array
import numpy as np

import ormixgeometry as og


def _matrix(points, columns, name):
    points = dask.array.asarray(points)
    if points.ndim != 2 or points.shape[1] not in columns:
        raise ValueError(f"{name}: an array of shape (n, {' or '.join(map(str, columns))}) was wanted, not {points.shape}")
    return points.rechunk({1: -1}).astype("float64")


def _chunks(points):
    return [block for (block,) in points.to_delayed()]


def _extent(rows):
    return len(rows), rows.sum(axis=0), np.abs(rows).max(axis=0, initial=0)


def _frame(chunks):
    """The mean of all rows, and a power of two by which their differences from it are divided."""
    counts, sums, greatest = zip(*dask.compute(*[dask.delayed(_extent)(chunk) for chunk in chunks]))
    if sum(counts) == 0:
        raise og.Error("there are no points to fit")
    mean = np.sum(sums, axis=0) / sum(counts)
    size = np.max(np.max(greatest, axis=0) + np.abs(mean))
    if not np.isfinite(size):
        raise og.Error("a coordinate of the points is not finite")
    spread = np.max(dask.compute(*[dask.delayed(_spread)(chunk, mean) for chunk in chunks]))
    return mean, 2.0 ** np.ceil(np.log2(spread)) if spread > 0 else 1.0


def _spread(rows, mean):
    return np.abs(rows - mean).max(initial=0)


def _factor(rows, mean, scale, lift, select):
    if select is not None:
        rows = rows[select(rows)]
    rows = (rows - mean) / scale
    columns = [np.ones(len(rows)), *rows.T]
    if lift:
        columns.append((rows * rows).sum(axis=1))
    return np.linalg.qr(np.stack(columns, axis=1), mode="r")


def _merge(factors):
    return np.linalg.qr(np.concatenate(factors), mode="r")


def _merged(chunks, mean, scale, lift=False, select=None):
    """The triangular factor of the rows [1, coordinates, and with `lift` their squared length], of all chunks."""
    factors = [dask.delayed(_factor)(chunk, mean, scale, lift, select) for chunk in chunks]
    while len(factors) > 1:
        factors = [dask.delayed(_merge)(factors[i : i + 8]) for i in range(0, len(factors), 8)]
    factor = dask.compute(factors[0])[0]
    width = len(mean) + 1 + lift
    return np.concatenate([factor, np.zeros((max(0, width - len(factor)), width))])


def _sphere(factor, mean, scale):
    """Centre and radius of the least-squares solution of |p|^2 = 2 c p + d."""
    size = len(mean) + 1
    diagonal = np.abs(np.diag(factor)[:size])
    if diagonal.min() <= size * np.finfo(float).eps * diagonal.max():
        raise og.Error("the points do not determine a circle or sphere: they are too few or collinear")
    solution = np.linalg.solve(factor[:size, :size], factor[:size, size])
    center = solution[1:] / 2
    return mean + scale * center, scale * np.sqrt(solution[0] + center @ center)


def _flat(factor, mean, scale):
    """Normal of length 1 and distance from the origin of the line or plane that is nearest in the sense of squares."""
    offset = factor[0, 1:] / factor[0, 0]
    _, values, directions = np.linalg.svd(factor[1:, 1:])
    if values[0] == 0 or values[-2] <= len(mean) * np.finfo(float).eps * values[0]:
        raise og.Error("the points do not determine a line or plane: they are too few or lie too low-dimensional")
    normal = directions[-1]
    return normal, normal @ (mean + scale * offset)


def _solve_line(factor, mean, scale):
    normal, rho = _flat(factor, mean, scale)
    if rho < 0:
        normal, rho = -normal, -rho
    return og.Line2d(rho=rho, theta=np.arctan2(normal[1], normal[0]))


def _solve_plan(factor, mean, scale):
    normal, rho = _flat(factor, mean, scale)
    if rho < 0:
        normal, rho = -normal, -rho
    return og.Plan3d(rho=rho, theta=np.arccos(np.clip(normal[2], -1, 1)), phi=np.arctan2(normal[1], normal[0]))


def _solve_circle(factor, mean, scale):
    return og.Circle2d(*_sphere(factor, mean, scale))


def _solve_sphere(factor, mean, scale):
    return og.Sphere3d(*_sphere(factor, mean, scale))


def _solve_rigid(factor, mean, scale):
    """Matrix of the rotation and translation that maps the first half of the columns to the second (Kabsch)."""
    size = len(mean) // 2
    offset = mean + scale * factor[0, 1:] / factor[0, 0]
    part = factor[1:, 1:]
    u, values, v = np.linalg.svd(part[:, :size].T @ part[:, size:])
    if values[size - 2] <= size * np.finfo(float).eps * values[0] or values[0] == 0:
        raise og.Error("the pairs do not determine a rigid motion: they are too few or lie too low-dimensional")
    signs = np.ones(size)
    signs[-1] = np.sign(np.linalg.det(u) * np.linalg.det(v))
    matrix = np.eye(size + 1)
    matrix[:size, :size] = v.T @ np.diag(signs) @ u.T
    matrix[:size, size] = offset[size:] - matrix[:size, :size] @ offset[:size]
    return matrix


@dataclass
class _Model:
    dimension: int
    lift: bool
    solve: Any
    minimal: int
    fit: Any  # of few points, by the package


_MODELS = {
    "line": _Model(2, False, _solve_line, 2, lambda points: og.fit_line(points)),
    "plan": _Model(3, False, _solve_plan, 3, lambda points: og.fit_plan(points)),
    "circle": _Model(2, True, _solve_circle, 3, lambda points: og.fit_circle(points)),
    "sphere": _Model(3, True, _solve_sphere, 4, lambda points: og.fit_sphere(points)),
}


def _fit(name, points):
    model = _MODELS[name]
    chunks = _chunks(_matrix(points, (model.dimension,), "points"))
    mean, scale = _frame(chunks)
    return model.solve(_merged(chunks, mean, scale, model.lift), mean, scale)


def fit_line(points):
    """The line with the least sum of squared distances to points, an array of Dask of shape (n, 2)."""
    return _fit("line", points)


def fit_plan(points):
    """The plane with the least sum of squared distances to points, an array of Dask of shape (n, 3)."""
    return _fit("plan", points)


def fit_circle(points):
    """The circle that `ormixgeometry.fit_circle` finds, of an array of Dask of shape (n, 2)."""
    return _fit("circle", points)


def fit_sphere(points):
    """The sphere that `ormixgeometry.fit_sphere` finds, of an array of Dask of shape (n, 3)."""
    return _fit("sphere", points)


def _fit_rigid(sources, targets, dimension):
    sources, targets = (_matrix(p, (dimension,), name) for p, name in ((sources, "sources"), (targets, "targets")))
    if len(sources) != len(targets):
        raise ValueError(f"there are {len(sources)} sources and {len(targets)} targets")
    pairs = dask.array.concatenate([sources, targets.rechunk(sources.chunks)], axis=1).rechunk({1: -1})
    chunks = _chunks(pairs)
    mean, scale = _frame(chunks)
    return _solve_rigid(_merged(chunks, mean, scale), mean, scale)


def fit_rigid2d(sources, targets):
    """The rigid motion with the least sum of squared distances of moved sources to targets, (n, 2) each."""
    return og.RigidTransform2d.from_matrix(_fit_rigid(sources, targets, 2))


def fit_rigid3d(sources, targets):
    """The rigid motion with the least sum of squared distances of moved sources to targets, (n, 3) each."""
    return og.RigidTransform3d.from_matrix(_fit_rigid(sources, targets, 3))


@dataclass(frozen=True)
class RobustFit:
    """What `fit_robustly` found."""

    entity: Any
    nb_inliers: int
    nb_points: int
    rms: float  # root mean square of the distances of the inliers


def _distances(entity, rows):
    """Distances of points to a line, plane, circle or sphere."""
    if isinstance(entity, og.Line2d):
        return np.abs(rows @ (np.cos(entity.theta), np.sin(entity.theta)) - entity.rho)
    if isinstance(entity, og.Plan3d):
        return np.abs(rows @ np.asarray(entity.normal) - entity.rho)
    return np.abs(np.linalg.norm(rows - np.asarray(entity.center), axis=1) - entity.radius)


def _score(rows, candidates, threshold):
    """Of each candidate the number of points within the threshold and the sum of squared distances, truncated there."""
    distances = np.stack([np.minimum(_distances(entity, rows), threshold) for entity in candidates])
    return (distances < threshold).sum(axis=1), (distances**2).sum(axis=1)


class _Within:
    """Chooses the rows near an entity."""

    def __init__(self, entity, threshold):
        self.entity = entity
        self.threshold = threshold

    def __call__(self, rows):
        return _distances(self.entity, rows) < self.threshold


def fit_robustly(name, points, threshold, nb_candidates=300, seed=1, nb_refits=5):
    """A line, plan, circle or sphere through those of chunked points that agree on one.

    `nb_candidates` minimal samples are drawn, and one pass over all points finds the candidate with the least sum of
    squared distances, truncated at the threshold (MSAC). It is fitted to its inliers, at most `nb_refits` times, while
    that sum decreases. 300 samples find a circle among 70 % outliers with a probability of 0.9997.

    `name` is "line", "plan", "circle" or "sphere"; `threshold` the largest distance of an inlier, in the unit of the
    points. The same seed and chunks give the same answer.
    """
    if name not in _MODELS:
        raise ValueError(f"name: one of {', '.join(_MODELS)} was wanted, not {name!r}")
    if not threshold > 0:
        raise ValueError(f"threshold: a distance above 0 was wanted, not {threshold}")
    model = _MODELS[name]
    points = _matrix(points, (model.dimension,), "points")
    if len(points) < model.minimal:
        raise og.Error(f"{len(points)} points are too few, {model.minimal} are needed")
    chunks = _chunks(points)
    mean, scale = _frame(chunks)

    random = np.random.default_rng(seed)
    draws = np.stack([random.choice(len(points), model.minimal, replace=False) for _ in range(nb_candidates)])
    drawn, place = np.unique(draws, return_inverse=True)
    samples = points[drawn].compute()[place.reshape(draws.shape)]
    candidates = []
    for sample in samples:
        try:
            candidates.append(model.fit(sample))
        except og.Error:
            pass  # a sample that determines nothing
    if not candidates:
        raise og.Error("no sample determines a model: all points may coincide")

    def score(entities):
        parts = dask.compute(*[dask.delayed(_score)(chunk, entities, threshold) for chunk in chunks])
        return np.sum([part[0] for part in parts], axis=0), np.sum([part[1] for part in parts], axis=0)

    counts, costs = score(candidates)
    best = int(np.argmin(costs))
    entity, count, cost = candidates[best], counts[best], costs[best]
    for _ in range(nb_refits):
        try:
            factor = _merged(chunks, mean, scale, model.lift, _Within(entity, threshold))
            refitted = model.solve(factor, mean, scale)
        except og.Error:
            break
        (new_count,), (new_cost,) = score([refitted])
        if not new_cost < cost:
            break
        entity, count, cost = refitted, new_count, new_cost
    outside = (len(points) - count) * threshold**2
    return RobustFit(entity, int(count), len(points), float(np.sqrt(max(cost - outside, 0) / max(count, 1))))
