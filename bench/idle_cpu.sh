# Sourced by scripts/bench.sh inside a Wine session: the program's CPU use while idle, and its peak
# resident memory. Prints one JSON object; when the program cannot be measured yet, {"missing": why}.

# CPU seconds of one process, all its threads, from the scheduler's nanosecond counts: an idle
# program runs for a few milliseconds a minute, below the 10 ms steps of /proc/<pid>/stat. Threads
# that ended during the sample are missed; an idle program ends none.
cpu_seconds() {
    [ -d "/proc/$1/task" ] || return 1
    cat /proc/"$1"/task/*/schedstat 2>/dev/null | awk '{ns += $1} END {printf "%.6f", ns / 1e9}'
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

# How long a program settles after its start, and how long it is sampled (CORVANITE_IDLE_SECONDS
# asks for longer samples, which the run-to-run spread of the prefix's baseline calls for).
settle_seconds=10
sample_seconds=${CORVANITE_IDLE_SECONDS:-60}

# Samples over SECONDS a running process (none: the prefix alone, the baseline) and the prefix's
# wineserver, which carries every timer message and window call of a Windows program under Wine.
idle_usage() {
    local pid=$1 seconds=$2 server
    server=$(prefix_wineserver)
    local before=0 server_before after=0 server_after peak=0
    if [ -n "$pid" ]; then
        before=$(cpu_seconds "$pid") || return 1
    fi
    server_before=$(cpu_seconds "$server" 2>/dev/null || echo 0)
    sleep "$seconds"
    if [ -n "$pid" ]; then
        after=$(cpu_seconds "$pid") || return 1
        peak=$(awk '/^VmHWM:/ {print $2}' "/proc/$pid/status")
    fi
    server_after=$(cpu_seconds "$server" 2>/dev/null || echo 0)
    awk -v b="$before" -v a="$after" -v sb="$server_before" -v sa="$server_after" \
        -v s="$seconds" -v p="$peak" 'BEGIN {
            printf "{\"seconds\": %d, \"cpu_percent\": %.4f, \"wineserver_cpu_percent\": %.4f, ", s, 100 * (a - b) / s, 100 * (sa - sb) / s
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

# Waits up to ten seconds for a process to end.
wait_for_end() {
    for _ in $(seq 100); do
        kill -0 "$1" 2>/dev/null || return 0
        sleep 0.1
    done
}

# The panel in one state: started with the given switches in its installation folder, left to settle,
# measured, then asked to quit as a second start with --quit does.
measure_panel() {
    local installation=$1 program=$2 state=$3
    shift 3
    (cd "$installation" && setsid "$CORVANITE_WINE" "$program" "$@" </dev/null >/dev/null 2>&1 &)
    local pid usage
    pid=$(wine_process_pid CVHControlPanel.exe) || { echo "{\"state\": \"$state\", \"missing\": \"the panel did not start\"}"; return 0; }
    sleep "$settle_seconds"
    usage=$(idle_usage "$pid" "$sample_seconds") || usage='{"missing": "the panel ended during the measurement"}'
    "$CORVANITE_WINE" "$program" --quit </dev/null >/dev/null 2>&1
    wait_for_end "$pid"
    echo "{\"state\": \"$state\", \"usage\": $usage}"
}

# Wine's own Notepad, the peer: started the same way in the same folder and prefix, measured as
# the panel is, then ended.
measure_notepad() {
    local installation=$1
    (cd "$installation" && setsid "$CORVANITE_WINE" notepad.exe </dev/null >/dev/null 2>&1 &)
    local pid usage
    pid=$(wine_process_pid notepad.exe) || { echo '{"state": "notepad", "missing": "Notepad did not start"}'; return 0; }
    sleep "$settle_seconds"
    usage=$(idle_usage "$pid" "$sample_seconds") || usage='{"missing": "Notepad ended during the measurement"}'
    kill "$pid"
    wait_for_end "$pid"
    echo "{\"state\": \"notepad\", \"usage\": $usage}"
}

# The prefix with the server running and no program of ours: what the wineserver costs anyway.
# Sampled before the programs and again after them (STATE "baseline_end"): the wineserver's own
# idle work drifts by about as much as a program adds to it.
measure_baseline() {
    local state=${1:-baseline}
    sleep "$settle_seconds"
    echo "{\"state\": \"$state\", \"usage\": $(idle_usage "" "$sample_seconds")}"
}

# Milliseconds from the start of PROGRAM in the installation folder to a window whose title holds
# TITLE being mapped on the display; "null" when none came within 60 s. The display's map event is
# waited for (bench/window_shown.py), so that nothing else runs while the program starts.
time_to_window() {
    local installation=$1 program=$2 title=$3 shown start now=""
    shown=$(mktemp)
    python3 bench/window_shown.py "$title" 60 >"$shown" &
    local waiter=$!
    until grep -q ready "$shown" || ! kill -0 "$waiter" 2>/dev/null; do
        sleep 0.01
    done
    start=$(date +%s%N)
    (cd "$installation" && setsid "$CORVANITE_WINE" "$program" </dev/null >/dev/null 2>&1 &)
    wait "$waiter" && now=$(tail -n 1 "$shown")
    rm -f "$shown"
    if [ -n "$now" ]; then echo $(((now - start) / 1000000)); else echo null; fi
}

# The panel's start to its window, then the panel is asked to quit. The title holds "Corvanite" in
# every language.
start_to_window() {
    local installation=$1 program=$2 pid
    time_to_window "$installation" "$program" Corvanite
    pid=$(wine_process_pid CVHControlPanel.exe)
    "$CORVANITE_WINE" "$program" --quit </dev/null >/dev/null 2>&1
    wait_for_end "$pid"
}

# Wine's Notepad the same way, then ended: what the start of any program with a window costs on
# this Wine and display.
notepad_to_window() {
    local installation=$1 pid
    time_to_window "$installation" notepad.exe Notepad
    pid=$(wine_process_pid notepad.exe) && { kill "$pid"; wait_for_end "$pid"; }
}

# Starts of the panel, RUNS times after one untimed start: with the server running, and with the
# server stopped before each start, so that the panel starts it and waits for it. Prints a JSON
# object of the times in ms.
measure_starts() {
    local installation=$1 program=$2 runs=$3 running=() starting=() notepad=() _
    # One start untimed: the rows are of a warm Wine, with the program's files already read.
    start_to_window "$installation" "$program" >/dev/null
    notepad_to_window "$installation" >/dev/null
    for _ in $(seq "$runs"); do
        running+=("$(start_to_window "$installation" "$program")")
        notepad+=("$(notepad_to_window "$installation")")
    done
    for _ in $(seq "$runs"); do
        stop_server "$installation" "$CORVANITE_WINE" >/dev/null
        starting+=("$(start_to_window "$installation" "$program")")
    done
    local IFS=,
    echo "{\"server_running_ms\": [${running[*]}], \"server_starting_ms\": [${starting[*]}]," \
        "\"notepad_ms\": [${notepad[*]}]}"
}

# Starts the installation's server as the panel would, and waits for its pid file.
start_server() {
    local installation=$1
    (cd "$installation" && setsid "$CORVANITE_WINE" ./CorvaniteHost.exe </dev/null >/dev/null 2>&1 &)
    for _ in $(seq 300); do
        [ -s "$installation/nginx.pid" ] && break
        sleep 0.1
    done
}

# The shipped program's idle cost with the server running, as the user has it most of the day: in the
# tray (started with --silent, as at log-on) and with its window open, beside the prefix alone and
# Wine's Notepad; the server listens on all interfaces, as nginx's "listen N;" does, and then on the
# loopback address alone; then its start to a visible window. Starts the server of the installation, which
# must not run yet, and leaves it running. Prints a JSON list.
measure_idle() {
    local tree=$1 installation=$2
    local program=$tree/core/CVHControlPanel.exe
    if [ ! -f "$program" ]; then
        echo '{"missing": "CVHControlPanel.exe was not built"}'
        return 0
    fi
    cp layout/CVHControlPanel.json "$tree/tools/Corvanite.dll" "$installation/"
    mkdir -p "$installation/tmp"
    start_server "$installation"
    echo "["
    measure_baseline
    echo ","
    measure_panel "$installation" "$program" tray --silent
    echo ","
    measure_panel "$installation" "$program" window
    echo ","
    measure_notepad "$installation"
    echo ","
    measure_baseline baseline_end
    echo ","
    # The same server bound to the loopback address alone: its connection row names the address,
    # which the panel looked up differently before it kept the worker.
    stop_server "$installation" "$CORVANITE_WINE" >/dev/null
    sed -i 's/listen \([ ]*\)\([0-9]\)/listen \1127.0.0.1:\2/' "$installation/conf/nginx.conf"
    start_server "$installation"
    measure_panel "$installation" "$program" tray_loopback --silent
    echo ","
    measure_panel "$installation" "$program" window_loopback
    stop_server "$installation" "$CORVANITE_WINE" >/dev/null
    sed -i 's/127\.0\.0\.1://' "$installation/conf/nginx.conf"
    start_server "$installation"
    echo ","
    echo "{\"state\": \"start\", \"starts\": $(measure_starts "$installation" "$program" 10)}"
    echo "]"
}
