"""The convex hull of a cloud of points in space: no point is outside, not even by rounding."""
import numpy as np
import ormixgeometry as og

# Points in an ellipsoid, spread by multiples of irrational numbers.
i = np.arange(400)
points = np.stack([2 * (number * i % 1) - 1 for number in (0.8191725133961645, 0.6710436067037893, 0.5497004779019703)],
                  axis=1)
points = points[(points ** 2).sum(axis=1) < 1] * (9, 6, 5)
hull = og.quick_hull(points)

picture = og.SvgWriter(700)
picture.draw_mesh(hull, towards_viewer=(1, -2, 2))
picture.write("hull.svg")
