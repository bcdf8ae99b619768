# Sourced by scripts/bench.sh inside a Wine session: the program's CPU use while idle, and its peak
# resident memory. Prints one JSON object; when the program cannot be measured yet, {"missing": why}.

# CPU seconds (user + system) of one process, from /proc/<pid>/stat.
cpu_seconds() {
    local ticks
    ticks=$(awk '{print $14 + $15}' "/proc/$1/stat" 2>/dev/null) || return 1
    awk -v t="$ticks" -v hz="$(getconf CLK_TCK)" 'BEGIN {printf "%.3f", t / hz}'
}

# The wineserver of the session's prefix: the one whose folder is named after the prefix's device
# and inode, as Wine names it.
prefix_wineserver() {
    local folder pid
    folder=server-$(stat -c '%d %i' "$WINEPREFIX" | awk '{printf "%x-%x", $1, $2}')
    for pid in $(pgrep -u "$(id -u)" wineserver); do
        if [ "$(basename "$(readlink "/proc/$pid/cwd")")" = "$folder" ]; then
            echo "$pid"
            return 0
        fi
    done
    return 1
}

# Samples a running process over SECONDS: its share of one core, and that of the wineserver, which
# carries every timer message and window call of a Windows program under Wine.
idle_usage() {
    local pid=$1 seconds=$2 server
    server=$(prefix_wineserver)
    local before server_before after server_after
    before=$(cpu_seconds "$pid") || return 1
    server_before=$(cpu_seconds "$server" 2>/dev/null || echo 0)
    sleep "$seconds"
    after=$(cpu_seconds "$pid") || return 1
    server_after=$(cpu_seconds "$server" 2>/dev/null || echo 0)
    local peak
    peak=$(awk '/^VmHWM:/ {print $2}' "/proc/$pid/status")
    awk -v b="$before" -v a="$after" -v sb="$server_before" -v sa="$server_after" \
        -v s="$seconds" -v p="$peak" 'BEGIN {
            printf "{\"seconds\": %d, \"cpu_percent\": %.3f, \"wineserver_cpu_percent\": %.3f, ", s, 100 * (a - b) / s, 100 * (sa - sb) / s
            printf "\"peak_rss_kib\": %d}\n", p }'
}

# The Linux pid of the Windows process running PROGRAM (a file name), once it is there.
wine_process_pid() {
    local name=$1 pid
    for _ in $(seq 300); do
        pid=$(pgrep -u "$(id -u)" -f "$name" | head -n 1)
        [ -n "$pid" ] && { echo "$pid"; return 0; }
        sleep 0.1
    done
    return 1
}

# The panel in one state: started with the given switches in its installation folder, left to settle,
# measured over 60 s, then asked to quit as a second start with --quit does.
measure_panel() {
    local installation=$1 program=$2 state=$3
    shift 3
    (cd "$installation" && setsid "$CORVANITE_WINE" "$program" "$@" </dev/null >/dev/null 2>&1 &)
    local pid usage
    pid=$(wine_process_pid CVHControlPanel.exe) || { echo "{\"state\": \"$state\", \"missing\": \"the panel did not start\"}"; return 0; }
    sleep 15
    usage=$(idle_usage "$pid" 60) || usage='{"missing": "the panel ended during the measurement"}'
    "$CORVANITE_WINE" "$program" --quit </dev/null >/dev/null 2>&1
    for _ in $(seq 100); do
        kill -0 "$pid" 2>/dev/null || break
        sleep 0.1
    done
    echo "{\"state\": \"$state\", \"usage\": $usage}"
}

# The shipped program's idle cost with the server running, as the user has it most of the day: in the
# tray (started with --silent, as at log-on) and with its window open. Starts the server of the
# installation, which must not run yet, and leaves it running. Prints a JSON list.
measure_idle() {
    local tree=$1 installation=$2
    local program=$tree/core/CVHControlPanel.exe
    if [ ! -f "$program" ]; then
        echo '{"missing": "CVHControlPanel.exe was not built"}'
        return 0
    fi
    cp layout/CVHControlPanel.json "$tree/tools/Corvanite.dll" "$installation/"
    mkdir -p "$installation/tmp"
    (cd "$installation" && setsid "$CORVANITE_WINE" ./CorvaniteHost.exe </dev/null >/dev/null 2>&1 &)
    for _ in $(seq 300); do
        [ -s "$installation/nginx.pid" ] && break
        sleep 0.1
    done
    echo "["
    measure_panel "$installation" "$program" tray --silent
    echo ","
    measure_panel "$installation" "$program" window
    echo "]"
}
