"""A scan with a hole and triangles that are turned (left), and the closed body that repair makes of it (right)."""
import numpy as np
import ormixgeometry as og

# The hull of points on an egg, spread by golden angles.
i = np.arange(180)
z = 1 - (2 * i + 1) / 180
radius = np.sqrt(1 - z * z) * (1 + 0.25 * z)
angle = 2.399963229728653 * i
egg = og.quick_hull(np.stack([8 * radius * np.cos(angle), 8 * radius * np.sin(angle), 11 * z], axis=1))

# As a scanner saw it: nothing of one place, and every ninth triangle turned.
vertices, triangles = egg.vertices, egg.triangles.copy()
triangles[::9] = triangles[::9][:, [0, 2, 1]]
seen = np.linalg.norm(vertices[egg.triangles[:, 0]] - (4, -7, 2), axis=1) >= 4.5
scan = og.FaceVertexTriMesh3d(vertices, triangles[seen])

body, report = og.repair(scan, return_report=True)
print("\n".join(report.log))

picture = og.SvgWriter(900)
picture.draw_mesh(og.to_mesh3d(scan))
picture.draw_mesh(og.TranslationTransform3d(20, 10, 0) @ og.to_mesh3d(body))  # to the right, as it is looked at from (1, -2, 1)
picture.write("repair.svg")
