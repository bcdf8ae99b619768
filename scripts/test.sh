#!/usr/bin/env bash
# Runs every test: installs what is missing, builds the linux, win64 and win32 presets, runs ctest
# natively and under Wine (with a virtual display for the windows), runs each fuzz target for 30 s
# (as many at once as there are cores) and the tests that start threads under ThreadSanitizer, and
# ends with the summaries.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
jobs=$(nproc)

bash scripts/install-deps.sh || exit 1
# ccache keys on paths below the tree's root, so a fresh clone elsewhere reuses what an earlier
# build of the same sources made.
export CORVANITE_LAUNCHER=ccache CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

# Each stage's name, result and wall time, for the summary at the end.
stages=()
stage_start=0
stage_begin() {
    stage_name=$1
    stage_start=$(date +%s)
    echo "== $stage_name"
}
stage_end() {
    local status=$1 result=passed
    [ "$status" -ne 0 ] && result=FAILED
    stages+=("$(printf '%-34s %-7s %4d s' "$stage_name" "$result" $(($(date +%s) - stage_start)))")
    return "$status"
}
stage_summary() {
    echo "== stages"
    printf '%s\n' "${stages[@]}"
}

stage_begin "commands of the scripts"
python3 scripts/check-commands.py "$root"
stage_end $? || { stage_summary; exit 1; }

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

mkdir -p build
for preset in linux win64 win32; do
    stage_begin "build $preset"
    build "$preset"
    stage_end $? || { echo "build of $preset failed"; stage_summary; exit 1; }
done

stage_begin "shipped program: imports"
python3 scripts/check-imports.py build/win32
stage_end $? || { stage_summary; exit 1; }

stage_begin "shipped program: release archive"
cmake --build --preset win32 -j"$jobs" --target package >build/package-win32.log 2>&1 &&
    python3 scripts/check-release.py build/win32/CVHControlPanel-*-win32.zip
stage_end $? || { stage_summary; exit 1; }

stage_begin "test linux"
# Twice as many tests as cores: the longest native tests sleep through a server's time-outs.
ctest --preset linux -j$((jobs * 2)) >build/ctest-linux.log 2>&1
stage_end $?
linux_status=$?

source scripts/wine-session.sh
trap wine_session_end EXIT
wine_session_start "$root/build/win64/wineprefix"
stage_begin "test win64 (Wine)"
ctest --preset win64 -j"$jobs" >build/ctest-win64.log 2>&1
stage_end $?
win64_status=$?

stage_begin "fuzz (30 s a target)"
bash scripts/fuzz.sh 30 >build/fuzz.log 2>&1
stage_end $?
fuzz_status=$?

stage_begin "build tsan"
build tsan foundation_tests host_tests diagnostics_tests panel_tests
stage_end $?
tsan_status=$?
if [ $tsan_status -eq 0 ]; then
    stage_begin "test tsan (every test of the suites labelled threads)"
    ctest --preset tsan -j"$jobs" >build/ctest-tsan.log 2>&1
    stage_end $?
    tsan_status=$?
else
    echo "build of tsan failed" >build/ctest-tsan.log
fi

stage_summary
echo "== fuzz summary"
sed -n '/== fuzz summary/,$p' build/fuzz.log | tail -n +2
[ $fuzz_status -ne 0 ] && tail -n 60 build/fuzz.log
for preset in tsan linux win64; do
    echo "== ctest summary: $preset"
    sed -n '/tests passed\|tests failed/,$p' "build/ctest-$preset.log"
done
if [ $linux_status -ne 0 ] || [ $win64_status -ne 0 ] || [ $fuzz_status -ne 0 ] || [ $tsan_status -ne 0 ]; then
    echo "== the test command failed in:"
    printf '%s\n' "${stages[@]}" | grep FAILED
    exit 1
fi
