"""Images, points and meshes that one machine cannot hold, in chunks of Dask.

Needs Dask (Debian: python3-dask, and python3-distributed for a cluster), which the package itself does not.

- `label(image)` finds the connected regions of a chunked image, joined across the borders of its chunks, and measures
  them exactly as if it were one image;
- `fit_line`, `fit_plan`, `fit_circle`, `fit_sphere`, `fit_rigid2d` and `fit_rigid3d` fit chunked points by factors that
  merge as sums do, and `fit_robustly` finds inliers by consensus;
- `measure_components` measures a mesh by its components.

Everything runs where Dask runs: in threads, in processes of this machine or on a cluster, see docs/cluster.md.
"""

from .fits import RobustFit, fit_circle, fit_line, fit_plan, fit_rigid2d, fit_rigid3d, fit_robustly, fit_sphere
from .meshes import map_components, measure_components
from .regions import Regions, label

__all__ = [
    "Regions",
    "RobustFit",
    "fit_circle",
    "fit_line",
    "fit_plan",
    "fit_rigid2d",
    "fit_rigid3d",
    "fit_robustly",
    "fit_sphere",
    "label",
    "map_components",
    "measure_components",
]
