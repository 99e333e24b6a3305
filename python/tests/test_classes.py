"""What holds for every class: objects of the factory, copies, pickles, prints, hostile calls, views."""

import copy
import gc
import inspect
import pickle
import re

import numpy as np
import pytest

import ormixgeometry as og

SEED = 20261122
DTYPES = {"Real64": "float64", "Real32": "float32", "Int32": "int32", "UInt32": "uint32"}
ENTITIES = [name for name in og.class_names() if isinstance(og.create(name), og.Entity)]
TRIANGLES = [[0, 2, 1], [0, 1, 3], [1, 2, 3], [2, 0, 3]]
CORNERS = [[0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1]]
RING = [[0, 0], [9, 0], [9, 9]]
P, Q, R = (1, 2, 3), (4, 6, 8), (5, 5, 7)


def python_class(name):
    template, _, scalar = re.match(r"ormix::geom::(\w+)(<ormix::om(\w+)>)?", name).groups()
    return template, DTYPES.get(scalar)


def body(dtype):
    return og.MeshWithHoles3d(og.Mesh3d(CORNERS, TRIANGLES, dtype=dtype), [og.Mesh3d(CORNERS, TRIANGLES, dtype=dtype)],
                              dtype=dtype)  # fmt: skip


# The arguments of a sample of each class, for a dtype.
SAMPLES = {
    "Arc2d": lambda t: (P[:2], 3, 0.5, -1.5), "Circle3d": lambda t: (P, Q, 3), "Cone3d": lambda t: (P, Q, 3, 2),
    "Cylinder3d": lambda t: (P, Q, 3), "Line3d": lambda t: (P, Q), "Torus3d": lambda t: (P, Q, 3, 2),
    "BoundingBox2d": lambda t: (P[:2], Q[:2]), "BoundingBox3d": lambda t: (P, Q), "Circle2d": lambda t: (P[:2], 3),
    "Cube3d": lambda t: (P, 2, 0.1, 0.2, 0.3), "Cuboid3d": lambda t: (P, 2, 3, 4, 0.1, 0.2, 0.3),
    "Ellipse2d": lambda t: (P[:2], 3, 2, 0.5), "Ellipsoid3d": lambda t: (P, 4, 3, 2, 0.1, 0.2, 0.3),
    "FaceVertexAdjTriMesh3d": lambda t: (CORNERS, TRIANGLES), "FaceVertexTriMesh3d": lambda t: (CORNERS, TRIANGLES),
    "LightTriangle3d": lambda t: (P, Q, R), "Line2d": lambda t: (2, 0.5), "Mesh3d": lambda t: (CORNERS, TRIANGLES),
    "MeshWithHoles3d": lambda t: (og.Mesh3d(CORNERS, TRIANGLES, dtype=t), [body(t)]),
    "Parabola2d": lambda t: (P[:2], og.Line2d(5, 0.5)), "Plan3d": lambda t: (2, 0.5, 0.25),
    "ParabolaArc2d": lambda t: (og.Parabola2d(P[:2], og.Line2d(5, 0.5)), -1, 2),
    "Point2d": lambda t: P[:2], "Point3d": lambda t: P, "PointCloud2d": lambda t: (RING,),
    "PointCloud3d": lambda t: (CORNERS,), "Polygon2d": lambda t: (RING, "eP2DT_Interior"),
    "PolygonWithHoles2d": lambda t: (RING, [og.PolygonWithHoles2d(RING, [RING], dtype=t), RING]),
    "Rectangle2d": lambda t: (P[:2], 3, 2, 0.5), "RowIntersections": lambda t: ([[3, 0, 4], [3, 6, 7]], 0, 9),
    "RowIntersections3d": lambda t: ([[0, 3, 0, 4], [2, 3, 6, 7]],), "Segment2d": lambda t: (P[:2], Q[:2]),
    "Segment3d": lambda t: (P, Q), "Square2d": lambda t: (P[:2], 3, 0.5), "Sphere3d": lambda t: (P, 3),
    "Shape2d": lambda t: (og.RowIntersections([[3, 0, 4]]), [og.PolygonWithHoles2d(RING, dtype="float32")]),
    "Shape3d": lambda t: (og.RowIntersections3d([[0, 3, 0, 4]]), [body("float32")]),
    "Skeleton2d": lambda t: ([[0, 0], [1, 0]], [1, 2], [[0, 1, 0, 1]], np.ones((2, 4)), [[0, 1, 1], [0, 2, 0]]),
    "SkeletonVertex2d": lambda t: (P[:2], 0.5, [0, 3]), "Triangle3d": lambda t: (P, Q, R),
    "Vector2d": lambda t: (2, 0.5), "Vector3d": lambda t: (2, 0.5, 0.25)}  # fmt: skip
CLASSES = [(n, d) for n in SAMPLES for d in (DTYPES.values() if hasattr(getattr(og, n), "_classes") else [None])]


def sample(name, dtype):
    arguments = SAMPLES[name](dtype)
    return getattr(og, name)(*arguments, **({"dtype": dtype} if dtype else {}))


def assert_same_everywhere(thing):
    copies = [copy.copy(thing), copy.deepcopy(thing), pickle.loads(pickle.dumps(thing)), eval(repr(thing), vars(og))]
    for other in copies:
        assert type(other) is type(thing) and other == thing and other is not thing and repr(other) == repr(thing)
    assert not thing == 3 and thing != None and isinstance(str(thing), str)  # noqa: E711


@pytest.mark.parametrize("name", ENTITIES)
def test_the_factory_makes_objects_of_own_classes(name):
    thing, (family, dtype) = og.create(name), python_class(name)
    assert isinstance(thing, getattr(og, family)) and type(thing).__name__ == family + ("_" + dtype if dtype else "")
    assert family in SAMPLES
    assert_same_everywhere(thing)


@pytest.mark.parametrize("name, dtype", CLASSES)
def test_samples_are_copied_pickled_and_printed(name, dtype):
    thing = sample(name, dtype)
    assert_same_everywhere(thing)
    fields = type(thing).__match_args__
    assert getattr(og, name)(**{f: copy.deepcopy(getattr(thing, f)) for f in fields}, **({"dtype": dtype} if dtype else {})) == thing
    for field in fields:  # what may be assigned keeps its value
        if getattr(type(thing), field).fset:
            setattr(thing, field, copy.copy(getattr(thing, field)))
    assert_same_everywhere(thing)
    if dtype:
        assert repr(thing.astype("int32").astype(dtype)) == repr(thing)
    assert not isinstance(thing, og.Entity) or thing._repr_svg_() is None or thing._repr_svg_().startswith("<")


def hostile(random):
    values = [None, True, -1, 0, 3, 2**31, 2**62, 10**30, -(10**30), 0.5, 1e300, np.nan, -np.inf, "", "eP2DT_Interior", b"x",
              (), (1, 2), (1, 2, 3), (np.nan, 1), ("a", "b"), [1, [2, 3]], [None, None], {}, {1: 2}, object(), int, len,
              np.float32(2), np.array(5), np.zeros(0), np.zeros((2, 2)), np.full((4, 3), np.nan), np.ones((3, 4), ">i8"),
              np.zeros((2, 3))[:, ::-1], np.full((2, 2), 2**40), np.array([1j]), np.array(["a"]), np.array([[None]]),
              np.zeros((2, 2, 2), bool), np.zeros((0, 3)), RING, CORNERS, TRIANGLES, np.zeros((3, 0)),
              og.Point2d(1, 2), og.Line2d(1, 2), og.Polygon2d(RING), og.Mesh3d(CORNERS, TRIANGLES), body("float32"),
              og.RowIntersections([[0, 0, 1]])]  # fmt: skip
    return values[random.integers(len(values))]


EXPECTED = (AttributeError, TypeError, ValueError, OverflowError, IndexError, BufferError, MemoryError, og.Error)


def call(function, *arguments):
    """The answer, or None where the call was refused as calls are."""
    try:
        return function(*arguments)
    except EXPECTED as error:
        assert "Unable to cast" not in str(error)
        return None


@pytest.mark.filterwarnings("ignore:overflow")
@pytest.mark.parametrize("name, dtype", CLASSES)
def test_hostile_calls_are_refused(name, dtype):
    random = np.random.default_rng([SEED, *f"{name} {dtype}".encode()])
    Class = type(sample(name, dtype))
    for _ in range(12):
        thing = call(Class, *(hostile(random) for _ in range(random.integers(1, 6))))
        if thing is None:
            # One wrong argument among right ones comes farther.
            arguments = list(SAMPLES[name](dtype))
            arguments[random.integers(len(arguments))] = hostile(random)
            thing = call(Class, *arguments) or sample(name, dtype)
        for member in dir(Class):
            if member in ("__class__", "__getattribute__", "__init__", "__init_subclass__", "__new__", "__subclasshook__", "save"):
                continue
            attribute = inspect.getattr_static(Class, member)
            if isinstance(attribute, property):
                call(getattr, thing, member)
                call(setattr, thing, member, hostile(random)) if attribute.fset else None
            elif callable(getattr(thing, member, None)):
                call(getattr(thing, member), *(hostile(random) for _ in range(random.integers(0, 4))))
        call(repr, thing)
        call(pickle.dumps, thing)


RESIZES = {
    "Polygon2d": [lambda o: setattr(o, "points", RING), lambda o: o.close(), lambda o: o.clear()],
    "PointCloud2d": [lambda o: setattr(o, "points", RING), lambda o: o.append(P[:2]), lambda o: o.clear()],
    "PointCloud3d": [lambda o: setattr(o, "points", CORNERS), lambda o: o.append(P), lambda o: o.clear()],
    "PolygonWithHoles2d": [lambda o: setattr(o, "points", RING), lambda o: setattr(o, "exterior", RING),
                           lambda o: setattr(o.exterior, "points", RING), lambda o: o.exterior.close()],
    "MeshWithHoles3d": [lambda o: setattr(o, "exterior", o.exterior.copy()), lambda o: o.exterior.clear()],
    "Mesh3d": [lambda o: setattr(o, "vertices", CORNERS), lambda o: o.add_vertex(P), lambda o: o.add_triangle(0, 2, 1),
               lambda o: o.add_triangles([[3, 2, 1]]), lambda o: o.build(CORNERS, TRIANGLES), lambda o: o.clear(),
               lambda o: o.reverse_orientation()],
    "FaceVertexTriMesh3d": [lambda o: setattr(o, "vertices", CORNERS), lambda o: o.add_vertex(P), lambda o: o.clear(),
                            lambda o: o.add_triangles(TRIANGLES), lambda o: o.build(CORNERS, TRIANGLES)],
    "FaceVertexAdjTriMesh3d": [lambda o: setattr(o, "vertices", CORNERS), lambda o: o.build(CORNERS, TRIANGLES),
                               lambda o: o.clear()]}  # fmt: skip


def views_of(thing):
    def value(name):
        try:
            return getattr(thing, name)
        except og.Error:  # as the area of what has none
            return None

    arrays = {n: value(n) for n in dir(thing) if not n.startswith("_") and isinstance(value(n), np.ndarray)}
    return {n: array for n, array in arrays.items() if np.shares_memory(array, getattr(thing, n))}


@pytest.mark.parametrize("name, dtype", CLASSES)
def test_no_view_sees_other_memory(name, dtype):
    thing = sample(name, dtype)
    target = thing.exterior if name == "MeshWithHoles3d" else thing
    views = views_of(target)
    assert bool(views) == (name in RESIZES)
    before = copy.copy(thing)
    for resize in RESIZES.get(name, ()):
        with pytest.raises(BufferError):
            resize(thing)
        assert thing == before
    kept = {view: array.copy() for view, array in views.items()}
    del thing, target
    gc.collect()
    clutter = [np.full(array.size, 7, array.dtype) for array in kept.values()]
    assert all(np.array_equal(views[view], kept[view]) for view in views) and len(clutter) == len(views)
    for resize in RESIZES.get(name, ()):
        try:
            resize(before)
        except og.Error:  # a triangle that does not fit
            pass
