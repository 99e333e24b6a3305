"""Pixels, labels, regions and volumes, against brute force on small random images."""

import csv
import gc
import itertools
import math

import numpy as np
import pytest

import ormixgeometry as og

RANDOM = np.random.default_rng(20261122)


def neighbours(ndim, connectivity):
    steps = [step for step in itertools.product((-1, 0, 1), repeat=ndim) if any(step)]
    return [step for step in steps if connectivity > 2 * ndim or sum(map(abs, step)) == 1]


def flood(mask, connectivity):
    """Labels from 1 in the order of the first pixels."""
    labels = np.zeros(mask.shape, int)
    for start in map(tuple, np.argwhere(mask)):
        if labels[start]:
            continue
        stack = [start]
        labels[start] = label = labels.max() + 1
        while stack:
            place = stack.pop()
            for step in neighbours(mask.ndim, connectivity):
                other = tuple(np.add(place, step))
                inside = all(0 <= i < n for i, n in zip(other, mask.shape))
                if inside and mask[other] and not labels[other]:
                    labels[other] = label
                    stack.append(other)
    return labels


def masks(*shape, count=12):
    for density in np.linspace(0, 1, count):
        yield RANDOM.random(shape) < density


@pytest.mark.parametrize("connectivity", [4, 8])
def test_labels_are_those_of_a_flood(connectivity):
    for mask in masks(9, 11):
        expected = flood(mask, connectivity)
        shapes = og.label(mask, connectivity)
        assert np.array_equal(og.to_labels(shapes, mask.shape), expected)
        count, component = og.components_of(mask, connectivity)
        assert count == len(shapes) == len(og.connected_components(mask, connectivity)) and len(set(component)) == count
        for array in (expected.astype("u2"), expected * 7 - 3 * (expected > 0), expected.T.astype("i4")[::-1].T):
            rows = og.labelled_rows(array)
            assert list(rows) == sorted(set(array.ravel()) - {0})
            assert np.array_equal(og.to_labels(rows, array.shape, dtype="int64"), array)
            again = og.shapes_of_labels(array, connectivity)
            assert [shape.row_intersections for shape in again] == list(rows.values())
        rows = iter(mask)
        built = list(og.Shape2dConstructor(connectivity).shapes(rows))
        assert {shape.to_bytes() for shape in built} == {shape.to_bytes() for shape in shapes}
        polygons = og.trace_contours(mask, connectivity)
        assert np.array_equal(og.to_mask(og.rasterize(polygons), mask.shape), mask)
        assert np.array_equal(og.to_mask(og.rasterize(polygons, box=(2, 1, 7, 8)), (7, 5), offset=(2, 1)), mask[1:8, 2:7])


def test_set_operations_are_those_of_arrays():
    def near(mask, reach):
        grown = np.zeros_like(mask)
        for y, x in np.argwhere(mask):
            for j, i in np.argwhere(np.ones_like(mask)):
                grown[j, i] |= reach(i - x, j - y)
        return grown

    def grow(mask):
        return near(mask, lambda dx, dy: dx * dx + dy * dy <= 2.5**2)

    for a, b in zip(masks(7, 8, count=6), masks(7, 8, count=6)):
        b = np.roll(RANDOM.permutation(b), 3)
        forms = [lambda m: m, og.to_row_intersections, og.make_shape, lambda m: m.astype("f8")[::-1][::-1] > 0, np.ndarray.tolist]
        for form in forms:
            for name, expected in (("unite", a | b), ("intersect", a & b), ("subtract", a & ~b), ("exclude", a ^ b)):
                assert np.array_equal(og.to_mask(getattr(og, name)(form(a), b), a.shape), expected), name
        crop = (slice(0, 7), slice(0, 8))
        padded = np.pad(a, 5)
        assert np.array_equal(og.to_mask(og.dilate(padded, radius=2.5)), og.to_mask(og.normalized(grow(padded))))
        assert np.array_equal(og.to_mask(og.erode(a, radius=2.5), a.shape), ~grow(np.pad(~a, 3, constant_values=True))[3:-3, 3:-3])
        box = near(padded, lambda dx, dy: abs(dx) <= 2 and abs(dy) <= 1)
        assert og.dilate(padded, half_width=2, half_height=1) == og.to_row_intersections(box)
        assert np.array_equal(og.to_mask(og.complement(a, (0, 0, 8, 7)), a.shape)[crop], ~a)
        assert og.translate(padded, -2, 3) == og.to_row_intersections(np.roll(np.pad(padded, 3), (3, -2), (0, 1))[3:, 3:])
        outside = flood(~np.pad(a, 1), 4) == 1
        assert np.array_equal(og.to_mask(og.fill_holes(a), a.shape), ~outside[1:-1, 1:-1])


def test_region_properties_in_every_form():
    mask = RANDOM.random((40, 50)) < 0.45
    labels = flood(mask, 8)
    table = og.region_properties(mask, spacing=(2, 0.5))
    y, x = np.indices(mask.shape)
    areas = np.bincount(labels.ravel())[1:]
    assert np.array_equal(table["label"], np.arange(1, labels.max() + 1)) and table["label"].dtype == np.int64
    assert np.array_equal(table["nb_pixels"], areas) and np.array_equal(table["area"], areas)
    for name, values, size in (("centroid_x", x, 2), ("centroid_y", y, 0.5)):
        means = np.bincount(labels.ravel(), (values + 0.5).ravel())[1:] / areas * size
        assert np.allclose(table[name], means, rtol=1e-13)
    for i in (0, len(areas) // 2):
        pixels = labels == i + 1
        assert table["bbox_x_max"][i] == 2 * (x[pixels].max() + 1) and table["bbox_y_min"][i] == 0.5 * y[pixels].min()
        assert math.isclose(table["central_moment_02"][i], areas[i] * 0.25 * (y[pixels].var() + 1 / 12), abs_tol=1e-9)
        polygon = og.region_properties(og.trace_contours(pixels)[0], spacing=(2, 0.5))
        for name in ("area", "hole_area", "convex_area", "greatest_feret_length", "inscribed_circle_radius", "hu_moment_1"):
            assert math.isclose(polygon[name][0], table[name][i], rel_tol=1e-9), name
    shapes = og.label(mask)
    rows = [shape.row_intersections for shape in shapes]
    forms = (labels, labels.astype("u2")[::-1][::-1], shapes, rows, tuple(rows), dict(enumerate(rows, 1)), np.asfortranarray(mask))
    for form in forms:
        again = og.region_properties(form, spacing=(2, 0.5))
        assert list(again) == list(table) and all(np.array_equal(again[name], table[name], equal_nan=True) for name in table)
    for name in table:
        some = og.region_properties(rows[:3], spacing=(2, 0.5), properties=[name])
        assert list(some)[:1] == ["label"] and np.array_equal(some[name], table[name][:3], equal_nan=True), name
    assert list(og.region_properties(rows[0], unit="mm", properties=["area", "orientation", "extent"])) == [
        "label", "area [mm^2]", "orientation [rad]", "extent"]  # fmt: skip
    assert len(og.region_properties([])["area"]) == 0


def test_a_table_in_a_file(tmp_path):
    mask = RANDOM.random((20, 20)) < 0.4
    og.write_region_table(tmp_path / "regions.csv", mask, spacing=0.5, unit="mm")
    with open(tmp_path / "regions.csv", newline="") as file:
        rows = list(csv.DictReader(file))
    table = og.region_properties(mask, spacing=0.5)
    assert [float(row["area [mm^2]"]) for row in rows] == table["area"].tolist()
    with pytest.raises(og.Error, match="Cannot write"):
        og.write_region_table(tmp_path / "none" / "regions.csv", mask)


@pytest.mark.parametrize("connectivity", [6, 26])
def test_volumes(connectivity):
    for volume in masks(5, 6, 7, count=6):
        labels = flood(volume, connectivity)
        views = (volume, volume.astype("i4"), np.asfortranarray(volume), volume[::-1].copy()[::-1], volume.astype("i8"))
        for view in views:
            table = og.measure_components(view, connectivity)
            assert np.array_equal(table["nb_voxels"], np.bincount(labels.ravel())[1:])
        for i in range(labels.max()):
            places = np.argwhere(labels == i + 1)
            got = [table[f"{axis}_{end}"][i] for axis in "zyx" for end in ("begin", "end")]
            expected = np.stack([places.min(0), places.max(0) + 1], 1).ravel()
            assert got == expected.tolist()
            centroid = [table[f"centroid_{axis}"][i] for axis in "zyx"]
            assert np.allclose(centroid, places.mean(0) + 0.5, rtol=1e-13)
        parts = og.connected_components(volume, connectivity)
        assert [part.nb_voxels for part in parts] == table["nb_voxels"].tolist()


HUGE = np.broadcast_to(np.uint8(1), (2**31, 2**31))
SMALL = np.eye(3, dtype=bool)


@pytest.mark.parametrize("call, error", [
    (lambda: og.label(HUGE), ValueError), (lambda: og.label(HUGE.astype), TypeError),
    (lambda: og.shapes_of_labels(HUGE), ValueError), (lambda: og.region_properties(HUGE), ValueError),
    (lambda: og.measure_components(np.broadcast_to(True, (2**20,) * 3)), ValueError),
    (lambda: og.label(np.full((3, 3), np.nan)), TypeError), (lambda: og.label(np.ones((3, 3, 3), bool)), ValueError),
    (lambda: og.label(np.ones(3, bool)), ValueError), (lambda: og.label([[1, "a"]]), TypeError),
    (lambda: og.label(None), TypeError), (lambda: og.label(SMALL, 5), ValueError), (lambda: og.label(SMALL, True), TypeError),
    (lambda: og.label(SMALL, "ePC_9"), TypeError), (lambda: og.label(SMALL, 2**80), ValueError),
    (lambda: og.label(SMALL, tolerance=-1), og.Error), (lambda: og.ePixelConnectivity(7), ValueError),
    (lambda: og.shapes_of_labels([[2**40]]), ValueError), (lambda: og.shapes_of_labels([[0.5]]), TypeError),
    (lambda: og.to_labels(og.label(SMALL), (2, 3)), ValueError), (lambda: og.to_labels([SMALL] * 300, (3, 3), dtype="u1"), ValueError),
    (lambda: og.to_labels([None], (3, 3)), TypeError), (lambda: og.to_mask(SMALL, (3, 2)), ValueError),
    (lambda: og.to_mask(SMALL, (-1, 3)), ValueError), (lambda: og.to_mask(SMALL, offset=(1, 0)), ValueError),
    (lambda: og.to_mask(SMALL, offset=(0, -(2**63))), ValueError), (lambda: og.dilate(SMALL, 1e9), ValueError),
    (lambda: og.dilate(SMALL, np.nan), og.Error), (lambda: og.erode(SMALL, -1.0), og.Error),
    (lambda: og.unite(SMALL, og.translate(SMALL, 0, 2**40)), ValueError), (lambda: og.translate(SMALL, -1, 0), og.Error),
    (lambda: og.complement(SMALL, (0, 0, 3, 2**50)), ValueError), (lambda: og.complement(SMALL, (0, 0, np.nan, 1)), og.Error),
    (lambda: og.rasterize([[0, 0], [np.inf, 1], [1, 1]]), og.Error), (lambda: og.rasterize([[0, 0], [1e300, 1], [1, 1e300]]), og.Error),
    (lambda: og.rasterize("ring"), TypeError), (lambda: og.rasterize([og.Polygon2d(np.eye(2)), 3]), TypeError),
    (lambda: og.region_properties(SMALL, properties=["volume"]), ValueError), (lambda: og.region_properties([SMALL, 3]), TypeError),
    (lambda: og.region_properties([og.RowIntersections()]), og.Error), (lambda: og.region_properties(SMALL, spacing=0), og.Error),
    (lambda: og.region_properties([og.to_row_intersections(SMALL), 3]), TypeError),
    (lambda: og.region_properties(SMALL, spacing="mm"), TypeError), (lambda: og.region_properties(og.Line2d(1, 2)), og.Error),
    (lambda: og.Shape2dConstructor().add_row([[3, 2]]), og.Error), (lambda: og.Shape2dConstructor().add_row([[0.5, 2]]), ValueError),
    (lambda: og.Shape2dConstructor().add_row([1], y=-1), TypeError)])  # fmt: skip
def test_hostile_calls(call, error):
    with pytest.raises(error):
        call()


def test_constructors_stay_as_they_are_after_failures():
    rows = og.Shape2dConstructor()
    rows.add_row([1, 1, 0], y=5)
    with pytest.raises(og.Error):
        rows.add_row([1], y=5)
    rows.add_row([[0, 2]])
    assert [shape.nb_pixels for shape in rows.finish()] == [4]
    with pytest.raises(og.Error):
        rows.finish()


def test_views_and_regions_that_die():
    pixels = og.label(np.ones((4, 4), np.uint8)[::-1, ::2])[0].row_intersections
    regions = (og.to_row_intersections(mask) for mask in masks(3, 3))
    gc.collect()
    assert pixels.nb_pixels == 8 and og.unite(next(regions), pixels).nb_pixels == 8


def test_progress_stops():
    fractions = []
    og.region_properties(SMALL, progress=fractions.append)
    assert fractions[0] <= fractions[-1] == 1
    with pytest.raises(og.Error, match="stopped"):
        og.region_properties(SMALL, progress=lambda fraction: False)
    with pytest.raises(ZeroDivisionError):
        og.region_properties(SMALL, progress=lambda fraction: 1 / 0)
    with pytest.raises(TypeError):
        og.region_properties(SMALL, progress=3)
