"""The tree's C++ sources, for the checks that read them all.

The sources are found by walking the tree, not by asking git, so that a tree unpacked from an
archive is checked the same way; build trees (the build/ folder, or any folder that holds a
CMakeCache.txt) and hidden folders are skipped.
"""
import os
import pathlib

SUFFIXES = (".cpp", ".h")


def cpp_sources(root: pathlib.Path) -> list[str]:
    """The C++ sources below root, as paths relative to it with "/", in a stable order."""
    found = []
    for folder, subfolders, files in os.walk(root):
        here = pathlib.Path(folder)
        subfolders[:] = sorted(name for name in subfolders
                               if not name.startswith(".")
                               and not (here == root and name == "build")
                               and not (here / name / "CMakeCache.txt").exists())
        found += [(here / name).relative_to(root).as_posix()
                  for name in sorted(files) if name.endswith(SUFFIXES)]
    return found
