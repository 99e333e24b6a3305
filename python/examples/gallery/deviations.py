"""A ball as it was made: a sphere fitted to its vertices, and their deviations from it as colours, blue inside."""
import numpy as np
import ormixgeometry as og

# The hull of points near a sphere of radius 10: grooves of a tool, and slightly oval.
i = np.arange(600)
z, angle = 1 - (2 * i + 1) / 600, 2.399963229728653 * i
x, y = np.sqrt(1 - z * z) * np.cos(angle), np.sqrt(1 - z * z) * np.sin(angle)
radius = 10 + 0.04 * np.sin(9 * z) + 0.15 * x * x
ball = og.quick_hull(np.stack([radius * x, radius * y, radius * z], axis=1))
sphere = og.fit_sphere(ball.vertices)

picture = og.SvgWriter(560)
picture.draw_mesh(ball, values=np.linalg.norm(ball.vertices - sphere.center, axis=1) - sphere.radius)
picture.write("deviations.svg")
