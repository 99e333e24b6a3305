"""Indexes of items: the class that fits an array."""

import numpy

from ._family import Family

# The family of points, segments or triangles by the shape of their array without its first dimension.
_ITEMS = {
    (2,): "RTree_Point2d",
    (3,): "RTree_Point3d",
    (2, 2): "RTree_Segment2d",
    (2, 3): "RTree_Segment3d",
    (3, 3): "RTree_LightTriangle3d",
}
_BOXES = {(2, 2): "RTree_BoundingBox2d", (2, 3): "RTree_BoundingBox3d"}


def make_rtree(families):
    """The class `RTree`, which makes objects of the families of indexes."""

    def make(cls, items, boxes=False, dtype="float64"):
        array = numpy.asarray(items)
        known = _BOXES if boxes else _ITEMS
        if array.shape[1:] not in known:
            shapes = ", ".join(str(("n", *shape)).replace("'", "") for shape in known)
            raise ValueError(f"items: an array of shape {shapes} was wanted, not {array.shape}")
        return families[known[array.shape[1:]]][dtype](array)

    classes = {}
    for name, family in families.items():
        if name.startswith("RTree_"):
            classes.update({f"{name}_{dtype}": item for dtype, item in family._classes.items()})
    members = {"_classes": classes, "__doc__": make_rtree.doc, "__module__": "ormixgeometry"}
    return type("RTreeType", (Family,), {"__call__": make, "__getattr__": object.__getattribute__})("RTree", (), members)


make_rtree.doc = """An index of many items: which of them meet a box, lie near a point or are nearest.

Items are points, an array of shape (n, 2) or (n, 3); segments, (n, 2, 2) or (n, 2, 3); triangles, (n, 3, 3); or with
`boxes=True` boxes by their two corners, (n, 2, 2) or (n, 2, 3). `dtype` is float64 or float32. Queries take one place or
an array of places and answer indices of items.

>>> tree = RTree([[0, 0], [1, 0], [5, 5]])
>>> tree.query([(-1, -1), (2, 2)]).tolist()
[0, 1]
>>> tree.nearest([(0.9, 0), (4, 4)], k=1).tolist()
[[1], [2]]
"""
