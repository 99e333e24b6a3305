"""Connected regions of chunked images.

Each chunk is labelled by itself. Where pixels on both sides of a border touch, their regions are one; only the labels
along borders come together for that. A region inside one chunk is measured there. The runs of a region that crosses
borders, not its pixels, go to one worker, where they make the same set of pixels as in one image: so all numbers are the
same, bit for bit.
"""

from dataclasses import dataclass

import dask
import dask.array
import numpy as np

import ormixgeometry as og

_NO_REGION = -1


@dataclass
class _Tile:
    """The regions of one chunk, by their index there."""

    runs: np.ndarray  # (n, 3): y, begin, end in the whole image, region by region
    starts: np.ndarray  # where the runs of each region begin, and their number
    shape: tuple
    origin: tuple  # row and column of the first pixel

    def __len__(self):
        return len(self.starts) - 1

    def runs_of(self, region):
        return self.runs[self.starts[region] : self.starts[region + 1]]

    def paint(self, values, dtype):
        """An image of the chunk in which each region has its value, the background 0."""
        height, width = self.shape
        steps = np.zeros((height, width + 1), dtype=np.int64)
        rows = self.runs[:, 0] - self.origin[0]
        value = np.repeat(values, np.diff(self.starts))
        np.add.at(steps, (rows, self.runs[:, 1] - self.origin[1]), value)
        np.subtract.at(steps, (rows, self.runs[:, 2] - self.origin[1]), value)
        return np.cumsum(steps[:, :-1], axis=1).astype(dtype)


@dataclass
class _Border:
    """What others must know of a tile: its regions along its sides, and their first pixels."""

    first_pixels: np.ndarray  # (regions, 2): y, x
    top: np.ndarray
    bottom: np.ndarray
    left: np.ndarray
    right: np.ndarray


def _label_tile(block, row, column, connectivity):
    block = np.asarray(block)
    pieces = [shape.row_intersections.runs for shape in og.label(block, connectivity)]
    starts = np.cumsum([0] + [len(piece) for piece in pieces])
    runs = np.concatenate(pieces) if pieces else np.zeros((0, 3), dtype=np.int64)
    return _Tile(runs + (row, column, column), starts, block.shape, (row, column))


def _border_of(tile):
    image = tile.paint(np.arange(1, len(tile) + 1), np.int64) + _NO_REGION
    first = tile.runs[tile.starts[:-1], :2] if len(tile) else np.zeros((0, 2), dtype=np.int64)
    return _Border(first, image[0].copy(), image[-1].copy(), image[:, 0].copy(), image[:, -1].copy())


def _touching(before, after, connectivity):
    """The pairs of regions along both sides of one border of the image, from end to end."""
    pairs = [(before, after)]
    if connectivity == 8:
        pairs += [(before[1:], after[:-1]), (before[:-1], after[1:])]
    joined = [np.stack([a, b], axis=1)[(a != _NO_REGION) & (b != _NO_REGION)] for a, b in pairs]
    return np.unique(np.concatenate(joined), axis=0)


def _representatives(nb_regions, pairs):
    """The least index of those that pairs join, for each index."""
    parent = np.arange(nb_regions)

    def find(region):
        while parent[region] != region:
            parent[region] = parent[parent[region]]
            region = parent[region]
        return region

    for first, second in pairs:
        first, second = find(first), find(second)
        parent[max(first, second)] = min(first, second)
    return np.array([find(region) for region in range(nb_regions)], dtype=np.int64)


def _join(borders, connectivity):
    """The label of every region of every tile, and the number of labels.

    Labels ascend from 1 in the order of the first pixels of the whole regions, as in one image.
    """
    rows, columns = len(borders), len(borders[0])
    sizes = [[len(border.first_pixels) for border in line] for line in borders]
    offsets = np.concatenate([[0], np.cumsum(np.ravel(sizes))])
    offset = {(i, j): offsets[i * columns + j] for i in range(rows) for j in range(columns)}

    def side(tiles, name):
        parts = [(getattr(borders[i][j], name), offset[i, j]) for i, j in tiles]
        return np.concatenate([np.where(part == _NO_REGION, part, part + start) for part, start in parts])

    pairs = [np.zeros((0, 2), dtype=np.int64)]
    for i in range(rows - 1):
        above, below = [(i, j) for j in range(columns)], [(i + 1, j) for j in range(columns)]
        pairs.append(_touching(side(above, "bottom"), side(below, "top"), connectivity))
    for j in range(columns - 1):
        before, after = [(i, j) for i in range(rows)], [(i, j + 1) for i in range(rows)]
        pairs.append(_touching(side(before, "right"), side(after, "left"), connectivity))

    whole = _representatives(offsets[-1], np.concatenate(pairs))
    firsts = np.concatenate([border.first_pixels for line in borders for border in line])
    keys = firsts[:, 0] * (firsts[:, 1].max(initial=0) + 1) + firsts[:, 1]
    least = np.full(offsets[-1], np.iinfo(np.int64).max)
    np.minimum.at(least, whole, keys)
    roots = np.flatnonzero(whole == np.arange(len(whole)))
    label_of = np.zeros(offsets[-1], dtype=np.int64)
    label_of[roots[np.argsort(least[roots], kind="stable")]] = np.arange(1, len(roots) + 1)
    labels = label_of[whole]
    return [[labels[offset[i, j] : offset[i, j] + sizes[i][j]] for j in range(columns)] for i in range(rows)], len(roots)


def _select(tile, regions):
    return [tile.runs_of(region) for region in regions]


def _measure(pieces, order, options):
    """The properties of regions, whose runs are those of several pieces; `order` has the label of each piece."""
    runs = {}
    for label_, piece in zip(order, [piece for part in pieces for piece in part]):
        runs.setdefault(int(label_), []).append(piece)
    labels = sorted(runs)
    if not labels:
        return None
    pixels = [og.normalized(og.RowIntersections(np.concatenate(runs[label_]))) for label_ in labels]
    table = og.region_properties(pixels, **options)
    table["label"] = np.array(labels, dtype=np.int64)
    return table


class Regions:
    """The connected regions of a chunked image, as `label` finds them; their labels are 1 to `len(regions)`.

    The regions of the chunks stay where they were found, with Dask; ask for several things of one object.
    """

    def __init__(self, chunks, tiles, labels, count, connectivity):
        self._chunks = chunks  # heights and widths
        self._tiles = tiles  # delayed _Tile, by row and column
        self._labels = labels  # the label of each region of a tile
        self._count = count
        self._connectivity = connectivity

    def __len__(self):
        return self._count

    def __repr__(self):
        return f"<{self._count} regions in {len(self._tiles)} x {len(self._tiles[0])} chunks>"

    def labels(self, dtype="int32"):
        """The image of labels, 0 outside, as an array of Dask with the chunks of the image."""
        blocks = []
        for tiles, labels, heights in zip(self._tiles, self._labels, self._chunks[0]):
            blocks.append([])
            for tile, values, width in zip(tiles, labels, self._chunks[1]):
                image = dask.delayed(_Tile.paint)(tile, values, dtype)
                blocks[-1].append(dask.array.from_delayed(image, (heights, width), dtype))
        return dask.array.block(blocks)

    def _owners(self):
        """For each tile the regions that it measures: those of which it has the first part."""
        where = {}
        for i, line in enumerate(self._labels):
            for j, labels in enumerate(line):
                for region, label_ in enumerate(labels):
                    where.setdefault(int(label_), []).append((i, j, region))
        owners = {}
        for label_, places in where.items():
            owners.setdefault(places[0][:2], []).append((label_, places))
        return owners

    def properties(self, **options):
        """What `region_properties` of the package measures, of all regions: a dictionary of columns, by label.

        Options are those of that function.
        """
        options.setdefault("connectivity", self._connectivity)
        tasks = []
        for owned in self._owners().values():
            wanted = {}
            for label_, places in owned:
                for i, j, region in places:
                    wanted.setdefault((i, j), []).append((region, label_))
            pieces = [
                dask.delayed(_select)(self._tiles[i][j], [region for region, _ in regions])
                for (i, j), regions in wanted.items()
            ]
            order = [label_ for regions in wanted.values() for _, label_ in regions]
            tasks.append(dask.delayed(_measure)(pieces, order, options))
        tables = [table for table in dask.compute(*tasks) if table is not None]
        if not tables:
            return og.region_properties([], **options)
        order = np.argsort(np.concatenate([table["label"] for table in tables]))
        return {name: np.concatenate([table[name] for table in tables])[order] for name in tables[0]}

    def pixels(self, label_):
        """The pixels of one region, as `RowIntersections`."""
        pieces = [
            dask.delayed(_select)(self._tiles[i][j], np.flatnonzero(labels == label_).tolist())
            for i, line in enumerate(self._labels)
            for j, labels in enumerate(line)
            if (labels == label_).any()
        ]
        if not pieces:
            raise IndexError(f"there is no region {label_}, labels are 1 to {self._count}")
        runs = [piece for part in dask.compute(*pieces) for piece in part]
        return og.normalized(og.RowIntersections(np.concatenate(runs)))


def label(image, connectivity=8):
    """The connected regions of a chunked image, an array of Dask indexed [y, x]: `Regions`.

    What is not 0 is inside. `connectivity` is 8 or 4. Chunks are labelled once, in parallel, and what is found is kept
    by Dask: its size is that of the runs of pixels, 24 bytes each.

    >>> import dask.array, numpy as np
    >>> image = dask.array.from_array(np.eye(6, dtype=bool), chunks=(2, 3))
    >>> regions = label(image)
    >>> len(regions), int(regions.properties()["area"][0])
    (1, 6)
    """
    if connectivity not in (4, 8):
        raise ValueError(f"connectivity: 4 or 8 was wanted, not {connectivity!r}")
    if image.ndim != 2:
        raise ValueError(f"image: an array of two dimensions was wanted, not of {image.ndim}")
    heights, widths = image.chunks
    if any(np.isnan(size) for size in (*heights, *widths)):
        raise ValueError("image: the sizes of its chunks must be known; see its compute_chunk_sizes()")
    rows, columns = np.cumsum((0, *heights)), np.cumsum((0, *widths))
    blocks = image.to_delayed()
    tiles = [
        [dask.delayed(_label_tile)(block, int(rows[i]), int(columns[j]), connectivity) for j, block in enumerate(line)]
        for i, line in enumerate(blocks)
    ]
    tiles = [list(line) for line in dask.persist(*tiles)]
    borders = dask.compute([[dask.delayed(_border_of)(tile) for tile in line] for line in tiles])[0]
    labels, count = _join(borders, connectivity)
    return Regions((heights, widths), tiles, labels, count, connectivity)
