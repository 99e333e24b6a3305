"""Makes the wheel over the installed C++ libraries: python3 -m build --wheel --no-isolation python"""

import pathlib
import re
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

HERE = pathlib.Path(__file__).resolve().parent


def version():
    text = (HERE.parent / "CMakeLists.txt").read_text()
    return re.search(r"project\(ORMIXGeometry VERSION ([\d.]+)", text)[1]


class CMakeExtension(build_ext):
    """Lets CMake build the module and put the package together; the libraries are found as CMAKE_PREFIX_PATH says."""

    def build_extension(self, extension):
        build = pathlib.Path(self.build_temp).resolve()
        subprocess.check_call(
            ["cmake", "-S", HERE, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", f"-DPython_EXECUTABLE={sys.executable}"]
        )
        subprocess.check_call(["cmake", "--build", build])
        package = pathlib.Path(self.get_ext_fullpath(extension.name)).resolve().parent
        shutil.copytree(build / "python" / "ormixgeometry", package, dirs_exist_ok=True)


setup(
    version=version(),
    packages=["ormixgeometry", "ormixgeometry.dask"],
    package_data={"ormixgeometry": ["py.typed"]},
    ext_modules=[Extension("ormixgeometry._core", [])],
    cmdclass={"build_ext": CMakeExtension},
)
