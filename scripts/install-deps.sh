#!/usr/bin/env bash
# Installs the Debian packages that building, testing (clang with libFuzzer for the fuzz targets) and
# the demo need. Does nothing when all are there; otherwise runs apt-get (as root, or through sudo)
# after one package index update.
set -euo pipefail

packages=(
    cmake make g++ googletest libbenchmark-dev nlohmann-json3-dev zlib1g-dev
    g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix
    g++-mingw-w64-i686-posix gcc-mingw-w64-i686-posix
    binutils-mingw-w64-x86-64 binutils-mingw-w64-i686 libz-mingw-w64-dev
    wine64 xvfb xauth xdotool imagemagick python3 python3-jsonschema unzip clang-format ccache
    clang libclang-rt-14-dev
)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
as_root=()
if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
