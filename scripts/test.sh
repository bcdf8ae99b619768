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
command -v ccache >/dev/null && export CORVANITE_LAUNCHER=ccache

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
    echo "== build $preset"
    build "$preset" || { echo "build of $preset failed"; exit 1; }
done

echo "== shipped program: imports"
python3 scripts/check-imports.py build/win32 || exit 1

echo "== test linux"
# Twice as many tests as cores: the longest native tests sleep through a server's time-outs.
ctest --preset linux -j$((jobs * 2)) >build/ctest-linux.log 2>&1
linux_status=$?

source scripts/wine-session.sh
trap wine_session_end EXIT
wine_session_start "$root/build/win64/wineprefix"
echo "== test win64 (Wine)"
ctest --preset win64 -j"$jobs" >build/ctest-win64.log 2>&1
win64_status=$?

echo "== fuzz (30 s a target)"
bash scripts/fuzz.sh 30 >build/fuzz.log 2>&1
fuzz_status=$?

echo "== build tsan"
tsan_status=1
if build tsan foundation_tests host_tests diagnostics_tests panel_tests; then
    echo "== test tsan (every test of the suites labelled threads)"
    ctest --preset tsan -j"$jobs" >build/ctest-tsan.log 2>&1
    tsan_status=$?
else
    echo "build of tsan failed" >build/ctest-tsan.log
fi

echo "== fuzz summary"
sed -n '/== fuzz summary/,$p' build/fuzz.log | tail -n +2
[ $fuzz_status -ne 0 ] && tail -n 60 build/fuzz.log
for preset in tsan linux win64; do
    echo "== ctest summary: $preset"
    sed -n '/tests passed\|tests failed/,$p' "build/ctest-$preset.log"
done
[ $linux_status -eq 0 ] && [ $win64_status -eq 0 ] && [ $fuzz_status -eq 0 ] && [ $tsan_status -eq 0 ]
