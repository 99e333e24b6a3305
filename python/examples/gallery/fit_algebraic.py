"""A circle of least squares of its equation through points all around, with the region of its centre (95 %)."""
import numpy as np
import ormixgeometry as og

# A circle of radius 10 with noise of up to 2.
i = np.arange(40)
radius = 10 + 2 * np.sin(12.9898 * i * i)
points = np.stack([radius * np.cos(0.157 * i), radius * np.sin(0.157 * i)], axis=1)

circle, report = og.fit_circle(points, method="eFM_Algebraic", report=True)

picture = og.SvgWriter(480)
picture.draw(og.error_ellipse(report, "center x", "center y"), stroke="#1f78b4", fill="#cfe3f1", width=1)
picture.draw(circle, stroke="#1f78b4", width=2.5)
for point in points:
    picture.draw(og.Point2d(*point), stroke="#2f4858", width=1.7)
picture.write("fit_algebraic.svg")
