"""What is particular to classes of entities: pixels, trees of holes, meshes."""

import copy
import gc
import pickle

import numpy as np
import pytest

import ormixgeometry as og

RANDOM = np.random.default_rng(20261122)


@pytest.mark.parametrize("dtype", ["bool", "u1", "u2", "u4", "i4", "i1", "i8", ">u2"])
@pytest.mark.parametrize("Pixels, shape", [(og.RowIntersections, (7, 9)), (og.RowIntersections3d, (4, 7, 9))])
def test_pixels_of_any_array_and_back(Pixels, shape, dtype):
    mask = (RANDOM.random(shape) < 0.4).astype(dtype)
    for part in (mask, mask[::2, ::-1], mask.T, mask[..., ::3], mask[:0], np.zeros_like(mask)):
        pixels = Pixels.from_mask(part)
        assert np.array_equal(pixels.to_mask(part.shape), part != 0)
        assert len(pixels.runs) == 0 or Pixels(RANDOM.permutation(pixels.runs)) == pixels
        for again in (pickle.loads(pickle.dumps(pixels)), copy.copy(pixels), copy.deepcopy(pixels)):
            assert again == pixels


@pytest.mark.parametrize("runs, error", [
    ([[0, 0, 0]], og.Error), ([[0, 0, 1], [0, 0, 2]], og.Error), ([[0, -1, 2]], ValueError), ([[-1, 0, 1]], ValueError),
    ([[0, 0, 1], [2**40, 0, 1]], ValueError), ([[0, 0, 2**33]], ValueError), ([[0.5, 0, 1]], ValueError),
    ([[np.nan] * 3], ValueError), ([[10**30, 0, 1]], TypeError), (None, TypeError), ([[0, 0]], ValueError)])  # fmt: skip
def test_runs_that_are_none(runs, error):
    with pytest.raises(error):
        og.RowIntersections(runs)
    if isinstance(runs, list) and len(runs[0]) == 3:
        with pytest.raises(error):
            og.RowIntersections3d([[0, *run] for run in runs])


def test_holes_are_nodes_of_one_tree():
    polygon = og.PolygonWithHoles2d([[0, 0], [9, 0], [9, 9]], holes=[[[i, i], [i + 1, i], [i, i + 1]] for i in range(3)])
    assert eval(repr(polygon), vars(og)) == polygon
    hole = polygon.holes[1]
    assert hole is polygon.holes[1] and hole.type == og.ePolygon2dType.eP2DT_Interior
    for add, to in ((hole, polygon), (polygon, hole), (hole, hole)):
        with pytest.raises(ValueError):
            to.add_hole(add)
    view = hole.points
    with pytest.raises(BufferError):
        hole.exterior.points = [[0, 0]]
    with pytest.raises(BufferError):
        hole.exterior = [[0, 0]]
    del polygon
    gc.collect()
    root = hole.parent
    assert root.nb_holes == 3 and root.remove_hole(1) is hole and hole.parent is None
    hole.add_hole(root)
    del hole
    gc.collect()
    assert root.parent.nb_tot_polygons == 4 and view.tolist() == [[1, 1], [2, 1], [1, 2]]


def test_a_tree_of_any_depth_is_walked_and_released():
    node = og.PolygonWithHoles2d([[0, 0]])
    for _ in range(100_000):
        node.add_hole(og.PolygonWithHoles2d([[0, 0]]))
        node = node.holes[0]
    gc.collect()
    path = [node]
    while path[-1].parent is not None:
        path.append(path[-1].parent)
    root = path[-1]
    assert len(path) == root.nb_tot_polygons == root.copy().nb_tot_polygons == 100_001
    for refuse in (lambda: root == root.copy(), lambda: pickle.dumps(root), root.to_json, lambda: repr(root)):
        with pytest.raises((og.Error, RecursionError)):
            refuse()


TETRAHEDRON = np.array([[0, 2, 1], [0, 1, 3], [1, 2, 3], [2, 0, 3]])
CORNERS = np.array([[0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1]])


@pytest.mark.parametrize("family", [og.Mesh3d, og.FaceVertexTriMesh3d, og.FaceVertexAdjTriMesh3d])
@pytest.mark.parametrize("dtype", ["float64", "float32", "int32", "uint32"])
def test_meshes_come_from_arrays_and_show_them(family, dtype):
    mesh = family(CORNERS[::-1], TETRAHEDRON.astype(">i8"), dtype=dtype)
    assert mesh.vertices.tolist() == CORNERS[::-1].tolist() and mesh.vertices.dtype == dtype
    assert mesh.triangles.tolist() == TETRAHEDRON.tolist() and not mesh.triangles.flags.writeable
    for again in (copy.copy(mesh), pickle.loads(pickle.dumps(mesh)), eval(repr(mesh), vars(og))):
        assert again == mesh and type(again) is type(mesh)
    assert mesh.astype("float32").astype(dtype) == mesh
    with pytest.raises(ValueError):
        mesh.vertices = CORNERS[:3]
    for name in ("vertices", "triangles"):
        view = getattr(mesh, name)
        for change in (lambda: mesh.build(CORNERS, TETRAHEDRON), mesh.clear):
            with pytest.raises(BufferError, match=name):
                change()
        del view
    vertices, triangles = mesh.vertices, mesh.triangles
    del mesh
    gc.collect()
    assert vertices[triangles].sum() == 9
    mesh = family([], [], dtype=dtype)
    mesh.vertices = CORNERS
    mesh.build(CORNERS, TETRAHEDRON)
    with pytest.raises(og.Error):
        mesh.build(CORNERS, TETRAHEDRON + 1)
    assert mesh.nb_triangles == 4


def test_a_mesh_of_half_edges_refuses_what_does_not_fit():
    mesh = og.Mesh3d(CORNERS, TETRAHEDRON[:3])
    assert not mesh.is_closed and [len(loop) for loop in mesh.boundary_loops()] == [3]
    for wrong in (TETRAHEDRON[:1], [[0, 0, 1]], [[0, 1, 4]], np.vstack([TETRAHEDRON[3:], [[7, 8, 9]]])):
        with pytest.raises(og.Error):
            mesh.add_triangles(wrong)
    with pytest.raises(og.Error):
        og.Mesh3d(CORNERS, np.vstack([TETRAHEDRON, TETRAHEDRON]))
    mesh.add_triangles(TETRAHEDRON[3:])
    assert mesh.is_closed and mesh.nb_edges == 6 and mesh.nb_components == 1 and mesh.boundary_loops() == []
    mesh.check_integrity()
    body = og.MeshWithHoles3d(mesh.astype("float32"), dtype="float32")
    for solid in (mesh, body, og.Shape3d(meshes=[body])):
        assert solid._repr_svg_().count("<path") == 7  # the faces that are seen, and their edges
    assert og.Mesh3d([], [])._repr_svg_() is None
    assert mesh.build(CORNERS, np.vstack([TETRAHEDRON, TETRAHEDRON]), policy="eNMP_OwnVertices").tolist() == [4, 5, 6, 7]


def test_arrays_of_the_caller_are_not_copied_and_looked_at_again():
    vertices, triangles = CORNERS.astype("float32"), TETRAHEDRON.astype("uint32")
    mesh = og.TriMesh3d(vertices, triangles)
    assert mesh.vertices is vertices and mesh.triangles is triangles
    for wrong in (TETRAHEDRON + 1, TETRAHEDRON - 1, TETRAHEDRON / 2, TETRAHEDRON[:, :2], None):
        with pytest.raises((og.Error, ValueError, TypeError)):
            og.TriMesh3d(vertices, wrong)
