"""Conan 2 recipe for the checkout that it lies in: conan create packaging/conan --build=missing"""

import pathlib
import re

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load


class Brumlin(ConanFile):
    name = "brumlin"
    description = "Writes SMT formulas as SMT-LIB text"
    license = "MIT"
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False]}
    default_options = {"shared": False, "gmp/*:enable_cxx": True}

    def _checkout(self):
        return pathlib.Path(self.recipe_folder).parent.parent

    def set_version(self):
        text = load(self, str(self._checkout() / "CMakeLists.txt"))
        self.version = re.search(r"^\s*VERSION (\d+\.\d+\.\d+)\s*$", text, re.MULTILINE).group(1)

    def export_sources(self):
        for pattern in ("CMakeLists.txt", "LICENSE", "README.md", "brum/*", "cmake/*", "packaging/debian/*"):
            copy(self, pattern, str(self._checkout()), self.export_sources_folder)

    def requirements(self):
        # The headers of the library include gmpxx.h.
        self.requires("gmp/[>=6.2]", transitive_headers=True, transitive_libs=True)

    def validate(self):
        check_min_cppstd(self, 20)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        for part in ("TOOLS", "TESTS", "EXAMPLES", "FUZZ", "BENCH"):
            toolchain.variables[f"BRUM_BUILD_{part}"] = False
        toolchain.variables["BRUM_WERROR"] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        copy(self, "LICENSE", self.source_folder, str(pathlib.Path(self.package_folder) / "licenses"))
        CMake(self).install()

    def package_info(self):
        self.cpp_info.set_property("cmake_file_name", "brum")
        self.cpp_info.set_property("cmake_target_name", "brum::brum")
        self.cpp_info.set_property("pkg_config_name", "brum")
        self.cpp_info.libs = ["brum"]
        self.cpp_info.requires = ["gmp::gmpxx", "gmp::libgmp"]
