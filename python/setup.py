"""Builds the extension by CMake; the version is that of the library."""

import pathlib
import re
import subprocess
import sys

import setuptools
from setuptools.command.build_ext import build_ext

HERE = pathlib.Path(__file__).resolve().parent


def library_version() -> str:
    """The version that the library's build states."""
    text = (HERE.parent / "CMakeLists.txt").read_text(encoding="utf-8")
    found = re.search(r"^\s*VERSION (\d+\.\d+\.\d+)\s*$", text, re.MULTILINE)
    if not found:
        raise SystemExit("setup.py: CMakeLists.txt of the library states no version")
    return found.group(1)


class CMakeBuild(build_ext):
    """Has CMake build the extension where setuptools wants it. The environment variable
    CMAKE_PREFIX_PATH says where an installed library is to be found, if not in the system."""

    def build_extension(self, ext: setuptools.Extension) -> None:
        target = pathlib.Path(self.get_ext_fullpath(ext.name)).resolve()
        build = pathlib.Path(self.build_temp).resolve()
        subprocess.run(
            [
                "cmake",
                "-S", str(HERE),
                "-B", str(build),
                "-G", "Ninja",
                f"-DCMAKE_LIBRARY_OUTPUT_DIRECTORY={target.parent}",
                "-DCMAKE_BUILD_TYPE=Release",
                # The one that builds the wheel, not the first that CMake finds.
                f"-DPYTHON_EXECUTABLE={sys.executable}",
            ],
            check=True,
        )  # fmt: skip
        subprocess.run(["cmake", "--build", str(build), "--target", "_brum"], check=True)


setuptools.setup(
    version=library_version(),
    ext_modules=[setuptools.Extension("brum._brum", sources=[])],
    cmdclass={"build_ext": CMakeBuild},
)
