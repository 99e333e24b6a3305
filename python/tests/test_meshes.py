"""Functions on meshes: files, defects, repair, components, hulls, voxels, simplification."""

import os
import signal
import struct
import threading
import time

import numpy as np
import pytest

import ormixgeometry as og

RANDOM = np.random.default_rng(20261122)


def ball(size=9, dtype="float64"):
    return og.surface_nets(np.ones((size,) * 3, bool), dtype=dtype)[0].exterior


def forms(mesh):
    """The same mesh in each form that functions take."""
    arrays = np.array(mesh.vertices), np.array(mesh.triangles)
    return [mesh, arrays, og.TriMesh3d(*arrays), og.to_face_vertex_tri_mesh3d(mesh), og.to_face_vertex_adj_tri_mesh3d(mesh),
            (np.asfortranarray(arrays[0]), arrays[1].astype("i8").tolist())]  # fmt: skip


def volume(mesh):
    corners = np.asarray(mesh.vertices, float)[mesh.triangles]
    return np.linalg.det(corners).sum() / 6


@pytest.mark.parametrize("extension", ["stl", "obj", "ply", "off"])
@pytest.mark.parametrize("dtype", ["float64", "float32", "int32"])
def test_files_give_back_what_was_written(extension, dtype, tmp_path):
    whole = og.to_mesh3d((np.rint(8 * np.asarray(ball().vertices)).astype(dtype), ball().triangles))
    path = tmp_path / f"mesh.{extension}"
    for mesh in forms(whole):
        og.write_mesh(path, mesh)
        read, report = og.read_mesh(path, dtype=dtype, return_report=True)
        assert report.message == "" and report.nb_kept == read.nb_triangles == whole.nb_triangles
        assert read.is_closed and volume(read) == pytest.approx(volume(whole))
        if extension != "stl":
            assert read == whole
        assert og.read_face_vertex_tri_mesh(path, dtype=dtype).nb_vertices == whole.nb_vertices
    path.write_bytes(path.read_bytes()[: path.stat().st_size // 2])
    with pytest.raises(og.Error):
        og.read_mesh(path)
    part, report = og.read_mesh(path, return_report=True)
    assert report.message != "" and part.nb_triangles < whole.nb_triangles


def test_older_functions_of_stl(tmp_path):
    mesh = ball()
    for save, read in ((og.save_to_stl_ascii, og.read_stl_ascii), (og.save_to_stl_binary, og.read_stl_binary)):
        tree = og.surface_nets(np.ones((9, 9, 9), bool))[0]
        for source in (*forms(mesh), tree, [og.make_shape(np.ones((3, 3, 3), bool), "eSS_VoxelFaces")]):
            save(tmp_path / "mesh.stl", source)
            again = read(tmp_path / "mesh.stl")
            assert again == og.read_from_stl_file(tmp_path / "mesh.stl") and again.is_closed and min(again.vertices.ravel()) >= 1
        assert og.stl_file_has_ascii_format(tmp_path / "mesh.stl") == (read is og.read_stl_ascii)
        with pytest.raises(og.Error):
            save(tmp_path / "none" / "mesh.stl", mesh)


def test_defects_are_found_and_repaired():
    whole = ball()
    for mesh in forms(whole):
        assert og.validate(mesh).is_clean and og.find_self_intersections(mesh).nb_pairs == 0
    points, triangles = np.array(whole.vertices), np.array(whole.triangles)
    broken = triangles[3:].copy()
    broken[::7] = broken[::7, ::-1]
    shuffled = RANDOM.permutation(np.vstack([broken, broken[:2], [[1, 1, 2]]]))
    found = og.validate((points, shuffled))
    for kind in ("eMD_BoundaryEdge", "eMD_FlippedNeighbours", "eMD_DuplicateTriangle", "eMD_EqualCorners"):
        assert found.counts[kind] > 0 and kind in repr(found)
    assert all(len(defect.place) == 3 for defect in found.defects)
    repaired, report = og.repair((points, shuffled), return_report=True)
    assert og.validate(repaired).is_clean and report.is_closed and report.nb_duplicate == 2
    assert volume(repaired) == pytest.approx(volume(whole), rel=0.05)
    assert isinstance(og.repair(og.to_mesh3d((points, shuffled))), og.Mesh3d)
    invalid = og.validate((points, [[0, 1, 4000000000]]))
    assert invalid.counts["eMD_InvalidIndex"] == 1
    crossing = og.find_self_intersections(([[0, 0, 0], [2, 0, 0], [0, 2, 0], [0.5, 0.5, -1], [0.5, 0.5, 1], [3, 3, 0]],
                                           [[0, 1, 2], [3, 4, 5]]))  # fmt: skip
    assert crossing.pairs.tolist() == [[0, 1]] and crossing.is_complete


def test_components_and_shells():
    box = np.pad(np.ones((5, 5, 5), bool), 1)
    box[3, 3, 3] = False
    tree = og.voxel_surfaces(box)[0]
    shells = [tree.exterior, tree.holes[0].exterior]
    points = np.vstack([mesh.vertices for mesh in shells])
    triangles = np.vstack([shells[0].triangles, shells[1].triangles + shells[0].nb_vertices])
    for mesh in forms(og.to_mesh3d((points, triangles))):
        count, labels = og.label_components(mesh)
        assert count == 2 and np.bincount(labels).tolist() == [shell.nb_triangles for shell in shells]
        parts = og.extract_components(mesh)
        assert [part.nb_vertices for part in parts] == [shell.nb_vertices for shell in shells]
        assert type(parts[0]) is (type(mesh) if hasattr(mesh, "add_vertex") or hasattr(mesh, "neighbours") else type(og.to_face_vertex_tri_mesh3d(mesh)))
        found = og.find_shells(mesh).shells
        assert [(s.parent, s.volume, s.orientation.name) for s in found] == [(None, 125, "eSO_Outward"), (0, -1, "eSO_Inward")]
        body = og.to_meshes_with_holes(mesh)[0]
        assert body.nb_holes == 1 and og.voxelize(body, box.shape).nb_voxels == og.voxelize(mesh, box.shape).nb_voxels == 124
    assert og.voxelize([tree], box.shape) == og.to_row_intersections3d(box)


@pytest.mark.parametrize("dtype", ["float64", "float32", "int32"])
def test_hulls(dtype):
    points = RANDOM.integers(-50, 50, (60, 3)).astype(dtype)
    hull = og.quick_hull(points)
    assert hull.dtype == dtype and hull.is_closed
    corners = np.asarray(hull.vertices, float)[hull.triangles]
    normals = np.cross(corners[:, 1] - corners[:, 0], corners[:, 2] - corners[:, 0])
    assert ((points[None].astype(float) - corners[:, :1]) @ normals[:, :, None] <= 1e-9).all()
    for again in (og.quick_hull(hull), og.quick_hull(hull.vertices[::-1])):
        assert sorted(again.vertices.tolist()) == sorted(hull.vertices.tolist())


@pytest.mark.parametrize("dtype", ["float64", "float32"])
def test_simplification(dtype):
    whole = ball(15, dtype)
    for mesh in forms(whole):
        before = whole.to_bytes()
        fewer, report = og.simplify_mesh(mesh, nb_triangles=300, keeps_volume=True, return_report=True)
        assert fewer.nb_triangles == report.nb_triangles_after == 300 and report.nb_triangles_before == whole.nb_triangles
        assert volume(fewer) == pytest.approx(volume(whole), rel=1e-4) and og.validate(fewer).is_clean
        assert whole.to_bytes() == before and report.to_input.greatest > 0
    ends = og.simplify_mesh(whole, max_error=0.5, placement="eCP_Ends", locked_vertices=[3, 5])
    kept = set(map(tuple, ends.vertices.tolist()))
    assert kept <= set(map(tuple, whole.vertices.tolist())) and tuple(whole.vertices[3].tolist()) in kept


def test_progress_of_simplification():
    mesh = ball(15)
    fractions = []
    og.simplify_mesh(mesh, 100, progress=fractions.append)
    assert fractions == sorted(fractions) and fractions[-1] == 1
    with pytest.raises(og.Error, match="stopped by its progress callback"):
        og.simplify_mesh(mesh, 100, progress=lambda fraction: False)
    with pytest.raises(ZeroDivisionError):
        og.simplify_mesh(mesh, 100, progress=lambda fraction: 1 / 0)
    with pytest.raises(BufferError):
        og.simplify_mesh(mesh, 100, progress=lambda fraction: mesh.clear())
    with pytest.raises(og.Error):  # a call within a call
        og.simplify_mesh(mesh, 100, progress=lambda fraction: og.simplify_mesh(mesh, 100, progress=lambda inner: False))
    assert mesh == ball(15)


def test_interrupts_and_other_threads():
    mesh = ball(60)
    counts = [0]

    def count():
        while counts[0] >= 0:
            counts[0] += 1
            time.sleep(0.001)

    thread = threading.Thread(target=count)
    thread.start()
    timer = threading.Timer(0.2, os.kill, (os.getpid(), signal.SIGINT))
    timer.start()
    try:
        with pytest.raises(KeyboardInterrupt):
            while True:
                og.simplify_mesh(mesh, 100, avoids_intersections=True)
    finally:
        timer.join()
        ran, counts[0] = counts[0], -(10**9)
        thread.join()
    assert ran > 20  # it ran while the mesh was simplified


TRIANGLE = (np.eye(3), [[0, 1, 2]])


@pytest.mark.parametrize("call, error", [
    (lambda: og.simplify_mesh(TRIANGLE), TypeError), (lambda: og.simplify_mesh(TRIANGLE, nb_triangles=-1), TypeError),
    (lambda: og.simplify_mesh(TRIANGLE, max_error=np.nan), og.Error), (lambda: og.simplify_mesh(TRIANGLE, 1, locked_vertices=[7]), og.Error),
    (lambda: og.simplify_mesh(TRIANGLE, 1, locked_vertices=[-7]), ValueError), (lambda: og.simplify_mesh(TRIANGLE, 1, progress=7), TypeError),
    (lambda: og.simplify_mesh((np.full((3, 3), np.nan), [[0, 1, 2]]), 1), og.Error), (lambda: og.simplify_mesh(None, 1), TypeError),
    (lambda: og.repair((np.eye(3), [[0, 1, 3]])), og.Error), (lambda: og.repair(TRIANGLE, tolerance=-1), og.Error),
    (lambda: og.validate((np.eye(2), [[0, 1, 2]])), ValueError), (lambda: og.validate((np.eye(3), [[0, -1, 2]])), ValueError),
    (lambda: og.validate((np.eye(3), [[0, 1, np.nan]])), ValueError), (lambda: og.validate(("a", "b")), TypeError),
    (lambda: og.validate(np.eye(3)), TypeError), (lambda: og.validate((np.broadcast_to(1.0, (2**40, 3)), [[0, 1, 2]])), ValueError),
    (lambda: og.label_components((np.eye(3), [[0, 1, 2**31]])), og.Error), (lambda: og.quick_hull(np.zeros((5, 3))), og.Error),
    (lambda: og.quick_hull(np.full((5, 3), np.inf)), og.Error), (lambda: og.quick_hull("points"), TypeError),
    (lambda: og.voxelize((9 * np.eye(3), [[0, 1, 2]]), (3, 3, 3)), og.Error), (lambda: og.voxelize(ball(), (2**31,) * 3), og.Error),
    (lambda: og.voxelize(ball(), (3, 3, 3), spacing=(0, 1, 1)), og.Error), (lambda: og.voxelize([None], (3, 3, 3)), og.Error),
    (lambda: og.to_mesh3d(og.Torus3d((0, 0, 0), (0, 0, 1), 3, 1), 2), og.Error), (lambda: og.to_mesh3d(og.Circle3d((0, 0, 0), (0, 0, 1), 3), 9), TypeError),
    (lambda: og.to_mesh3d(og.Cone3d((0, 0, 0), (0, 0, 1), 0, 0), 9), og.Error), (lambda: og.to_mesh3d(og.Cone3d((0, 0, 0), (0, 0, 1), 0, 1), -1), TypeError),
    (lambda: og.to_meshes_with_holes(TRIANGLE), og.Error), (lambda: og.to_mesh3d((np.eye(3), [[0, 1, 1]]), "eNMP_Refuse"), og.Error),
    (lambda: og.read_mesh("/none/mesh.stl"), og.Error), (lambda: og.read_mesh("mesh.stl", dtype="int8"), TypeError),
    (lambda: og.read_mesh("mesh\0.stl"), TypeError), (lambda: og.write_mesh("/none/mesh.stl", TRIANGLE), og.Error),
    (lambda: og.read_mesh(7), TypeError)])  # fmt: skip
def test_hostile_calls(call, error):
    with pytest.raises(error):
        call()


def test_arrays_of_any_size_and_stride():
    nothing = np.zeros((0, 3))
    assert og.validate((nothing, nothing)).is_clean and og.label_components((nothing, [])) [0] == 0
    mesh = ball()
    vertices = np.repeat(np.array(mesh.vertices), 2, axis=0)[::-2][::-1]
    vertices.flags.writeable = False
    assert og.simplify_mesh((vertices, mesh.triangles), 100).nb_triangles == 100
    view = mesh.vertices
    del mesh
    assert og.quick_hull(view).is_closed


def test_declared_counts_of_files_are_not_believed(tmp_path):
    (tmp_path / "lie.stl").write_bytes(b"\0" * 80 + struct.pack("<I", 0xFFFFFFFF) + b"\0" * 50)
    (tmp_path / "lie.ply").write_text("ply\nformat ascii 1.0\nelement vertex 4000000000\nproperty float x\nend_header\n")
    for name in ("lie.stl", "lie.ply"):
        mesh, report = og.read_mesh(tmp_path / name, return_report=True)
        assert report.message and mesh.nb_triangles <= 1
