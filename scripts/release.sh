#!/usr/bin/env bash
# Builds the release archive of the shipped program (the win32 preset) in a build folder of its own,
# build/release, made anew each time; checks it and lists what it holds.
# CORVANITE_JOBS sets the build's parallel jobs (default 2).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build/release

rm -rf "$build"
# The release needs the program only; the win32 preset builds its tests too.
cmake --preset win32 -B "$build" -DCORVANITE_TESTS=OFF >/dev/null
cmake --build "$build" -j "${CORVANITE_JOBS:-2}" --target package

archive=$(ls "$build"/CVHControlPanel-*-win32.zip)
python3 "$root/scripts/check-release.py" "$archive"
echo
unzip -l "$archive"
ls -l "$archive" "$archive.sha256"
cat "$archive.sha256"
