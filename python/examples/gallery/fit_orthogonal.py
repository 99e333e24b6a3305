"""A circle through a short arc (dark): of least squares of its equation (grey), too small, and of distances (blue)."""
import numpy as np
import ormixgeometry as og

# 45 degrees of a circle of radius 10, with noise of 2 % of it: the sum of twelve equally distributed numbers, nearly
# normal. The circle that was measured is green, the light ellipse the region of the centre (95 %).
random = np.random.RandomState(1)
noise = -6 + (random.randint(0, 2**32, (60, 12), dtype=np.uint32) / 4294967296.0).cumsum(axis=1)[:, -1]
angle, radius = 1.178 + 0.0131 * np.arange(60), 10 + 0.2 * noise
points = np.stack([radius * np.cos(angle), radius * np.sin(angle)], axis=1)

algebraic = og.fit_circle(points)
orthogonal, report = og.fit_circle(points, report=True)

picture = og.SvgWriter(480)
picture.draw(og.error_ellipse(report, "center x", "center y"), stroke="#1f78b4", fill="#cfe3f1", width=1)
picture.draw(og.Circle2d((0, 0), 10), stroke="#33a02c", width=1.5)
picture.draw(algebraic, stroke="#9aa5ad", width=2)
picture.draw(orthogonal, stroke="#1f78b4", width=2.5)
for point in points:
    picture.draw(og.Point2d(*point), stroke="#2f4858", width=1.7)
picture.write("fit_orthogonal.svg")
