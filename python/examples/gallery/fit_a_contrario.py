"""A circle among seven in ten outliers, their noise unknown: a contrario (blue), and of the least median (grey), misled."""
import numpy as np
import ormixgeometry as og

# Three in ten points near a circle, the others anywhere.
random = np.random.RandomState(4)


def uniform():
    return random.randint(0, 2**32, dtype=np.uint32) / 4294967296.0


points = []
for i in range(200):
    angle, radius = 6.2831853 * uniform(), 6 + 0.1 * (uniform() + uniform() - 1)
    if i % 10 < 3:
        points.append((2 + radius * np.cos(angle), 1 + radius * np.sin(angle)))
    else:
        y = 24 * uniform() - 12
        points.append((24 * uniform() - 12, y))

wrong = og.robust_estimation("Circle2dEstimator", points, method="eRM_LMedS").entity
circle, report = og.fit_circle(points, robust={"method": "eRM_Acontrario"}, report=True)

picture = og.SvgWriter(480)
picture.draw(wrong, stroke="#9aa5ad", width=2)
picture.draw(og.error_ellipse(report, "center x", "center y"), stroke="#1f78b4", fill="#cfe3f1", width=1)
picture.draw(circle, stroke="#1f78b4", width=2.5)
for point, is_inlier in zip(points, report.inliers):
    picture.draw(og.Point2d(*point), stroke="#2f4858" if is_inlier else "#b5bec5", width=1.7)
picture.write("fit_a_contrario.svg")
