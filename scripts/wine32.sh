#!/usr/bin/env bash
# Sourced by the test command and by scripts/build-wine32.sh: where the WoW64 Wine that runs the
# shipped 32-bit program lives, and whether this machine can run 32-bit code at all.

# The cache outside the repository: every clone on the machine shares one Wine build.
CORVANITE_WINE32_CACHE=${CORVANITE_WINE32_CACHE:-$HOME/.cache/corvanite/wine-wow64}
CORVANITE_WINE32_TREE=$CORVANITE_WINE32_CACHE/work/wine-10.0~repack
# Wine runs from its build tree: the modules a Win32 program needs are built there, never installed.
CORVANITE_WINE32=$CORVANITE_WINE32_TREE/wine
CORVANITE_WINE32_SERVER=$CORVANITE_WINE32_TREE/server/wineserver
# The last file the build makes: present only when the whole module set was built.
CORVANITE_WINE32_DONE=$CORVANITE_WINE32_CACHE/work/minimal.done

# Prints the probe's answer ("yes: ..." or "no: ...") and returns 0 when 32-bit code runs here, 1
# when it doesn't, 2 when the probe could not be built.
machine_runs_32bit_code() {
    local root dir status
    root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
    dir=$(mktemp -d)
    if ! gcc -O2 -no-pie -o "$dir/runs-32bit-code" "$root/scripts/runs-32bit-code.c" 2>"$dir/log"; then
        echo "the probe did not build: $(head -n 1 "$dir/log")"
        rm -rf "$dir"
        return 2
    fi
    "$dir/runs-32bit-code"
    status=$?
    rm -rf "$dir"
    return $status
}
