"""The skeleton of a polygon with a hole, coloured by the width of the region, and circles that touch its boundary."""
import ormixgeometry as og

key = og.PolygonWithHoles2d(
    [[0, 20], [4, 8], [14, 1], [26, 1], [36, 8], [40, 16], [96, 17], [96, 4], [104, 4], [104, 13], [110, 13],
     [110, 2], [120, 2], [120, 25], [40, 26], [36, 34], [26, 40], [14, 40], [4, 33], [0, 20]],
    holes=[[[10, 20], [14, 28], [24, 29], [29, 21], [24, 12], [15, 12], [10, 20]]])

# Without the branches that reach into each corner by less than 2.
skeleton = og.compute_skeleton(key, pruning=2)
picture = og.SvgWriter(640)
picture.draw(key, stroke="#2f4858", fill="#eef2f5", width=1.5)
picture.draw_skeleton(skeleton, width=3, circle_step=6)
picture.write("skeletons.svg")
