"""Regions of an image in chunks: in one piece, and on local clusters of one and two processes.

Usage: chunked_images.py [SIDE [CHUNK]]      (default: 8192 1024)
"""

import resource
import sys
import time

import dask.array
import distributed
import numpy as np

import ormixgeometry as og
import ormixgeometry.dask as ogd

OPTIONS = {"connectivity": 8}


def tile(block_info=None):
    """Blobs of about 20 pixels, the same for every run."""
    (y, _), (x, _) = block_info[None]["array-location"]
    shape = block_info[None]["chunk-shape"]
    rows, columns = np.mgrid[y : y + shape[0], x : x + shape[1]]
    waves = np.sin(rows / 7.3) * np.sin(columns / 6.1) + np.sin((rows + columns) / 11.7) * np.sin((rows - columns) / 13.9)
    return waves > 0.6


def image(side, chunk):
    return dask.array.map_blocks(tile, chunks=((chunk,) * (side // chunk),) * 2, dtype=bool)


def timed(name, function):
    begin = time.perf_counter()
    result = function()
    print(f"{name:32} {time.perf_counter() - begin:7.2f} s", flush=True)
    return result


def main():
    side, chunk = (int(word) for word in (sys.argv[1:] + ["8192", "1024"])[:2] if word)
    whole = image(side, chunk).compute(scheduler="synchronous")

    def in_one_piece():
        return og.region_properties(og.label(whole), **OPTIONS)

    expected = timed("one piece", in_one_piece)
    print(f"{len(expected['area'])} regions, peak {resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024:.0f} MB")
    for nb_workers in (1, 2):
        with distributed.LocalCluster(
            n_workers=nb_workers, threads_per_worker=1, dashboard_address=None, silence_logs=50
        ) as cluster, distributed.Client(cluster):
            chunks = image(side, chunk).persist()
            distributed.wait(chunks)
            regions = timed(f"{nb_workers} processes, labels", lambda: ogd.label(chunks))
            found = timed(f"{nb_workers} processes, properties", lambda: regions.properties(**OPTIONS))
        same = all(np.array_equal(found[name], column, equal_nan=column.dtype.kind == "f") for name, column in expected.items())
        print("the same numbers" if same else "OTHER NUMBERS")


if __name__ == "__main__":
    main()
