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

# The shipped program, started with --silent as at log-on, in the bench tree's prefix, measured
# after it has settled, then asked to quit as a second start would.
measure_idle() {
    local tree=$1
    local program
    program=$(find "$tree" -name CVHControlPanel.exe -print -quit 2>/dev/null)
    if [ -z "$program" ]; then
        echo '{"missing": "the program CVHControlPanel.exe is not on main yet"}'
        return 0
    fi
    echo '{"missing": "the demo installation that the program needs is not on main yet"}'
}
