"""A surface with 8,392 triangles, with 800 and with 200: flat parts lose most of them, edges keep theirs."""
import numpy as np
import ormixgeometry as og

# A ring with three balls on it, as the smooth surface of voxels.
z, y, x = np.mgrid[:44, :44, :44] - 21.5
inside = np.hypot(np.hypot(x, y) - 14, z) < 4
for angle in (0.3, 2.394, 4.489):
    inside |= np.sqrt((x - 14 * np.cos(angle)) ** 2 + (y - 14 * np.sin(angle)) ** 2 + z ** 2) < 7
mesh = og.surface_nets(inside)[0].exterior

picture = og.SvgWriter(1000)
for nb_triangles in (800, 200):
    mesh, report = og.simplify_mesh(mesh, nb_triangles=nb_triangles, keeps_volume=True, return_report=True)
    print(mesh.nb_triangles, "triangles, at most", report.from_input.greatest, "off")
    picture.draw_mesh(mesh, towards_viewer=(1, -2, 2))
    mesh = og.TranslationTransform3d(40, 20, 0) @ mesh  # to the right
picture.write("mesh_simplification.svg")
