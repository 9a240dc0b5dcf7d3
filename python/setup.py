"""Builds the module: what its tables and types are is written from the description of the interface.

`pip install .` in this folder, of a whole copy of the source. A C++ compiler makes the program that writes; a build that has
it already names it in TVX_WRITE_INTERFACE.
"""

import os
import re
import shlex
import subprocess
import tempfile
from pathlib import Path

from setuptools import setup
from setuptools.command.build_py import build_py

HERE = Path(__file__).resolve().parent
SOURCE = Path(os.environ.get("TVX_SOURCE", HERE.parent))
VERSION = re.search(r"project\(tvxHTML VERSION ([0-9.]+)", (SOURCE / "CMakeLists.txt").read_text())[1]


class Build(build_py):
    def run(self):
        super().run()
        module = Path(self.build_lib) / "tvxhtml"
        with tempfile.TemporaryDirectory() as folder:
            self.write_interface(Path(folder), module)
        (module / "_version.py").write_text(f'__version__ = "{VERSION}"\n')

    @staticmethod
    def write_interface(folder, module):
        writer = os.environ.get("TVX_WRITE_INTERFACE")
        if not writer:
            writer = folder / "write_interface"
            compiler = shlex.split(os.environ.get("CXX", "c++"))
            units = sorted(map(str, (SOURCE / "cmake/interface").glob("*.cpp")))
            subprocess.run([*compiler, "-std=c++20", *units, "-o", str(writer)], check=True)
        for name in ("pieces", "headers"):
            (folder / name).mkdir()
        subprocess.run([str(writer), str(SOURCE / "src/library/tvxhtml.interface"), str(SOURCE / "include/tvx"),
                        str(folder / "pieces"), str(folder / "headers"), str(HERE / "tvxhtml"), str(module)], check=True)


setup(
    name="tvxhtml",
    version=VERSION,
    description="Visual HTML editor",
    license="MIT",
    python_requires=">=3.9",
    packages=["tvxhtml"],
    package_data={"tvxhtml": ["py.typed"]},
    cmdclass={"build_py": Build},
)
