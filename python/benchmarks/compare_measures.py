"""Areas and fits beside Shapely and scikit-image: the time of this process, the least of several runs.

Run it alone on one core: `taskset -c 1 python3 compare_measures.py`, with the package in the path of Python.
"""

import time

import numpy as np

import ormixgeometry as og

RANDOM = np.random.default_rng(1)


def least(call, count=7):
    times = []
    for _ in range(count):
        begin = time.process_time()
        call()
        times.append(time.process_time() - begin)
    return min(times)


def compare(title, ours, other, name, unit=1.0, symbol="s"):
    a, b = least(ours), least(other)
    print(f"{title:58} {a * unit:10.3f} {symbol}, {name} {b * unit:10.3f} {symbol}: {b / a:8.1f} times")


def measures():
    import shapely
    import shapely.geometry

    rings = RANDOM.random((100_000, 9, 2))
    rings[:, -1] = rings[:, 0]
    polygons = [og.Polygon2d(ring) for ring in rings]
    others = [shapely.geometry.Polygon(ring) for ring in rings]
    name = f"Shapely {shapely.__version__}"
    np.testing.assert_allclose(abs(og.area(polygons)), [p.area for p in others], rtol=1e-9)
    per = 1e9 / len(rings)
    compare("area of a list of 10^5 polygons, each", lambda: og.area(polygons), lambda: [p.area for p in others], name, per, "ns")
    compare("area of one polygon, 10^5 times, each", lambda: [p.area for p in polygons], lambda: [p.area for p in others], name, per, "ns")
    compare("perimeter of a list, each", lambda: og.perimeter(polygons), lambda: [p.length for p in others], name, per, "ns")
    compare("convex hull of a list, each", lambda: og.convex_hull(polygons), lambda: [p.convex_hull for p in others], name, per, "ns")
    translation = og.TranslationTransform2d(1, 2)
    import shapely.affinity

    some, few = polygons[:2000], others[:2000]
    per = 1e9 / len(some)
    compare("translation of polygons, each", lambda: translation @ some, lambda: [shapely.affinity.translate(p, 1, 2) for p in few], name, per, "ns")
    compare("polygons from arrays, each", lambda: [og.Polygon2d(r) for r in rings[:2000]], lambda: [shapely.geometry.Polygon(r) for r in rings[:2000]], name, per, "ns")


def fits():
    import skimage.measure
    import skimage.transform

    name = f"scikit-image {skimage.__version__}"
    angles = RANDOM.random(10_000) * 6.3
    points = np.c_[3 + 2 * np.cos(angles), 4 + 2 * np.sin(angles)] + RANDOM.normal(size=(10_000, 2)) * 0.01
    compare("circle of 10^4 points", lambda: og.fit_circle(points), lambda: skimage.measure.CircleModel().estimate(points), name, 1e6, "us")
    compare("ellipse of 10^4 points", lambda: og.fit_ellipse(points), lambda: skimage.measure.EllipseModel().estimate(points), name, 1e6, "us")
    spoilt = points[:1000].copy()
    spoilt[:400] += RANDOM.normal(size=(400, 2)) * 2

    def theirs():
        skimage.measure.ransac(spoilt, skimage.measure.CircleModel, min_samples=3, residual_threshold=0.03, max_trials=200)

    def ours():
        og.robust_estimation("Circle2dEstimator", spoilt, method="eRM_Ransac", threshold=0.03, nb_max_iterations=200, confidence=1 - 1e-12)

    compare("circle of 1000 points, 40 % outliers, up to 200 draws", ours, theirs, name, 1e3, "ms")
    sources = RANDOM.random((10_000, 2))
    targets = og.SimilarityTransform2d(2, 0.3, 4, 5) @ sources
    compare("similarity of 10^4 pairs", lambda: og.fit_similarity2d(sources, targets), lambda: skimage.transform.estimate_transform("similarity", sources, targets), name, 1e6, "us")
    # scikit-image needs a matrix of the square of the number of pairs.
    few, images = sources[:200], targets[:200]
    compare("projective map of 200 pairs", lambda: og.fit_homography2d(few, images), lambda: skimage.transform.estimate_transform("projective", few, images), name, 1e6, "us")
    transform = og.RigidTransform2d(0.3, 4, 5)
    matrix = skimage.transform.EuclideanTransform(rotation=0.3, translation=(4, 5))
    many = RANDOM.random((1_000_000, 2))
    compare("rigid motion of an array of 10^6 points", lambda: transform @ many, lambda: matrix(many), name, 1e3, "ms")


if __name__ == "__main__":
    measures()
    fits()
