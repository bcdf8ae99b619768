#!/usr/bin/env bash
# Builds the fuzz preset and runs every libFuzzer target for a while (default 30 s each), as many at
# once as the machine has cores (FUZZ_JOBS to choose). The seeds of tests/fuzz/corpus/<target>/ are copied into build/fuzz/corpus/<target>/,
# where the run keeps what it finds; the source tree is never written. A crash, a leak, a sanitizer
# report, a time-out or an exhausted memory limit fails the run; the artifact that caused it stays
# in build/fuzz/artifacts/<target>/. Ends with one line per target: its runs and runs per second.
#
#   bash scripts/fuzz.sh [SECONDS] [TARGET...]
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
seconds=${1:-30}
shift || true

build=build/fuzz
log=build/build-fuzz.log
mkdir -p build
echo "== build fuzz"
if ! { cmake --preset fuzz >"$log" 2>&1 && cmake --build --preset fuzz -j2 >>"$log" 2>&1; }; then
    tail -n 60 "$log"
    echo "build of fuzz failed"
    exit 1
fi

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for source in tests/fuzz/*_fuzz.cpp; do
        targets+=("$(basename "$source" .cpp)")
    done
fi

# Targets that read the installation's files rewrite one at every run: their temporary folder lies
# in memory where the system has it, since truncating a file on a journalling disk takes milliseconds.
scratch_parent=/dev/shm
[ -d "$scratch_parent" ] && [ -w "$scratch_parent" ] || scratch_parent=${TMPDIR:-/tmp}
scratch=$(mktemp -d "$scratch_parent/corvanite-fuzz.XXXXXX") || exit 1
trap 'rm -rf "$scratch"' EXIT

# Runs one target and leaves its summary line in $build/<target>.result; its output stays in
# $build/<target>.log.
fuzz_target() {
    local target=$1
    local binary="$build/tests/fuzz/$target" corpus="$build/corpus/$target"
    local artifacts="$build/artifacts/$target" runlog="$build/$target.log"
    mkdir -p "$corpus" "$artifacts"
    cp -n tests/fuzz/corpus/"$target"/* "$corpus"/ 2>/dev/null
    local options=(-max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -malloc_limit_mb=2048
                   -print_final_stats=1 -artifact_prefix="$artifacts/")
    [ -f "tests/fuzz/$target.dict" ] && options+=(-dict="tests/fuzz/$target.dict")
    TMPDIR=$scratch ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 \
        UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 "$binary" "${options[@]}" "$corpus" >"$runlog" 2>&1
    local status=$?
    local runs rate
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$runlog" | tail -n 1)
    rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$runlog" | tail -n 1)
    if [ $status -ne 0 ] || grep -q "ERROR: \(AddressSanitizer\|LeakSanitizer\|libFuzzer\)\|runtime error:" "$runlog"; then
        grep -m 1 -A 30 "ERROR:\|runtime error:\|fuzz property broken" "$runlog"
        echo "$target: FAILED (exit $status), log $runlog, artifacts in $artifacts" >"$build/$target.result"
    else
        echo "$target: ${runs:-?} runs, ${rate:-?} runs/s, corpus $(ls "$corpus" | wc -l) inputs" >"$build/$target.result"
    fi
}

parallel=${FUZZ_JOBS:-$(nproc)}
for target in "${targets[@]}"; do
    while [ "$(jobs -rp | wc -l)" -ge "$parallel" ]; do
        wait -n
    done
    echo "== fuzz $target (${seconds} s)"
    rm -f "$build/$target.result"
    fuzz_target "$target" &
done
wait

failed=0
echo "== fuzz summary"
for target in "${targets[@]}"; do
    line=$(cat "$build/$target.result" 2>/dev/null || echo "$target: FAILED (no result)")
    echo "$line"
    case $line in *FAILED*) failed=1 ;; esac
done
exit $failed
