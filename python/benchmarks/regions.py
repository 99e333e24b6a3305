"""Labels and region properties beside scikit-image: `taskset -c 1 python3 regions.py`, with python3-skimage.

The image has nearly 10⁴ ellipses in 4059 × 4059 pixels.
"""

import numpy as np
from timing import least, report

import ormixgeometry as og


def blobs(side=4096, cell=41):
    """A mask of (side // cell)² ellipses of random radii."""
    random = np.random.default_rng(20261122)
    y, x = np.indices((cell, cell)) - cell // 2
    rows = []
    for _ in range(side // cell):
        radii = random.uniform(4, cell / 2 - 1, (side // cell, 2))
        rows.append(np.hstack([(x / a) ** 2 + (y / b) ** 2 <= 1 for a, b in radii]))
    return np.vstack(rows)


def main():
    mask = blobs()
    rows = []
    try:
        from skimage import measure
    except ImportError:
        measure = None

    def compare(what, ours, theirs, repeats=5):
        mine, result = least(ours, repeats)
        other, expected = least(theirs, 3) if measure else (None, None)
        rows.append((what, mine, "scikit-image", other))
        return result, expected

    shapes, _ = compare("label to shapes with polygons, theirs to an image of labels", lambda: og.label(mask), lambda: measure.label(mask))
    compare("label to sets of pixels, theirs to an image of labels", lambda: og.connected_components(mask), lambda: measure.label(mask))
    labels = og.to_labels(shapes, mask.shape)
    rows.append(("shapes to an image of labels", least(lambda: og.to_labels(shapes, mask.shape))[0], "", None))
    simple = ["area", "centroid", "bbox"]
    ours, theirs = compare("area, centroid, box of an image of labels", lambda: og.region_properties(labels, properties=simple),
                           lambda: measure.regionprops_table(labels, properties=["label", *simple]))  # fmt: skip
    if theirs is not None:
        assert np.array_equal(ours["area"], theirs["area"]) and np.allclose(ours["centroid_x"] - 0.5, theirs["centroid-1"])
    more = ["perimeter", "equivalent_ellipse", "orientation", "eccentricity", "solidity", "greatest_feret", "hu_moment"]
    peers = ["perimeter", "axis_major_length", "axis_minor_length", "orientation", "eccentricity", "solidity", "feret_diameter_max", "moments_hu"]  # fmt: skip
    compare("perimeter, ellipse, solidity, Feret diameter, Hu moments", lambda: og.region_properties(labels, properties=more),
            lambda: measure.regionprops_table(labels, properties=peers), repeats=3)  # fmt: skip
    seconds, table = least(lambda: og.region_properties(labels), 3)
    rows.append((f"all {len(table)} columns", seconds, "", None))
    print(f"{len(shapes)} regions in {mask.shape} pixels")
    report(rows)


if __name__ == "__main__":
    main()
