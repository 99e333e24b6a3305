"""Measures of one entity and of many, as functions, objects and properties."""

import copy
import pickle

import numpy as np
import pytest

import ormixgeometry as og
from test_classes import CLASSES, sample

RANDOM = np.random.default_rng(1)
RINGS = [RANDOM.normal(size=(n, 2)) * 10 for n in range(4, 40)]
POLYGONS = [og.Polygon2d(np.vstack([ring, ring[:1]])) for ring in RINGS]


def shoelace(points):
    x, y = points.T
    return (x * np.roll(y, -1) - y * np.roll(x, -1)).sum() / 2


def test_many_are_as_each_alone_and_as_numpy_says():
    areas = og.area(POLYGONS)
    np.testing.assert_allclose(areas, [shoelace(ring) for ring in RINGS], rtol=0, atol=1e-11)
    assert areas.tolist() == [og.area(p) for p in POLYGONS] == [p.area for p in POLYGONS]
    perimeters = [np.hypot(*(np.roll(ring, -1, 0) - ring).T).sum() for ring in RINGS]
    np.testing.assert_allclose(og.perimeter(POLYGONS), perimeters, rtol=1e-13)
    moments = og.moments(iter(POLYGONS))
    np.testing.assert_allclose([m.mass for m in moments], areas, rtol=1e-9, atol=1e-11)
    assert og.hu_moments(POLYGONS).tolist() == [og.hu_moments(p).values.tolist() for p in POLYGONS]
    assert np.asarray(og.hu_moments(POLYGONS[0])).shape == (7,)
    assert og.area([]).shape == (0,) and og.hu_moments([]).shape == (0, 7)


@pytest.mark.parametrize("measure", [og.AreaMsr2d, og.PerimeterMsr2d, og.MomentsMsr2d, og.HuMomentsMsr2d, og.AreaMsr3d, og.VolumeMsr3d])
def test_measures_are_objects(measure):
    given = measure(hole_policy="eHMP_IgnoreHoles")
    for again in (copy.deepcopy(given), pickle.loads(pickle.dumps(given)), eval(repr(given), vars(og))):
        assert again == given and again != measure() and type(again) is measure
    with pytest.raises(og.Error, match=r"element 0: Measure .* \(ormix::geom::Line2d\)") as caught:
        measure().measure([og.Line2d(1, 2)])
    assert caught.value.class_name == "ormix::geom::Line2d"


def test_all_entities_are_measured_or_refused():
    measures = {og.area: "area", og.perimeter: "perimeter", og.volume: "volume"}
    for entity in (e for e in (sample(name, dtype) for name, dtype in CLASSES) if isinstance(e, og.Entity)):
        for measure in (*measures, og.moments, og.hu_moments, og.centroid, og.envelope, og.convex_hull):
            try:
                value = measure(entity)
            except og.Error as error:
                assert error.class_name == entity.class_name
                continue
            many = measure([entity, entity])
            assert np.array_equal(np.asarray(many[1]), np.asarray(value)) if isinstance(many, np.ndarray) else many[1] == value
            if measure in measures:
                assert getattr(entity, measures[measure]) == value


def test_moments_of_sets_add():
    a, b = og.moments(POLYGONS[:2])
    assert (a + b - b).is_close(a, 1e-9) and pickle.loads(pickle.dumps(a)) == a
    with pytest.raises(og.Error, match="mass 0"):
        og.Moments2dO3().centroid
    with pytest.raises(og.Error):
        a.moment(2, 2)
    hu = og.HuMoments2dO3(a)
    assert hu == og.hu_moments(POLYGONS[0]) and list(hu) == hu.values.tolist() and hu[-1] == hu.values[6]
    for wrong in (np.zeros(6), np.zeros((7, 1)), "abcdefg"):
        with pytest.raises((TypeError, ValueError)):
            og.HuMoments2dO3(wrong)
    with pytest.raises(IndexError):
        hu[7]


@pytest.mark.parametrize("wrong", [None, 3, "ab", [None], [1.5], np.zeros((4, 2)), {"a": 1}])
def test_what_is_no_entity_is_refused(wrong):
    for function in (og.area, og.perimeter, og.volume, og.moments, og.hu_moments):
        with pytest.raises(TypeError, match="entit"):
            function(wrong)


def test_a_list_may_change_while_it_is_measured():
    class Shrinking(list):
        def __iter__(self):
            for polygon in POLYGONS:
                self.clear()
                yield polygon
            raise KeyError("mine")

    with pytest.raises(KeyError, match="mine"):
        og.area(Shrinking())
