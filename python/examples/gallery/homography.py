"""A plate seen at an angle: the homography of twelve marks, three of which were mistaken (red), and the plate's grid."""
import numpy as np
import ormixgeometry as og

# Marks on the plate, and where a camera saw them, to two digits.
marks = np.array([[x, y] for y in (0.0, 4.0, 8.0) for x in (0.0, 4.0, 8.0, 12.0)])
seen = np.array([[2, 1], [5, 1.61], [6.5, 4.6], [9.41, 2.5], [0.91, 3.64], [5.4, 6.3], [6.12, 4.18], [8.08, 4.38],
                 [0, 5.83], [2.73, 5.91], [7.3, 1.3], [6.92, 6.03]])
found = og.robust_estimation("HomographyTransform2dEstimator", np.hstack([marks, seen]), threshold=0.05)
to_picture = found.entity

picture = og.SvgWriter(640)
for i in range(13):
    width = 2.0 if i % 4 == 0 else 0.7
    picture.draw(to_picture @ og.Segment2d((i, 0), (i, 8)), stroke="#1f78b4", width=width)
    if i <= 8:
        picture.draw(to_picture @ og.Segment2d((0, i), (12, i)), stroke="#1f78b4", width=width)
for point, is_inlier in zip(seen, found.inliers):
    picture.draw(og.Point2d(*point), stroke="#2f4858" if is_inlier else "#c8402f", width=3)
picture.write("homography.svg")
