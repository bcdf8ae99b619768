#!/usr/bin/env bash
# Measures the control panel's costs, prints one table and writes it, with the machine and the date,
# into docs/performance.md. Not part of the test command; the targets below are goals, not tests.
#
#   bash scripts/bench.sh [--no-wine]
#
# The natively measured cases run under Google Benchmark in a Release tree of their own
# (build/bench-linux), the Windows ones in the timing probe of a Release win64 tree (build/bench-win64)
# under Wine, with a prefix of that tree's own. Input files are made in build/bench/data; each side
# gets an installation with the server double (build/bench/installation-linux, -wine), which the
# registry's "Path" names, and the server is stopped again at the end. Cases that
# scripts/bench.sh reads (bench/*_cases.cpp registers them):
#   refresh/warm, refresh/snapshot           one status refresh with a warm cache; one process snapshot
#   refresh/floor                            one question about the master's creation time
#   refresh/cold, refresh/tcp_table          the same with a cold cache; one TCP table read
#   zip/big_log, zip/small_logs              packing the 10 MiB log; the 200 small logs (counter zip_bytes)
#   report/all, report/section/<name>        the information report; each of its sections alone
# Under Wine: the program's idle CPU use at the layout's update period with the wineserver's work
# above the prefix's baseline, against Wine's Notepad started the same way in the same run; its peak
# memory against Notepad's; its start to a visible window (bench/idle_cpu.sh).
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
use_wine=1
[ "${1:-}" = "--no-wine" ] && use_wine=0

bash scripts/install-deps.sh || exit 1
command -v ccache >/dev/null && export CORVANITE_LAUNCHER=ccache

out=build/bench
data=$out/data
mkdir -p "$out"
rm -f "$out"/linux.json "$out"/wine*.json "$out"/idle.json

configure_and_build() {
    local tree=$1 preset=$2 log=$out/build-$(basename "$1").log
    shift 2
    cmake --preset "$preset" -B "$tree" -DCMAKE_BUILD_TYPE=Release -DCORVANITE_TESTS=OFF \
        -DCORVANITE_BENCH=ON >"$log" 2>&1 &&
        cmake --build "$tree" -j2 --target "$@" >>"$log" 2>&1 ||
        { tail -n 40 "$log"; return 1; }
}

free_port() {
    python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])'
}

# An installation as the host model needs it: the server double, "conf/nginx.conf" with a free
# port, the "logs" folder.
make_installation() {
    local folder=$1 double=$2
    rm -rf "$folder"
    mkdir -p "$folder/conf" "$folder/logs"
    cp "$double" "$folder/CorvaniteHost.exe"
    printf 'worker_processes  1;\r\n\r\nerror_log logs/error.log info;\r\n\r\nhttp {\r\n    server {\r\n        listen       %s ssl;\r\n    }\r\n}\r\n' \
        "$(free_port)" >"$folder/conf/nginx.conf"
}

# Stops the server that the benchmark started, as the panel does: a second run with " -s quit" in
# its folder. The command that runs a program (empty natively) comes after the folder.
stop_server() {
    local folder=$1
    shift
    [ -f "$folder/nginx.pid" ] || return 0
    (cd "$folder" && "$@" ./CorvaniteHost.exe -s quit </dev/null >/dev/null 2>&1)
    for _ in $(seq 100); do
        [ -f "$folder/nginx.pid" ] || return 0
        sleep 0.1
    done
    echo "the benchmark's server in $folder did not stop"
}

echo "== input files"
python3 bench/bench_data.py "$data" >"$out/gzip.json" || exit 1

echo "== linux-release"
configure_and_build build/bench-linux linux-release corvanite_bench host_double || exit 1
installation=$root/$out/installation-linux
make_installation "$installation" build/bench-linux/tools/CorvaniteHost.exe
registry=$root/$out/registry
key="$registry/HKEY_CURRENT_USER/Software/Ormal Co/CorvaniteHost"
mkdir -p "$key"
printf %s "$installation" >"$key/Path"
CORVANITE_REGISTRY=$registry CORVANITE_BENCH_DATA="$root/$data" \
    build/bench-linux/bench/corvanite_bench --benchmark_repetitions=5 \
    --benchmark_report_aggregates_only=true --benchmark_format=json \
    >"$out/linux.json" 2>"$out/linux.err" || cat "$out/linux.err"
stop_server "$installation"

if [ $use_wine -eq 1 ]; then
    echo "== Wine"
    targets=(corvanite_bench_probe host_double addon_double CVHControlPanel)
    configure_and_build build/bench-win64 win64 "${targets[@]}" || exit 1
    source scripts/wine-session.sh
    trap wine_session_end EXIT
    wine_session_start "$root/build/bench-win64/wineprefix"
    installation=$root/$out/installation-wine
    make_installation "$installation" build/bench-win64/tools/CorvaniteHost.exe
    "$CORVANITE_WINE" 'C:\windows\system32\reg.exe' add 'HKCU\Software\Ormal Co\CorvaniteHost' \
        /v Path /t REG_SZ /d "$("$CORVANITE_WINE" winepath -w "$installation")" /f >/dev/null 2>&1
    # One run for each group of cases, each with a time limit: a crash (Wine then waits for its
    # debugger) costs that group alone.
    for group in refresh zip report; do
        CORVANITE_BENCH_DATA=$("$CORVANITE_WINE" winepath -w "$root/$data") timeout 600 \
            "$CORVANITE_WINE" build/bench-win64/bench/corvanite_bench_probe.exe "$group/" </dev/null \
            >"$out/wine-$group.json" 2>"$out/wine-$group.err" ||
            { echo "the $group cases failed under Wine:"; grep -a -v fixme "$out/wine-$group.err" | head -n 5; }
    done
    stop_server "$installation" "$CORVANITE_WINE"
    source bench/idle_cpu.sh
    measure_idle "$root/build/bench-win64" "$installation" >"$out/idle.json"
    stop_server "$installation" "$CORVANITE_WINE"
fi

echo "== table"
python3 bench/bench_table.py "$out" docs/performance.md
