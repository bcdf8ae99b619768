#!/usr/bin/env python3
"""Runs the layout checker on each broken copy of the layout file: each must fail (exit 1) and name
the JSON path that layout/check/broken/expected.json gives for it.

usage: check-layout-broken.py <cvh-layout-check> <folder of broken copies>
"""
import json
import pathlib
import subprocess
import sys


def main() -> int:
    tool, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    expected = json.loads((folder / "expected.json").read_text(encoding="utf-8"))
    failed = False
    for name, facts in expected.items():
        run = subprocess.run([tool, str(folder / name)], capture_output=True, text=True)
        wanted = f": {facts['path']}: "
        if run.returncode != 1 or wanted not in run.stdout:
            failed = True
            print(f"{name}: exit {run.returncode}, expected 1 and {facts['path']!r}:\n{run.stdout}")
    print(f"checked {len(expected)} broken copies: {'FAILED' if failed else 'each problem found'}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
