#!/usr/bin/env python3
"""Fails when a C++ source of the tree is not as clang-format leaves it (the tree's .clang-format).

The sources are those of tree_sources.cpp_sources.

usage: check-format.py <tree> [clang-format program]
"""
import pathlib
import subprocess
import sys

from tree_sources import cpp_sources

# Files per clang-format run: keeps the command line short on any system.
BATCH = 100


def main() -> int:
    root = pathlib.Path(sys.argv[1]).resolve()
    program = sys.argv[2] if len(sys.argv) > 2 else "clang-format"
    files = cpp_sources(root)
    if not files:
        print(f"no C++ sources under {root}")
        return 1
    try:
        version = subprocess.run([program, "--version"], capture_output=True,
                                 text=True).stdout.strip()
    except FileNotFoundError:
        print(f"{program}: not found; scripts/install-deps.sh installs clang-format")
        return 1
    off = []
    for start in range(0, len(files), BATCH):
        batch = files[start:start + BATCH]
        run = subprocess.run([program, "--dry-run", "-Werror", *batch], cwd=root,
                             capture_output=True, text=True)
        if run.returncode != 0:
            print(run.stderr, end="")
            # Each complaint starts "file:line:column: error: ..."
            off += sorted({line.split(":", 1)[0] for line in run.stderr.splitlines()
                           if ": error: " in line and line.split(":", 1)[0] in batch})
            if not run.stderr.strip():
                off += batch
    if off:
        print(f"{len(off)} of {len(files)} sources are not formatted ({version}); run:")
        print("  clang-format -i " + " ".join(off))
        return 1
    print(f"{len(files)} sources formatted as .clang-format says ({version})")
    return 0


if __name__ == "__main__":
    sys.exit(main())
