"""Which cells of a tissue touch: the borders that two cells share, drawn the wider the longer they are."""
import numpy as np
import ormixgeometry as og

# An image of labels: each pixel has the number of the nearest of 30 seeds, or 0 where none is near.
width, height = 192, 120
y, x = np.mgrid[:height, :width]
seeds = np.arange(30)
# Multiples of two irrational numbers spread evenly.
seed_x = width * ((0.5 + 0.7548776662466927 * seeds) % 1)
seed_y = height * ((0.5 + 0.5698402909980532 * seeds) % 1)
distances = np.hypot(x[..., None] - seed_x, y[..., None] - seed_y)
labels = np.where(distances.min(axis=-1) < 15.5, distances.argmin(axis=-1) + 1, 0).astype(np.uint16)

picture = og.SvgWriter(640, y_down=True)
cells = og.shapes_of_labels(labels)
picture.draw(list(cells), stroke="#7d8a94", fill="#f3ead9")
pairs = og.contacts(cells, gap=0)["contacts"]  # gap 0: the pixel edges that both have
for first, second, length in zip(pairs["first"], pairs["second"], pairs["length"]):
    for border in og.contact(cells[first], cells[second], gap=0).on_a.polylines:
        picture.draw(og.Polygon2d(border), stroke="#c8402f", width=1 + length / 8)
picture.write("contacts.svg")
