"""Files, measures and simplification of meshes beside Open3D and trimesh: `taskset -c 1 python3 meshes.py`.

A sphere with waves of 10⁶ triangles, as a binary STL file and in memory. Peers that are not installed are left out.
"""

import importlib
import os
import tempfile

import numpy as np
from timing import least, report

import ormixgeometry as og


def wavy_sphere(rows=707):
    """Vertices and about 2 rows² triangles of a closed surface over a grid of angles."""
    theta = np.linspace(0, np.pi, rows)[1:-1, None]
    phi = np.linspace(0, 2 * np.pi, rows, endpoint=False)[None]
    radius = 1 + 0.05 * np.sin(9 * theta) * np.cos(7 * phi)
    points = radius[..., None] * np.stack(np.broadcast_arrays(np.sin(theta) * np.cos(phi), np.sin(theta) * np.sin(phi), np.cos(theta)), -1)
    vertices = np.vstack([points.reshape(-1, 3), [[0, 0, 1], [0, 0, -1]]])
    index = np.arange(points.shape[0] * rows).reshape(-1, rows)
    a, b = index[:-1], index[1:]
    c, d = np.roll(b, -1, 1), np.roll(a, -1, 1)
    north, south = len(vertices) - 2, len(vertices) - 1
    first, last = index[0], index[-1]
    caps = [np.stack([np.full(rows, north), first, np.roll(first, -1)], -1), np.stack([np.full(rows, south), np.roll(last, -1), last], -1)]
    sides = [np.stack([a, b, c], -1).reshape(-1, 3), np.stack([a, c, d], -1).reshape(-1, 3)]
    return vertices, np.vstack(sides + caps).astype(np.uint32)


def peer(name):
    try:
        return importlib.import_module(name)
    except ImportError:
        return None


def main():
    vertices, triangles = wavy_sphere()
    path = os.path.join(tempfile.mkdtemp(), "sphere.stl")
    og.write_mesh(path, (vertices, triangles), format="eMFF_StlBinary")
    open3d, trimesh = peer("open3d"), peer("trimesh")
    rows = []

    def compare(what, ours, repeats=3, **peers):
        mine, result = least(ours, repeats)
        present = {name: call for name, call in peers.items() if peer(name)}
        rows.extend((what, mine, name, least(call, repeats)[0]) for name, call in present.items())
        if not present:
            rows.append((what, mine, "", None))
        return result

    def read_open3d():
        mesh = open3d.io.read_triangle_mesh(path)
        mesh.remove_duplicated_vertices()
        return mesh

    mesh = compare("read binary STL, merged vertices", lambda: og.read_mesh(path), open3d=read_open3d,
                   trimesh=lambda: trimesh.load(path))  # fmt: skip
    compare("the same as index triples", lambda: og.read_face_vertex_tri_mesh(path, dtype="float32"))
    theirs = read_open3d() if open3d else None
    if hasattr(og, "area"):
        compare("area and volume", lambda: (og.area(mesh), og.volume(mesh)),
                open3d=lambda: (theirs.get_surface_area(), theirs.get_volume()),
                trimesh=lambda: (lambda m: (m.area, m.volume))(trimesh.Trimesh(vertices, triangles, process=False)))  # fmt: skip
    compare("validate, without self-intersections", lambda: og.validate(mesh, finds_self_intersections=False),
            open3d=lambda: (theirs.is_edge_manifold(), theirs.is_vertex_manifold(), theirs.is_orientable()))  # fmt: skip
    compare("simplify to 10 %", lambda: og.simplify_mesh(mesh, nb_triangles=len(triangles) // 10),
            open3d=lambda: theirs.simplify_quadric_decimation(len(triangles) // 10), repeats=1)  # fmt: skip
    compare("components", lambda: og.label_components(mesh), open3d=lambda: theirs.cluster_connected_triangles())
    print(f"{len(triangles)} triangles")
    report(rows)


if __name__ == "__main__":
    main()
