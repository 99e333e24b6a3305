"""Transforms of entities and of points, their matrices, inverses and compositions."""

import copy
import itertools
import pickle

import numpy as np
import pytest

import ormixgeometry as og
from test_classes import CLASSES, sample

RANDOM = np.random.default_rng(2)
LINEAR = [
    [
        og.TranslationTransform2d(1, 2),
        og.RotationTransform2d(0.3),
        og.RigidTransform2d(0.4, 5, -6),
        og.ScaleTransform2d(-1.5),
        og.SimilarityTransform2d(2, -2.5, 3, 4),
        og.AnisotropicScaleTransform2d(2, -3),
        og.HomographyTransform2d([[1, 0.2, 3], [0.1, 2, 1], [0.01, 0.02, 1]]),
    ],
    [
        og.TranslationTransform3d(1, 2, 3),
        og.RotationTransform3d(0.3, 0.4, -0.5),
        og.RigidTransform3d(0.4, 0.1, 2, 5, -6, 7),
        og.ScaleTransform3d(-1.5),
        og.SimilarityTransform3d(2, -2.5, 0.7, 0.1, 3, 4, 5),
        og.AnisotropicScaleTransform3d(2, -3, 0.5),
        og.HomographyTransform3d(np.eye(4) + 0.01 * RANDOM.random((4, 4))),
    ],
]
ALL = LINEAR[0] + LINEAR[1]


def dimension(transform):
    return transform.matrix.shape[0] - 1


def mapped(matrix, points):
    image = np.c_[points, np.ones(len(points))] @ matrix.T
    return image[:, :-1] / image[:, -1:]


@pytest.mark.parametrize("transform", ALL, ids=lambda t: type(t).__name__)
def test_points_are_mapped_by_the_matrix(transform):
    points = RANDOM.normal(size=(300, dimension(transform)))
    images = transform @ points
    np.testing.assert_allclose(images, mapped(transform.matrix, points), atol=1e-12)
    assert (transform @ np.asfortranarray(points.astype(">f8"))[::-2] == images[::-2]).all()
    assert transform @ list(points[7]) == tuple(images[7]) and (transform @ points[7] == images[7]).all()
    single = transform @ points.astype("float32")
    assert single.dtype == np.float32 and abs(single - images).max() < 1e-4
    assert (transform @ points[:0]).shape == points[:0].shape and transform @ [] == []
    np.testing.assert_allclose(transform.inverse() @ images, points, atol=1e-11)
    for again in (copy.copy(transform), pickle.loads(pickle.dumps(transform)), type(transform).from_params(transform.params)):
        assert again == transform and type(again) is type(transform)
    np.testing.assert_allclose(type(transform).from_matrix(transform.matrix).matrix, transform.matrix, atol=1e-14)
    assert eval(repr(transform), vars(og)) == transform


@pytest.mark.parametrize("space", [0, 1])
def test_compositions_are_products(space):
    for a, b in itertools.product(LINEAR[space], repeat=2):
        np.testing.assert_allclose((a @ b).matrix, a.matrix @ b.matrix, atol=1e-12)
        if type(a) is type(b):
            assert type(a @ b) is type(a)
    kinds = {type(a).__name__[:-11]: a for a in LINEAR[space]}
    for a, b, wanted in [("Translation", "Rotation", "Rigid"), ("Scale", "Rigid", "Similarity"), ("Scale", "AnisotropicScale", "AnisotropicScale"), ("AnisotropicScale", "Rotation", "Homography")]:
        assert type(kinds[a] @ kinds[b]).__name__.startswith(wanted)


def test_polygons_are_mapped_as_their_points():
    for transform, dtype in itertools.product(LINEAR[0], ["float64", "float32", "int32"]):
        polygons = [og.Polygon2d((RANDOM.random((n, 2)) * 100).astype(dtype), dtype=dtype) for n in (3, 500)]
        images = transform @ polygons
        assert images == [transform @ p for p in polygons]
        for polygon, image in zip(polygons, images):
            atol = {"float64": 1e-9, "float32": 1e-3, "int32": 0.5 + 1e-9}[dtype]
            np.testing.assert_allclose(image.points, mapped(transform.matrix, polygon.points), atol=atol)
            view = polygon.points
            transform.apply_in_place(polygon)
            assert polygon == image and (view == image.points).all()


def places(entity, d):
    """All points that an entity is made of."""
    found = []
    if isinstance(entity, og.Line3d):
        return []  # its point is the one nearest to the origin, before and after
    fields = type(entity).__match_args__[: 1 if isinstance(entity, og.Skeleton2d) else None]  # the others are relative
    fields = [field for field in fields if field not in ("axis", "direction", "normal")]
    for value in [getattr(entity, field) for field in fields]:
        if isinstance(value, og.Entity):
            found += places(value, d)
        elif isinstance(value, list):
            found += [place for item in value if isinstance(item, og.Entity) for place in places(item, d)]
        elif np.shape(value)[-1:] == (d,) and np.asarray(value).dtype.kind == "f":
            found += np.reshape(value, (-1, d)).tolist()
    return found


@pytest.mark.parametrize("transform", ALL, ids=lambda t: type(t).__name__)
def test_all_entities_are_mapped_or_refused(transform):
    d = dimension(transform)
    base = og.Entity2d if d == 2 else og.Entity3d
    samples = [sample(name, dtype) for name, dtype in CLASSES if dtype in (None, "float64")]
    mapped_names = set()
    for entity in (e for e in samples if isinstance(e, base)):
        before = entity.copy()
        try:
            image = transform @ entity
        except og.Error as error:
            assert error.class_name == entity.class_name and entity == before
            continue
        mapped_names.add(type(entity).__name__)
        if len(places(entity, d)):
            np.testing.assert_allclose(places(image, d), mapped(transform.matrix, places(entity, d)), rtol=1e-5, atol=1e-5)
        assert transform @ [entity, entity] == [image, image] and entity == before
        if type(image) is type(entity):
            transform.apply_in_place(entity)
            assert entity == image or "Scale" in type(transform).__name__ and "Shape" in type(entity).__name__
            np.testing.assert_allclose(places(transform.inverse() @ image, d), places(before, d), rtol=1e-4, atol=1e-4)
    runs = {f"Point{d}d_float64", f"PointCloud{d}d_float64"} | ({"Polygon2d_float64"} if d == 2 else {"Mesh3d_float64"})
    assert runs <= mapped_names and len(mapped_names) >= 6


def test_a_failure_changes_nothing():
    homography = og.HomographyTransform2d([[1, 0, 0], [0, 1, 0], [0, 1, 0]])
    polygon = og.Polygon2d([[1, 1], [2, 1], [5, 0]])
    before = polygon.copy()
    for call in (lambda: homography @ [polygon.copy(), polygon], lambda: homography.apply_in_place(polygon)):
        with pytest.raises(og.Error, match="eE2DT_Polygon"):
            call()
    assert polygon == before
    with pytest.raises(og.Error, match=r"point 2: .*\{5.0+, 0.0+\}"):
        homography @ polygon.points
    view = polygon.points
    for transform in (og.ConvexHullTransform2d(), og.SimplifyTransform2d(1)):
        with pytest.raises(BufferError):
            transform.apply_in_place(polygon)
    del view
    og.ConvexHullTransform2d().apply_in_place(polygon)
    assert polygon == og.convex_hull(before)


def test_what_is_derived():
    polygons = [og.Polygon2d(RANDOM.normal(size=(50, 2))) for _ in range(5)]
    for function, transform in [
        (og.convex_hull, og.ConvexHullTransform2d()),
        (og.envelope, og.EnvelopeTransform2d()),
        (og.min_enclosing_circle, og.MinEnclosingCircleTransform2d()),
        (lambda e: og.simplify(e, 0.1, "ePS_EachAlone"), None),
    ]:
        assert function(polygons) == [function(p) for p in polygons]
        if transform:
            assert transform @ polygons == function(polygons) and pickle.loads(pickle.dumps(transform)) == transform
    for polygon, circle in zip(polygons, og.min_enclosing_circle(polygons)):
        distance = np.hypot(*(polygon.points - circle.center).T)
        assert distance.max() <= circle.radius * (1 + 1e-12) and (distance > circle.radius * (1 - 1e-9)).sum() >= 2
        hull = og.convex_hull(polygon).points
        edges, offsets = np.diff(hull, axis=0), polygon.points[:, None] - hull[:-1]
        assert (edges[:, 0] * offsets[:, :, 1] - edges[:, 1] * offsets[:, :, 0] > -1e-12).all()
    assert og.centroid(polygons).tolist() == [list(og.centroid(p)) for p in polygons]


@pytest.mark.parametrize("transform", ALL, ids=lambda t: type(t).__name__)
def test_hostile_operands(transform):
    d = dimension(transform)
    for wrong in (None, 3, "ab", np.zeros((2, 5 - d)), np.zeros((2, 2, d)), [[0] * d, [1]], ALL[-1 if d == 2 else 0], og.CentroidTransform2d(), [None], 1j, np.array([None] * d)):
        with pytest.raises((TypeError, ValueError)):
            transform @ wrong
    for number in (np.nan, np.inf, -np.inf):
        points = np.ones((200, d))
        points[150, -1] = number
        with pytest.raises(og.Error, match="point 150"):
            transform @ points
    matrices = [np.nan, np.zeros((d, d)), np.full((d + 1, d + 1), np.nan), "a"]
    if "Homography" not in type(transform).__name__:
        far = transform.matrix
        far[:d, d], far[0, 1] = 1e12, far[0, 1] + 0.01
        matrices += [np.full((d + 1, d + 1), 3), far]
    for wrong in matrices:
        with pytest.raises((TypeError, ValueError)):
            type(transform).from_matrix(wrong)
    for wrong in ([], [1] * 20, [np.nan] * len(transform.params)):
        with pytest.raises(ValueError):
            type(transform).from_params(wrong)


def test_what_has_no_inverse():
    for transform in (og.ScaleTransform2d(0), og.ScaleTransform3d(1e-320), og.SimilarityTransform2d(0), og.AnisotropicScaleTransform3d(1, 0, 1), og.HomographyTransform2d(np.ones((3, 3)))):
        with pytest.raises(og.Error, match="no inverse"):
            transform.inverse()
    with pytest.raises(ValueError, match="finite"):
        og.ScaleTransform2d(1e200) @ og.ScaleTransform2d(1e200)


def test_kinds_are_converted():
    for transform in ALL:
        kind = f"eGT{dimension(transform)}DT_" + type(transform).__name__[:-11]
        assert og.convert(kind, transform.params) == transform
        for wrong in (transform.params[1:], [np.nan] * len(transform.params)):
            with pytest.raises((og.Error, ValueError)):
                og.convert(kind, wrong)
    for kind, count in (("eGT2DT_Affine", 6), ("eGT3DT_Affine", 12)):
        with pytest.raises(og.Error, match="not yet supported"):
            og.convert(kind, np.ones(count))


def test_shared_borders_stay_shared():
    x = np.linspace(0, 10, 101)
    border = np.c_[x, np.sin(5 * x) * 0.3]
    upper = og.Polygon2d(np.vstack([border, [[10, 5], [0, 5]], border[:1]]))
    lower = og.Polygon2d(np.vstack([border[::-1], [[0, -5], [10, -5]], border[-1:]]))
    a, b = og.simplify_all([upper, lower], 0.2)
    inner = {tuple(p) for p in a.points if abs(p[1]) < 1}
    assert inner == {tuple(p) for p in b.points if abs(p[1]) < 1} and len(a) < 60
    with pytest.raises(og.Error, match="negative"):
        og.simplify(upper, -1)
    with pytest.raises(og.Error, match="element 1"):
        og.simplify([upper, og.Line2d(0, 0)], 1)
