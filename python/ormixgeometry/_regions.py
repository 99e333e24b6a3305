"""What the classes of regions have from Python: generators."""

from . import _core


def _generator(add, doc):
    def shapes(self, items):
        for item in items:
            add(self, item)
            yield from self.take_finished()
        yield from self.finish()

    shapes.__doc__ = doc
    return shapes


_core.Shape2dConstructor.shapes = _generator(
    _core.Shape2dConstructor.add_row,
    "Yield the regions of all rows of an iterable, as `add_row` takes them, each as soon as it is finished.",
)
_core.Shape3dConstructor.shapes = _generator(
    _core.Shape3dConstructor.add_slice,
    "Yield the regions of all slices of an iterable, as `add_slice` takes them, each as soon as it is finished.",
)
