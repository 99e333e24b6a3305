import numpy as np
import ormixgeometry as og

ring = og.Polygon2d([[0, 0], [10, 0], [10, 5], [0, 5]])
mask = np.zeros((40, 60), dtype=bool)
mask[5:20, 10:30] = mask[25:35, 5:15] = True
table = og.region_properties(og.label(mask))
print(og.area(ring), table["area"].tolist())
assert og.area(ring) == 50 and table["area"].tolist() == [300, 100]
