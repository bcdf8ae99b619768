#!/usr/bin/env bash
# Builds the Wine that runs the shipped 32-bit program: Wine 10.0 from Debian 13's source package,
# in WoW64 mode (the 32-bit Windows half cross-compiled by mingw-w64, so no i386 package of
# Debian 12 is needed), through ccache, into a cache outside the repository that every clone
# shares. Only the modules a plain Win32 program needs are built, and Wine runs from its build tree.
#
#   bash scripts/build-wine32.sh           build, unless this machine runs no 32-bit code
#   bash scripts/build-wine32.sh --force   build even then
#
# The first run takes an hour or more of two cores; start it first, in the background. A run
# with the cache present only checks it and takes seconds. CORVANITE_WINE32_CACHE moves the cache
# (default ~/.cache/corvanite/wine-wow64); JOBS sets make's parallel jobs (default 2).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$root/scripts/wine32.sh"

force=0
for argument in "$@"; do
    case "$argument" in
    --force) force=1 ;;
    *)
        echo "usage: bash scripts/build-wine32.sh [--force]" >&2
        exit 2
        ;;
    esac
done

version=10.0~repack-6
W=$CORVANITE_WINE32_CACHE/work
TREE=$CORVANITE_WINE32_TREE
DATA=$W/datatree
APT_STATE=$CORVANITE_WINE32_CACHE/apt
JOBS=${JOBS:-2}
export CCACHE_DIR=$CORVANITE_WINE32_CACHE/ccache

step() {
    local name=$1 start
    shift
    start=$(date +%s)
    echo "== $name"
    "$@"
    echo "== $name: $(($(date +%s) - start)) s"
}

# apt with its own sources, lists and cache: the machine's own apt state stays untouched.
apt_private() {
    apt-get -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$APT_STATE/sp" \
        -o Dir::State::lists="$APT_STATE/lists" -o Dir::Cache="$APT_STATE/cache" \
        -o Dir::State::status=/var/lib/dpkg/status "$@"
}

# The source package, and the data its generators need in versions newer than Debian 12's
# (Unicode 16, CLDR 46, Vulkan 1.4): unpacked from Debian 13's packages, never installed.
fetch() {
    mkdir -p "$APT_STATE/sp" "$APT_STATE/lists/partial" "$APT_STATE/cache/archives/partial" \
        "$W/src" "$W/data"
    cat >"$APT_STATE/sp/trixie.sources" <<'SOURCES'
Types: deb deb-src
URIs: http://deb.debian.org/debian
Suites: trixie
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
SOURCES
    apt_private update
    (cd "$W/src" && apt_private source --download-only "wine=$version")
    (cd "$W/data" && apt_private download unicode-idna unicode-cldr-core unicode-data libvulkan-dev khronos-api)
    rm -rf "$DATA"
    local package
    for package in "$W"/data/*.deb; do
        dpkg-deb -x "$package" "$DATA"
    done
}

unpack() {
    rm -rf "$TREE"
    (cd "$W" && dpkg-source -x "$W/src/wine_$version.dsc")
}

# Debian links the mingw zlib, which would need zlib1.dll at run time, and installs under its own
# paths: both patches are taken back for a Wine that runs from its build tree.
unpatch() {
    local patch_name
    for patch_name in system/zlib.patch debianization/install-paths.patch; do
        patch -d "$TREE" -R -p1 <"$TREE/debian/patches/$patch_name"
    done
}

# What the repack removed, made again as Debian's rules make it.
generate() {
    cd "$TREE"
    sed -i "s#/usr/share/doc/unicode-data/#$DATA/usr/share/doc/unicode-data/#; s#\"/usr/share/unicode#\"$DATA/usr/share/unicode#" tools/make_unicode
    nice -n 19 perl tools/make_unicode
    perl tools/make_requests
    perl tools/make_specfiles
    (cd dlls/dsound && perl make_fir)
    (cd dlls/opengl32 && perl make_opengl)
    (cd dlls/winevulkan && python3 make_vulkan -x "$DATA/usr/share/vulkan/registry/vk.xml" \
        -X "$DATA/usr/share/vulkan/registry/video.xml")
    sed -n '/override_dh_auto_configure/,/rm -rf libs\/zlib/p' debian/rules | grep -E '^\s+ln -sf' |
        sed 's/^\s*//' | bash -e
    autoreconf -f -i
}

configure_tree() {
    cd "$TREE"
    nice -n 19 ./configure --prefix="$CORVANITE_WINE32_CACHE/prefix" --enable-archs=i386,x86_64 \
        --disable-tests --disable-win16 --enable-maintainer-mode \
        --without-alsa --without-capi --without-cups --without-dbus --without-gphoto \
        --without-gssapi --without-gstreamer --without-krb5 --without-netapi --without-opencl \
        --without-opengl --without-osmesa --without-oss --without-pcap --without-pulse \
        --without-sane --without-sdl --without-udev --without-unwind --without-usb \
        --without-v4l2 --without-vulkan --without-wayland --without-ffmpeg \
        CC="ccache gcc" i386_CC="ccache i686-w64-mingw32-gcc" \
        x86_64_CC="ccache x86_64-w64-mingw32-gcc" CFLAGS="-O2 -Wno-error"
}

headers() { nice -n 19 make -C "$TREE/include" -j"$JOBS" -s; }

# The modules a plain Win32 program needs, for both architectures: the import closure of the core
# DLLs, the programs of a Wine session, the DLLs the panel and its tests use, the management service
# (WMI) that the system facts ask; loader, server, fonts. atl100 holds the registrar through which
# every builtin COM module registers its classes while wineboot makes a prefix: without it the
# prefix knows no class, and WMI's locator cannot be created. winedbg is the crash reporter, as in
# the 64-bit Wine: without it a 32-bit program that crashes just ends, and its crash goes unseen.
build_minimal() {
    local roots="ntdll wow64 wow64win wow64cpu kernel32 kernelbase user32 win32u gdi32 winex11.drv
        imm32 uxtheme msvcrt ucrtbase advapi32 sechost rpcrt4 combase ole32 oleaut32 shell32
        shlwapi comctl32 setupapi version ws2_32 iphlpapi dnsapi nsi nsiproxy.sys mountmgr.sys
        ntoskrnl.exe bcrypt crypt32 rsaenh secur32 dwmapi shcore usp10 tzres winspool.drv
        comdlg32 msimg32 wbemprox psapi conhost.exe start.exe cmd.exe reg.exe rundll32.exe regsvr32.exe
        services.exe svchost.exe plugplay.exe winedevice.exe rpcss.exe explorer.exe
        wineboot.exe winecfg.exe regedit.exe notepad.exe ping.exe wevtutil.exe tasklist.exe taskkill.exe
        winmgmt.exe wmiutils wmic.exe atl100"
    sed -n 's/^all: \(.*dlls\/acledit\/.*\)$/\1/p' "$TREE/Makefile" | tr ' ' '\n' | grep -v '^$' >"$W/all-targets.txt"
    python3 "$root/scripts/wine32-modules.py" "$TREE" "$roots" "$W/all-targets.txt" >"$W/min-targets.txt"
    (cd "$TREE" && nice -n 19 make -j"$JOBS" -s $(cat "$W/min-targets.txt"))
    touch "$CORVANITE_WINE32_DONE"
}

echo "== does this machine run 32-bit code?"
probe=0
machine_runs_32bit_code || probe=$?
if [ $probe -eq 2 ]; then
    exit 1
fi
if [ $probe -ne 0 ]; then
    if [ $force -eq 0 ]; then
        echo "No Wine can run a 32-bit program on this machine: nothing built (--force builds anyway)."
        exit 0
    fi
    echo "Building anyway (--force)."
fi

bash "$root/scripts/install-deps.sh" --wine32
mkdir -p "$W"
# Each step runs once: its result in the cache says it is done. Wine's own make decides the rest.
if [ ! -f "$W/src/wine_$version.dsc" ] || [ ! -d "$DATA/usr/share/unicode" ]; then
    step fetch fetch
fi
if [ ! -f "$TREE/config.status" ]; then
    step unpack unpack
    step unpatch unpatch
    step generate generate
    step configure configure_tree
fi
step headers headers
step modules build_minimal
echo "Wine for the 32-bit program: $CORVANITE_WINE32 ($(du -sh "$CORVANITE_WINE32_CACHE" | cut -f1) in $CORVANITE_WINE32_CACHE)"
