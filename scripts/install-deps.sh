#!/usr/bin/env bash
# Installs the Debian packages that building, testing (clang with libFuzzer for the fuzz targets) and
# the demo need, and generates the two locales under which the Wine tests run the program: a Western
# system (en_US.UTF-8, ANSI code page 1252) and a Russian one (ru_RU.UTF-8, code page 1251). Does
# nothing when all are there; otherwise runs apt-get (as root, or through sudo) after one package
# index update, and localedef for each missing locale.
#
#   bash scripts/install-deps.sh           what building, testing and the demo need
#   bash scripts/install-deps.sh --wine32  also what scripts/build-wine32.sh needs to build Wine
set -euo pipefail

packages=(
    cmake make g++ googletest libbenchmark-dev nlohmann-json3-dev zlib1g-dev
    g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix
    g++-mingw-w64-i686-posix gcc-mingw-w64-i686-posix
    binutils-mingw-w64-x86-64 binutils-mingw-w64-i686 libz-mingw-w64-dev
    wine64 xvfb xauth xdotool imagemagick python3 python3-jsonschema unzip clang-format ccache
    clang libclang-rt-14-dev locales
)
# Wine's WoW64 build: its generators, its Unix side (X11, fonts, TLS) and the tools that fetch and
# unpack Debian 13's source in a private apt state. khronos-api is installed, not only unpacked:
# Wine's OpenGL generator reads gl.xml at its fixed path.
wine32_packages=(
    build-essential dpkg-dev patch autoconf flex bison gettext pkg-config perl ccache quilt
    gcc-mingw-w64-i686-posix gcc-mingw-w64-x86-64-posix imagemagick sharutils lzma unzip
    libx11-dev libxext-dev libxrender-dev libxrandr-dev libxi-dev libxcursor-dev
    libxcomposite-dev libxinerama-dev libxfixes-dev libxkbfile-dev
    libfreetype-dev libfontconfig-dev libgnutls28-dev
    libxml-libxml-perl khronos-api fontforge-nox icoutils librsvg2-bin libgettextpo-dev
    debian-archive-keyring
)
case "${1:-}" in
"") ;;
--wine32) packages+=("${wine32_packages[@]}") ;;
*)
    echo "usage: bash scripts/install-deps.sh [--wine32]" >&2
    exit 2
    ;;
esac
locales=(en_US ru_RU)

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
fi

# The locales once their sources (the locales package) are there; a locale that `locale -a`
# already lists is left alone.
generate_locales() {
    local name available
    available=$(locale -a 2>/dev/null || true)
    for name in "${locales[@]}"; do
        if ! grep -qx "$name.utf8" <<<"$available"; then
            "${as_root[@]}" localedef -i "$name" -c -f UTF-8 -A /usr/share/locale/locale.alias \
                "$name.UTF-8"
        fi
    done
}

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
generate_locales
