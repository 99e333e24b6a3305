"""What all objects have in common: copies, equality, pickling, archives, views and their lifetime."""

import copy
import gc
import pickle

import numpy as np
import pytest

import ormixgeometry as og

DTYPES = ["float64", "float32", "int32", "uint32"]


@pytest.mark.parametrize("dtype", DTYPES)
def test_copies_pickles_and_prints(dtype, tmp_path):
    for entity in (og.Circle2d((1, 2), 3, dtype=dtype), og.Polygon2d([[0, 0], [4, 0], [4, 3]], dtype=dtype)):
        again = [copy.copy(entity), copy.deepcopy(entity), pickle.loads(pickle.dumps(entity)), og.from_bytes(entity.to_bytes())]
        entity.save(tmp_path / "entity.json")
        again.append(og.load(tmp_path / "entity.json"))
        again.append(eval(repr(entity), vars(og)))
        for other in again:
            assert other == entity and other is not entity and type(other) is type(entity)


def test_a_view_keeps_its_object_and_its_size():
    polygon = og.Polygon2d(np.arange(20.0).reshape(10, 2))
    view = polygon.points[2:]
    view[0] = (7, 8)
    assert tuple(polygon.points[2]) == (7, 8)
    with pytest.raises(BufferError, match="points"):
        polygon.points = [[0, 0]]
    del polygon
    gc.collect()
    assert view.sum() == np.arange(4.0, 20.0).sum() + 7 + 8 - 4 - 5


def test_numbers_are_exact_or_refused():
    with pytest.raises(ValueError, match="element 1 is 0.5"):
        og.Polygon2d([[0, 0.5]], dtype="int32")
    with pytest.raises(ValueError):
        og.Polygon2d([[0, -1]], dtype="uint32")
    with pytest.raises(ValueError, match=r"shape \(n, 2\)"):
        og.Polygon2d(np.zeros((2, 3)))
    with pytest.raises(TypeError):
        og.Polygon2d([["a", "b"]])
    big_endian = np.asfortranarray(np.arange(8, dtype=">i8").reshape(4, 2))[::-2]
    assert og.Polygon2d(big_endian, dtype="int32").points.tolist() == [[6, 7], [2, 3]]


def test_errors_name_class_and_key():
    text = og.Circle2d((1, 2), 3).to_json().replace("_radius", "_diameter")
    with pytest.raises(og.Error) as caught:
        og.from_bytes(text.encode())
    assert caught.value.class_name == "ormix::geom::Circle2d<ormix::omReal64>" and caught.value.key == "_radius"


def test_enumerators_are_those_of_the_library():
    role = og.ePolygon2dType.eP2DT_Interior
    assert pickle.loads(pickle.dumps(role)) == og.ePolygon2dType(int(role)) == og.ePolygon2dType("eP2DT_Interior") == role
    for value in (2, -1, "eP2DT_None"):
        with pytest.raises((ValueError, TypeError)):
            og.ePolygon2dType(value)


def test_what_was_never_made_is_refused():
    classes = [cls for cls in vars(og._core).values() if isinstance(cls, type) and issubclass(cls, og.Object)]
    for cls in classes:
        empty = cls.__new__(cls)
        for use in (og.area, lambda o: o.copy(), lambda o: o.class_name, lambda o: o == o, lambda o: og.save_all("x", [o])):
            with pytest.raises((TypeError, RuntimeError)):
                use(empty)

    class Early(og.Circle2d["float64"]):
        def __init__(self):
            self.area

    with pytest.raises(TypeError, match="__init__"):
        Early()


def test_a_base_without_a_class_makes_no_object():
    for base in (og.Object.__mro__[1], og.Object, og.Entity2d):
        with pytest.raises(TypeError):
            base()
