"""Typed planar and spatial geometry for image analysis and metrology.

Entities, measures, transforms and estimators of the C++ library ORMIXGeometry, with arrays of numpy.

>>> import ormixgeometry as og
>>> circle = og.Circle2d(center=(1, 2), radius=3)
>>> circle.copy() == circle
True
"""

from . import _core, _pickle, _regions  # noqa: F401
from ._core import *  # noqa: F401,F403
from ._core import Error
from ._family import make_families
from ._rtree import make_rtree
from ._view import View, view  # noqa: F401

_families = make_families(_core)
globals().update(_families)
RTree = make_rtree(_families)

__version__ = _core.__version__
__all__ = sorted(name for name in globals() if not name.startswith("_") and not name.startswith("make_"))
