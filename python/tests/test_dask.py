"""Chunks of Dask against the same in one piece, also in processes of a local cluster."""

import numpy as np
import pytest

import ormixgeometry as og

da = pytest.importorskip("dask.array")
dask = pytest.importorskip("dask")

import ormixgeometry.dask as ogd  # noqa: E402

RANDOM = np.random.default_rng(20261122)


def smooth_mask(shape, fraction):
    """A mask of blobs of all sizes, some across many chunks, with holes and thin diagonals."""
    noise = RANDOM.random(shape)
    for _ in range(2):
        noise = (noise + np.roll(noise, 1, 0) + np.roll(noise, 1, 1) + np.roll(noise, (1, 1), (0, 1))) / 4
    mask = noise < np.quantile(noise, fraction)
    np.fill_diagonal(mask, True)
    return mask


def check_like_one_image(mask, chunks, connectivity):
    whole = og.label(mask, connectivity=connectivity)
    regions = ogd.label(da.from_array(mask, chunks=chunks), connectivity=connectivity)
    assert len(regions) == len(whole)
    expected = og.region_properties(whole, connectivity=connectivity)
    found = regions.properties()
    assert list(found) == list(expected)
    for name, column in expected.items():
        assert column.tobytes() == np.ascontiguousarray(found[name], dtype=column.dtype).tobytes(), name
    labels = regions.labels().compute()
    for i, shape in enumerate(whole[:20]):
        assert ((labels == i + 1) == shape.row_intersections.to_mask(shape=mask.shape)).all()
    if whole:
        assert regions.pixels(len(whole)) == og.normalized(whole[-1].row_intersections)


@pytest.mark.parametrize("connectivity", [4, 8])
@pytest.mark.parametrize("fraction", [0.0, 0.02, 0.3, 0.5, 0.8, 1.0])
def test_regions_are_those_of_one_image(fraction, connectivity):
    with dask.config.set(scheduler="synchronous"):
        check_like_one_image(smooth_mask((61, 47), fraction), ((20, 1, 40), (7, 13, 27)), connectivity)
        check_like_one_image(smooth_mask((8, 9), fraction), (1, 1), connectivity)


def test_fits_are_those_in_one_piece():
    noise = RANDOM.normal(0, 0.01, (3000, 3))
    angle = RANDOM.uniform(0, 2, 3000)
    on_circle = 3 * np.stack([np.cos(angle), np.sin(angle)], axis=1) + noise[:, :2] + (1e6, -5)
    ball = RANDOM.normal(size=(3000, 3))
    on_sphere = 2 * ball / np.linalg.norm(ball, axis=1)[:, None] + noise + (4, 5, 1e5)
    flat = RANDOM.random((3000, 3)) * (5, 3, 0) + noise + (1, 2, 30)
    rotation = np.linalg.qr(RANDOM.normal(size=(3, 3)))[0]
    rotation *= np.linalg.det(rotation)
    moved = ball @ rotation.T + (1, 2, 3) + noise

    def chunked(points):
        return da.from_array(points, chunks=((1000, 1, len(points) - 1001), (1, points.shape[1] - 1)))

    with dask.config.set(scheduler="synchronous"):
        for fit, ours, points in (
            (ogd.fit_circle, og.fit_circle, on_circle),
            (ogd.fit_sphere, og.fit_sphere, on_sphere),
            (ogd.fit_line, og.fit_line, on_circle - on_circle.mean(axis=0) + (4, 2)),
            (ogd.fit_plan, og.fit_plan, flat),
        ):
            a, b = fit(chunked(points)), ours(points)
            for name in b.__match_args__:
                assert np.allclose(getattr(a, name), getattr(b, name), rtol=1e-11, atol=1e-11), (name, a, b)
        a = ogd.fit_rigid3d(chunked(ball), chunked(moved)).matrix
        assert np.allclose(a, og.fit_rigid3d(ball, moved).matrix, atol=1e-12)

        mixed = np.concatenate([on_circle, RANDOM.uniform(-5, 5, (5000, 2)) + (1e6, -5)])
        robust = ogd.fit_robustly("circle", chunked(RANDOM.permutation(mixed)), threshold=0.03)
        assert robust.nb_points == 8000 and 2900 < robust.nb_inliers < 3300
        assert robust.entity.radius == pytest.approx(3, abs=0.01)


def test_a_cluster_of_processes_answers_the_same():
    distributed = pytest.importorskip("distributed")
    mask = smooth_mask((300, 200), 0.5)
    cube = og.quick_hull(np.array([[x, y, z] for x in (0, 1) for y in (0, 1) for z in (0, 1)], dtype=float))
    vertices = np.concatenate([cube.vertices, cube.vertices + 5])
    two_cubes = (vertices, np.concatenate([cube.triangles, cube.triangles + len(cube.vertices)]))
    with distributed.LocalCluster(
        n_workers=2, threads_per_worker=1, dashboard_address=None, silence_logs=50
    ) as cluster, distributed.Client(cluster):
        check_like_one_image(mask, (64, 50), 8)
        table = ogd.measure_components(two_cubes)
    assert np.allclose(table["volume"], 1, rtol=1e-15) and table["area"].tolist() == [6, 6]


def test_bad_input_is_named():
    with pytest.raises(ValueError, match="two dimensions"):
        ogd.label(da.zeros((2, 2, 2)))
    with pytest.raises(ValueError, match="connectivity"):
        ogd.label(da.zeros((2, 2)), connectivity=6)
    with pytest.raises(og.Error, match="collinear"):
        ogd.fit_circle(da.from_array(np.stack([np.arange(9.0)] * 2, axis=1), chunks=(2, 2)))
    with pytest.raises(og.Error, match="finite"):
        ogd.fit_line(da.from_array(np.array([[0, 1], [np.nan, 2]])))
    with pytest.raises(ValueError, match="threshold"):
        ogd.fit_robustly("line", da.zeros((4, 2)), threshold=0)
