"""A volume of voxels: its exact boundary (left) and a smooth one within half a voxel of it (right), both closed."""
import numpy as np
import ormixgeometry as og

# Two balls that have grown together, and a tunnel through one of them.
z, y, x = np.mgrid[:9, :9, :15] - 4.0
inside = (np.sqrt(x ** 2 + y ** 2 + z ** 2) < 4.2) | (np.sqrt((x - 6.5) ** 2 + y ** 2 + (z + 1) ** 2) < 3.2)
inside &= np.hypot(x, z) > 1.5

picture = og.SvgWriter(1000)
smooth = og.surface_nets(inside)[0].exterior
picture.draw_mesh(og.voxel_surfaces(inside)[0].exterior, towards_viewer=(3, -2, 2))
smooth = og.TranslationTransform3d(7, 12, 0) @ smooth  # to the right, as it is looked at from (3, -2, 2)
picture.draw_mesh(smooth, towards_viewer=(3, -2, 2))
picture.write("voxels.svg")
