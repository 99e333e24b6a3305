"""How large an outline is: its smallest circle and rectangle, the largest circle inside, least and greatest diameter."""
import ormixgeometry as og

leaf = og.Polygon2d([[0, 0], [9, -5], [21, -7], [30, -4], [36, -9], [45, -6], [52, 2], [62, 6], [57, 14], [47, 14],
                     [41, 21], [31, 17], [22, 22], [15, 14], [5, 12], [0, 0]])

picture = og.SvgWriter(560)
picture.draw(og.min_enclosing_circle(leaf), stroke="#1f78b4", width=1.5)
picture.draw(og.smallest_rectangle(leaf), stroke="#e0a000", width=1.5)
picture.draw(leaf, stroke="#2f4858", fill="#d8e8d0", width=2)
picture.draw(og.largest_inscribed_circle(leaf), stroke="#1f78b4", fill="#bcd9ec", width=1.5)
for diameter in (og.greatest_feret_diameter(leaf), og.least_feret_diameter(leaf)):
    picture.draw(og.Segment2d(diameter.from_, diameter.to), stroke="#c8402f", width=2)
picture.write("extents.svg")
