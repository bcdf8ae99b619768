#!/usr/bin/env python3
"""Runs the layout checker on each broken layout of layout/check/broken-cases.json, the shipped
file changed by the case's JSON Patch: each must fail (exit 1) and name the case's expectedPath.

usage: check-layout-broken.py <cvh-layout-check> <layout folder>
"""
import pathlib
import subprocess
import sys
import tempfile

# The shared module is read from the source tree, which a test run leaves as it found it: no
# __pycache__ beside the scripts.
sys.dont_write_bytecode = True
from layout_cases import PatchError, broken_cases  # noqa: E402


def main() -> int:
    tool, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    try:
        cases = broken_cases(folder)
    except PatchError as failure:
        print(f"broken-cases.json: {failure}")
        return 1
    failed = False
    with tempfile.TemporaryDirectory(prefix="broken-layouts-") as scratch:
        for case in cases:
            # Named after the case, so that the checker's lines tell which one they are about.
            file = pathlib.Path(scratch) / f"{case['name']}.json"
            file.write_text(case["contents"], encoding="utf-8")
            run = subprocess.run([tool, str(file)], capture_output=True, text=True)
            wanted = f": {case['expectedPath']}: "
            if run.returncode != 1 or wanted not in run.stdout:
                failed = True
                print(f"{case['name']}: exit {run.returncode}, "
                      f"expected 1 and {case['expectedPath']!r}:\n{run.stdout}")
    print(f"checked {len(cases)} broken layouts: {'FAILED' if failed else 'each problem found'}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
