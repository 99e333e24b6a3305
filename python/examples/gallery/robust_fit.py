"""A circle through points of which a third are outliers: the robust fit (blue) with its residuals, the plain fit (grey)."""
import numpy as np
import ormixgeometry as og

# An arc of radius 10 with noise of up to 0.3, and every third point somewhere else.
i = np.arange(90)
radius = np.where(i % 3 == 0, 11 + 7 * (0.618034 * i % 1), 10 + 0.3 * np.sin(12.9898 * i))
points = np.stack([radius * np.cos(0.045 * i), radius * np.sin(0.045 * i)], axis=1)

plain = og.fit_circle(points)
found = og.robust_estimation("Circle2dEstimator", points, threshold=0.5)  # the largest distance of an inlier
robust = found.entity

picture = og.SvgWriter(480)
picture.draw(plain, stroke="#9aa5ad", width=1.5)
picture.draw(robust, stroke="#1f78b4", width=2.5)
for point, is_inlier in zip(points, found.inliers):
    dot = og.Point2d(*point)
    if is_inlier:
        foot = og.nearest_points(dot, robust, policy="eIP_Boundary").on_b
        picture.draw(og.Segment2d(point, foot), stroke="#c8402f", width=2)
    picture.draw(dot, stroke="#2f4858" if is_inlier else "#b5bec5", width=1.7)
picture.write("robust_fit.svg")
