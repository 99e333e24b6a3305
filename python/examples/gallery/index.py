"""An index of 900 points: those in a box (blue), those near a path (green), and the 25 nearest to a place (red)."""
import numpy as np
import ormixgeometry as og

# A spiral of golden angles, as the seeds of a sunflower.
i = np.arange(900)
points = np.stack([np.sqrt(i) * np.cos(2.399963229728653 * i), np.sqrt(i) * np.sin(2.399963229728653 * i)], axis=1)
index = og.RTree(points)

box = [(-25, 5), (-8, 18)]
path = [(-20, -16), (22, 2)]
place = (12, 16)

picture = og.SvgWriter(560)


def draw(found, colour, width):
    picture.draw([og.Point2d(*point) for point in points[found]], stroke=colour, width=width)


draw(slice(None), "#c3ccd2", 1.2)
draw(index.query(box), "#1f78b4", 1.8)
draw(index.query_along(path, 1.2), "#3c8f57", 1.8)
draw(index.nearest(place, 25), "#c8402f", 1.8)
picture.draw(og.BoundingBox2d(*box), stroke="#1f78b4", width=1.5)
picture.draw(og.Segment2d(*path), stroke="#3c8f57", width=1.5)
picture.write("index.svg")
