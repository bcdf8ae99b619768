#!/usr/bin/env bash
# Runs every test: installs what is missing, checks the scripts' commands, builds the linux, win64,
# win32, fuzz and tsan presets, checks the shipped 32-bit program's binaries, then runs two chains
# side by side, which wait on different things (the Wine tests on Wine, the native ones mostly on
# the server's time-outs):
#   - every test under Wine, with a virtual display for the windows;
#   - the native tests, the fuzz targets (the kept corpus, then a few seconds of search each) and
#     the tests labelled threads under ThreadSanitizer, then the shipped 32-bit program's tests
#     under a WoW64 Wine where the machine runs 32-bit code and scripts/build-wine32.sh has run.
# Ends with each stage's wall time and the summaries.
#
#   bash scripts/test.sh          everything, as CI runs it
#   bash scripts/test.sh quick    the linux build and the tests labelled fast: the loop to run
#                                 while working
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
jobs=$(nproc)
mode=${1:-all}

bash scripts/install-deps.sh || exit 1
# ccache keys on paths below the tree's root, so a fresh clone elsewhere reuses what an earlier
# build of the same sources made.
export CORVANITE_LAUNCHER=ccache CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

mkdir -p build
# Each stage's name, result and wall time, one line per stage; the chains write theirs from
# subshells, so the lines go to a file.
stages=build/test-stages.txt
: >"$stages"
started=$(date +%s)
stage_begin() {
    stage_name=$1
    stage_start=$(date +%s)
    echo "== $stage_name"
}
stage_end() {
    local status=$1 result=passed
    [ "$status" -ne 0 ] && result=FAILED
    printf '%-40s %-7s %4d s\n' "$stage_name" "$result" $(($(date +%s) - stage_start)) >>"$stages"
    return "$status"
}
stage_summary() {
    echo "== stages"
    cat "$stages"
    printf '%-40s %-7s %4d s\n' "whole run" "" $(($(date +%s) - started))
}

# Configures and builds a preset: everything, or only the targets named after it.
build() {
    local preset=$1 log=build/build-$1.log
    shift
    local targets=()
    [ $# -gt 0 ] && targets=(--target "$@")
    cmake --preset "$preset" >"$log" 2>&1 &&
        cmake --build --preset "$preset" -j"$jobs" "${targets[@]}" >>"$log" 2>&1
    local status=$?
    [ $status -ne 0 ] && tail -n 60 "$log"
    return $status
}

if [ "$mode" = quick ]; then
    stage_begin "build linux"
    build linux
    stage_end $? || { stage_summary; exit 1; }
    stage_begin "test linux, label fast"
    # Twice as many tests as cores: the server tests wait on processes more than they compute.
    ctest --preset linux -L fast -j$((jobs * 2))
    stage_end $?
    status=$?
    stage_summary
    exit $status
fi

stage_begin "commands of the scripts"
python3 scripts/check-commands.py "$root"
stage_end $? || { stage_summary; exit 1; }

for preset in linux win64 win32; do
    stage_begin "build $preset"
    build "$preset"
    stage_end $? || { echo "build of $preset failed"; stage_summary; exit 1; }
done

stage_begin "shipped program: imports"
python3 scripts/check-imports.py build/win32
stage_end $? || { stage_summary; exit 1; }

stage_begin "shipped program: addon calls"
python3 scripts/check-addon-abi.py build/win32
stage_end $? || { stage_summary; exit 1; }

stage_begin "shipped program: release archive"
cmake --build --preset win32 -j"$jobs" --target package >build/package-win32.log 2>&1 &&
    python3 scripts/check-release.py build/win32/CVHControlPanel-*-win32.zip
stage_end $? || { stage_summary; exit 1; }

stage_begin "build tsan"
build tsan foundation_tests host_tests diagnostics_tests panel_tests
stage_end $?
tsan_built=$?

# The Wine chain. Its ctest run holds the folder names' end-to-end tests twice, each ctest entry
# starting the test program under the locale it names (en_US and ru_RU): one session serves both
# code pages.
wine_chain() {
    source scripts/wine-session.sh
    trap wine_session_end EXIT
    wine_session_start "$root/build/win64/wineprefix"
    stage_begin "test win64 (Wine)"
    ctest --preset win64 -j"$jobs" >build/ctest-win64.log 2>&1
    stage_end $?
}

# The native chain. The fuzz script builds its preset itself.
native_chain() {
    local status=0
    stage_begin "test linux"
    # Twice as many tests as cores: the longest native tests sleep through a server's time-outs.
    ctest --preset linux -j$((jobs * 2)) >build/ctest-linux.log 2>&1
    stage_end $? || status=1
    stage_begin "fuzz (corpus, then 5 s a target)"
    bash scripts/fuzz.sh 5 >build/fuzz.log 2>&1
    stage_end $? || status=1
    if [ "$tsan_built" -eq 0 ]; then
        stage_begin "test tsan (label threads)"
        ctest --preset tsan -j"$jobs" >build/ctest-tsan.log 2>&1
        stage_end $? || status=1
    else
        echo "build of tsan failed" >build/ctest-tsan.log
        status=1
    fi
    return $status
}

# The shipped 32-bit program's tests under the WoW64 Wine of scripts/build-wine32.sh, in a prefix
# of their own. The machine is asked first: where it runs no 32-bit code, or where that Wine is not
# built, the row says why the stage is skipped, and a skip fails nothing.
win32_stage() {
    source scripts/wine32.sh
    stage_begin "win32 under Wine"
    machine_runs_32bit_code >build/probe-32bit.log
    case $? in
    0) ;;
    1)
        stage_name="win32 under Wine: skipped (this machine runs no 32-bit x86 code)"
        stage_skipped
        return 0
        ;;
    *)
        cat build/probe-32bit.log
        stage_end 1
        return 1
        ;;
    esac
    if [ ! -f "$CORVANITE_WINE32_DONE" ]; then
        stage_name="win32 under Wine: skipped (run scripts/build-wine32.sh)"
        stage_skipped
        return 0
    fi
    # A prefix made by an earlier build of that Wine lacks the services a newer one registers.
    if [ "$CORVANITE_WINE32_DONE" -nt "$root/build/win32/wineprefix/.corvanite-ready" ]; then
        rm -rf "$root/build/win32/wineprefix"
    fi
    (
        source scripts/wine-session.sh
        CORVANITE_WINE=$CORVANITE_WINE32
        CORVANITE_WINESERVER=$CORVANITE_WINE32_SERVER
        trap wine_session_end EXIT
        wine_session_start "$root/build/win32/wineprefix"
        ctest --preset win32 -j"$jobs" >build/ctest-win32.log 2>&1
    )
    local status=$? total failed
    total=$(sed -n 's/.*tests failed out of \([0-9]*\).*/\1/p' build/ctest-win32.log)
    failed=$(sed -n 's/.* \([0-9]*\) tests failed out of .*/\1/p' build/ctest-win32.log)
    stage_name="win32 under Wine: $((${total:-0} - ${failed:-0})) passed, ${failed:-0} failed"
    [ -z "$total" ] && status=1
    stage_end $status
}
stage_skipped() {
    printf '%-40s %-7s %4d s\n' "$stage_name" "" $(($(date +%s) - stage_start)) >>"$stages"
    echo "$stage_name"
}

wine_chain &
wine_pid=$!
native_chain
native_status=$?
win32_stage
win32_status=$?
wait "$wine_pid"
wine_status=$?

stage_summary
echo "== fuzz summary"
sed -n '/== fuzz summary/,$p' build/fuzz.log | tail -n +2
grep -q "fuzz.*FAILED" "$stages" && tail -n 60 build/fuzz.log
for preset in tsan linux win64 win32; do
    [ -f "build/ctest-$preset.log" ] || continue
    echo "== ctest summary: $preset"
    sed -n '/tests passed\|tests failed/,$p' "build/ctest-$preset.log"
    # The Wine presets try a failed test once more; a test that needed it is a defect to find.
    grep -a -E '\*\*\*(Failed|Timeout|Exception)' "build/ctest-$preset.log" |
        sed -E 's/^ *[0-9]*\/?[0-9]* *Test +#[0-9]+: ([^ ]+).*\*\*\*([A-Za-z]+).*/first try \2: \1/'
done
if [ $native_status -ne 0 ] || [ $wine_status -ne 0 ] || [ $win32_status -ne 0 ] ||
    [ $tsan_built -ne 0 ]; then
    echo "== the test command failed in:"
    grep FAILED "$stages"
    exit 1
fi
