"""The type stub: it has every public name, and checkers accept and refuse programs by it."""

import ast
import os
import pathlib
import subprocess
import sys

import pytest

import ormixgeometry as og

SCRIPT = pathlib.Path(__file__).parents[1] / "stubs" / "make_stubs.py"
PROGRAM = '''
import numpy as np
import numpy.typing as npt
import ormixgeometry as og

circle = og.Circle2d(center=(1, 2), radius=3)
small: og.Circle2d[np.float32] = og.Circle2d((1, 2), 3, dtype="float32")
polygon = og.Polygon2d([[0, 0], [4, 0], [4, 3], [0, 0]], type="eP2DT_Exterior")
points: npt.NDArray[np.float64] = polygon.points
total: float = circle.area + og.area(circle) + circle.center[0] + small.radius
areas: npt.NDArray[np.float64] = og.area([circle, polygon], hole_policy="eHMP_IgnoreHoles")
image = og.RigidTransform2d(theta=0.5, tx=1) @ points
turned: og.RotationTransform2d = og.RotationTransform2d(0.5).inverse()
fitted: og.Circle2d[np.float64] = og.fit_circle(points)
found = og.robust_estimation("Circle2dEstimator", points, seed=5, progress=lambda fraction: fraction < 0.5)
mask: npt.NDArray[np.bool_] = found.inliers
circle.copy()
try:
    og.simplify(polygon, tolerance=-1).copy()
except og.Error as error:
    print(error.class_name + error.message, image.sum(), mask.sum(), total, areas.sum(), turned, fitted)

og.area(5)  # type: ignore[call-overload]
og.area(circle, hole_policy="eHMP_None")  # type: ignore[call-overload]
og.Circle2d((1, 2), 3, dtype="float16")  # type: ignore[call-overload]
og.RotationTransform2d("a")  # type: ignore[arg-type]
og.nothing  # type: ignore[attr-defined]
'''


@pytest.fixture(scope="module")
def stub(tmp_path_factory):
    folder = tmp_path_factory.mktemp("stub") / "ormixgeometry"
    folder.mkdir()
    path = folder / "__init__.pyi"
    subprocess.run([sys.executable, str(SCRIPT), str(path)], check=True)
    (folder / "py.typed").touch()
    return path


def test_the_stub_has_every_public_name(stub):
    tree = ast.parse(stub.read_text())
    defined = {}
    for node in tree.body:
        if isinstance(node, (ast.ClassDef, ast.FunctionDef)):
            defined[node.name] = {getattr(item, "name", "") or ast.unparse(item).split(":")[0].split(" ")[0] for item in getattr(node, "body", [])}
        elif isinstance(node, (ast.Assign, ast.AnnAssign)):
            defined[ast.unparse(node.targets[0] if isinstance(node, ast.Assign) else node.target)] = None  # an alias
    assert not set(og.__all__) - set(defined)
    for name in og.__all__:
        cls = getattr(og, name)
        cls = getattr(cls, "_classes", {}).get("float64", cls)
        if isinstance(cls, type) and issubclass(cls, og.Object) and defined[name] is not None:
            assert not {member for member in vars(cls) if not member.startswith("_")} - defined[name], name


def test_a_checker_accepts_a_program_and_refuses_mistakes(stub, tmp_path):
    pytest.importorskip("mypy")
    program = tmp_path / "program.py"
    program.write_text(PROGRAM)
    environment = {**os.environ, "MYPYPATH": str(stub.parents[1])}
    command = [sys.executable, "-m", "mypy", "--strict", "--cache-dir", str(tmp_path / "cache"), str(program)]
    result = subprocess.run(command, env=environment, capture_output=True, text=True)
    assert result.returncode == 0, result.stdout + result.stderr
