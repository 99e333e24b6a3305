"""Indexes, distances, contacts, location, extents and skeletons, against numpy and each other."""

from functools import partial

import numpy as np
import pytest

import ormixgeometry as og

RANDOM = np.random.default_rng(20261122)
RING = [[0, 0], [10, 0], [10, 2], [0, 2]]


@pytest.mark.parametrize("dimension", [2, 3])
@pytest.mark.parametrize("dtype", ["float64", "float32"])
def test_an_index_finds_what_numpy_finds(dimension, dtype):
    points = RANDOM.random((500, dimension)).astype(dtype).astype(float)
    tree = og.RTree(points, dtype=dtype)
    boxes = np.sort(RANDOM.random((40, 2, dimension)), axis=1)
    inside = ((points >= boxes[:, None, 0]) & (points <= boxes[:, None, 1])).all(axis=2)
    assert (tree.query(boxes) == np.nonzero(inside)).all() and (tree.count(boxes) == inside.sum(axis=1)).all()
    assert (tree.query(boxes[0]) == np.flatnonzero(inside[0])).all()
    places = RANDOM.random((40, dimension))
    distances = np.linalg.norm(points - places[:, None], axis=2)
    indices, found = tree.neighbours(places, k=7)
    assert np.allclose(found, np.sort(distances, axis=1)[:, :7], rtol=1e-12)
    assert np.allclose(np.take_along_axis(distances, indices, axis=1), found, rtol=1e-12)
    assert (tree.count_within(places, 0.3) == (distances <= 0.3).sum(axis=1)).all()
    assert (tree.nearest(places, k=3, bound=0)[:, 0] == -1).all()


def test_an_index_changes_and_is_an_object():
    tree = og.RTree([[[0, 0], [1, 1]], [[5, 5], [6, 6]]], boxes=True)
    assert tree.insert([[2, 2], [3, 3]]) == 2 and tree.remove(0) and not tree.remove(0)
    assert len(tree) == 2 and 0 not in tree and tree.item(2).tolist() == [[2, 2], [3, 3]]
    assert tree.copy() == tree and og.from_bytes(tree.to_bytes()).query([[0, 0], [9, 9]]).tolist() == [1, 2]
    ring = og.create_rtree(og.Polygon2d(RING))
    pair = ring.nearest_pair(og.create_rtree(og.Polygon2d([[12, 1], [14, 0], [14, 2]])))
    assert (pair.distance, pair.index_a, pair.on_b) == (2, 1, (12, 1)) and ring.self_distance() == 2


def test_distances_locations_and_contacts_agree():
    region, other = og.Polygon2d(RING), og.Polygon2d([[10, 1], [14, 1], [14, 3], [10, 3]])
    points = RANDOM.uniform(-2, 12, (200, 2))
    inside = ((points > 0) & (points < (10, 2))).all(axis=1)
    assert (og.locate(region, points) == 2 * inside).all()
    nearest = og.PreparedBoundary2d(region).nearest_point(points)
    assert np.allclose(nearest, og.nearest_boundary_point(region, points), atol=1e-15)
    assert og.distance(region, other) == 0 and og.distance(region, og.Circle2d((15, 1), 2), "eIP_Boundary") == 3
    assert og.contact_length(region, other) == 1
    table = og.contacts([region, other])
    assert table["contacts"]["length"].tolist() == [1] and table["borders"]["free_length"].tolist() == [23, 11]
    assert og.greatest_feret_diameter(region).length == pytest.approx(np.hypot(10, 2), rel=1e-15)


def test_a_skeleton_and_its_region():
    skeleton, report = og.compute_skeleton(og.Polygon2d(RING), report=True)
    assert report.nb_components == 1 and og.counts_of(skeleton).nb_end_points == 4
    path = og.longest_path(skeleton)
    circles = og.sample_path(skeleton, path, 0.5)
    assert og.widths_along(skeleton, path).greatest == 2 == 2 * circles[:, 2].max()
    pruned, pruning = og.prune_skeleton(skeleton, 0.5, report=True)
    assert pruning.distance_bound <= 0.5 and og.counts_of(pruned).length == pytest.approx(8, rel=1e-6)
    other = og.compute_skeleton(og.Polygon2d([[0, 0], [1, 0], [0, 1]]))
    with pytest.raises(IndexError):
        og.sample_path(og.prune_skeleton(other, 1), path, 1)


def test_pages_show_entities_and_escape_texts(tmp_path):
    shown = og.view([og.Circle2d((0, 0), 1), [og.Polygon2d(RING)]], title="<script>alert(1)")
    assert "<script>alert(1)" not in shown.page and "image/svg+xml" in shown.page and "<iframe" in shown._repr_html_()
    report = og.HtmlReport("Parts")
    report.add_table({"area": np.array([1.5, 2.0]), "name": ["a", "<b>"]}, caption="Measures")
    report.write(tmp_path / "report.html")
    assert "&lt;b" in (tmp_path / "report.html").read_text()
    nested = []
    nested.append(nested)
    with pytest.raises(RecursionError):
        og.to_html(nested)


NAN = float("nan")
TREE = og.RTree([[0, 0], [1, 1]])
HOSTILE = [
    (TREE.query, ([1, 2],), ValueError),
    (TREE.query, (None,), TypeError),
    (TREE.query, ([[NAN, 0], [1, 1]],), og.Error),
    (TREE.nearest, ((0, 0), 0), og.Error),
    (TREE.nearest, ((0, 0), -1), TypeError),
    (TREE.item, (7,), og.Error),
    (TREE.insert, ((1, 2, 3),), ValueError),
    (og.RTree, (np.full((3, 2), NAN),), og.Error),
    (og.RTree, (np.zeros((3, 5)),), ValueError),
    (og.distance, (og.Circle2d((0, 0), 1), og.Line2d(1, 2)), og.Error),
    (og.distance, (og.Circle2d((0, 0), 1), None), TypeError),
    (og.contacts, ([None],), og.Error),
    (og.contact_length, (og.Polygon2d(RING), og.Polygon2d(RING), -1), og.Error),
    (og.locate, (og.Polygon2d(RING), np.zeros((2, 3))), ValueError),
    (og.compute_skeleton, (og.Polygon2d([[0, 0], [2, 2], [2, 0], [0, 2]]),), og.Error),
    (og.SvgWriter().draw, (3,), TypeError),
    (partial(og.SvgWriter().draw_mesh, values=[1, 2]), (og.quick_hull(np.eye(4, 3)),), og.Error),
    (partial(og.SvgWriter().draw_mesh, values=np.eye(4)), (og.quick_hull(np.eye(4, 3)),), ValueError),
    (og.to_html, (3,), TypeError),
    (og.SvgWriter().draw, (og.Circle2d((NAN, 0), 1),), og.Error),
]


@pytest.mark.parametrize("function, arguments, error", HOSTILE)
def test_bad_input_is_named(function, arguments, error):
    with pytest.raises(error):
        function(*arguments)
