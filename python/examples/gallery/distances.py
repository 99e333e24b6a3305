"""Two outlines: where they are nearest to each other (red), and where one is farthest from the other (yellow)."""
import ormixgeometry as og

island = og.Polygon2d([[2, 4], [8, 1], [15, 3], [19, 9], [16, 15], [12, 11], [8, 17], [3, 13], [5, 9], [2, 4]])
coast = og.Polygon2d([[20, 0], [40, 0], [42, 22], [6, 26], [10, 21], [17, 22], [22, 17], [25, 10], [21, 6], [20, 0]])
buoy = og.Ellipse2d((33, 11), 4, 2, 0.6)

nearest = og.nearest_points(island, coast)
farthest = og.directed_hausdorff(island, coast)
to_shore = og.nearest_points(buoy, coast, policy="eIP_Boundary")  # it lies inside

picture = og.SvgWriter(640)
picture.draw(coast, stroke="#2f4858", fill="#d8e8d0", width=1.5)
picture.draw(island, stroke="#2f4858", fill="#f3ead9", width=1.5)
picture.draw(buoy, stroke="#2f4858", fill="#bcd9ec", width=1.5)
for found, colour in ((nearest, "#c8402f"), (to_shore, "#c8402f"), (farthest, "#e0a000")):
    picture.draw(og.Segment2d(found.on_a, found.on_b), stroke=colour, width=3)
picture.write("distances.svg")
