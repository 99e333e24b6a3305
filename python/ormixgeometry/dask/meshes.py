"""Meshes by their components: what is connected goes to one worker."""

import dask
import numpy as np

import ormixgeometry as og


def map_components(function, mesh, connectivity="eMC_Edges"):
    """Call `function(component)` for each component of a mesh, in parallel: the list of its answers.

    `connectivity` says what belongs together, as to `extract_components`; `function` is sent to the workers, so it has to be one that can be
    pickled.
    """
    components = og.extract_components(mesh, connectivity)
    return list(dask.compute(*[dask.delayed(function)(component) for component in components]))


def _measure(component):
    return len(component.triangles), og.area(component), og.volume(component)


def measure_components(mesh, connectivity="eMC_Edges"):
    """Number of triangles, area and volume of each component of a mesh: a dictionary of columns.

    The volume of an open component is that of the formula and means nothing.
    """
    rows = map_components(_measure, mesh, connectivity)
    names = ("nb_triangles", "area", "volume")
    return {name: np.array([row[i] for row in rows]) for i, name in enumerate(names)}
