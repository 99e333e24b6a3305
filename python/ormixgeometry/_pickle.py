"""Pickling through archives. Pickle wants a function that it can find by name, which functions of _core are not."""

from . import _core


def read(archive):
    return _core.from_bytes(archive)


def reduce(entity):
    return read, (entity.to_bytes(),)


_core.Object.__reduce__ = reduce
