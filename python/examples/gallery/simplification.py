"""Neighbours simplified together: borders that two regions share stay shared, and nothing crosses."""
import numpy as np
import ormixgeometry as og

# Labels of 12 fields with curved borders: the nearest seed, seen through waves.
size = 160
y, x = np.mgrid[:size, :size]
u, v = x + 5 * np.sin(0.11 * y), y + 5 * np.sin(0.13 * x)
seeds = np.arange(12)
seed_x = size * ((0.5 + 0.7548776662466927 * seeds) % 1)
seed_y = size * ((0.5 + 0.5698402909980532 * seeds) % 1)
labels = 1 + np.hypot(u[..., None] - seed_x, v[..., None] - seed_y).argmin(axis=-1).astype(np.uint8)
fields = og.shapes_of_labels(labels)

simple = og.simplify_all(fields, 2.5)  # within 2.5 pixels of where they were

picture = og.SvgWriter(720, y_down=True)
picture.draw(list(fields), stroke="#2f4858", fill="#d8e8d0")
move = og.TranslationTransform2d(size + 12, 0)
picture.draw([move @ field for field in simple], stroke="#2f4858", fill="#f3ead9", width=1.5)
picture.write("simplification.svg")
