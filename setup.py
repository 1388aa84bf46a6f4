# SPDX-License-Identifier: MIT
"""Builds the Python module for pip: CMake compiles what is native, for the Python that runs this."""

import pathlib
import re
import shutil
import subprocess
import sys
import sysconfig

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = pathlib.Path(__file__).resolve().parent


class BuildWithCMake(build_ext):
    def build_extension(self, ext):
        build = ROOT / "build" / "python"
        subprocess.run(
            [
                "cmake", "-S", ROOT, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                "-DCMAKE_POSITION_INDEPENDENT_CODE=ON", "-DREKA_BUILD_PYTHON=ON", "-DREKA_BUILD_TESTS=OFF",
                f"-DPython3_EXECUTABLE={sys.executable}",
            ],
            check=True,
        )  # fmt: skip
        subprocess.run(["cmake", "--build", build, "--target", "reka_python", "reka_data"], check=True)
        made = pathlib.Path(self.get_ext_fullpath(ext.name))
        (made.parent / "data").mkdir(parents=True, exist_ok=True)
        shutil.copy(build / "python" / "reka" / f"_native{sysconfig.get_config_var('EXT_SUFFIX')}", made)
        shutil.copy(build / "bin" / "data" / "REKAConfig.dat", made.parent / "data")


setup(
    version=re.search(r"project\(REKA VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text())[1],
    packages=["reka"],
    package_dir={"": "python"},
    package_data={"reka": ["py.typed", "*.pyi"]},
    ext_modules=[Extension("reka._native", [])],
    cmdclass={"build_ext": BuildWithCMake},
)
