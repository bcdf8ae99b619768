#!/usr/bin/env bash
# Sourced by the test and demo commands: a Wine prefix of the project's own inside the build tree
# (never ~/.wine), a virtual display, and a warm wineserver for the run. `wine_session_end` stops
# exactly what `wine_session_start` started.

# Wine's programs by the paths that Debian's wine64 package gives them: the plain `wine`,
# `wineboot` and `wineserver` commands come only with the separate wine package.
CORVANITE_WINE=/usr/lib/wine/wine64
CORVANITE_WINESERVER=/usr/lib/wine/wineserver64

wine_session_start() {
    local prefix=$1
    export WINEPREFIX=$prefix
    export WINEDEBUG=-all
    export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
    if [ -z "${DISPLAY:-}" ] || [ "${CORVANITE_OWN_DISPLAY:-1}" = 1 ]; then
        local number=90
        while [ -e "/tmp/.X11-unix/X$number" ] || [ -e "/tmp/.X$number-lock" ]; do
            number=$((number + 1))
        done
        Xvfb ":$number" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
        CORVANITE_XVFB_PID=$!
        export DISPLAY=":$number"
        for _ in $(seq 50); do
            [ -e "/tmp/.X11-unix/X$number" ] && break
            sleep 0.1
        done
    fi
    if [ ! -f "$WINEPREFIX/.corvanite-ready" ]; then
        mkdir -p "$WINEPREFIX"
        "$CORVANITE_WINE" wineboot -i >/dev/null 2>&1 || true
        "$CORVANITE_WINE" winecfg /v win10 >/dev/null 2>&1 || true
        "$CORVANITE_WINESERVER" -w
        touch "$WINEPREFIX/.corvanite-ready"
    fi
    "$CORVANITE_WINESERVER" -p
    # The first program of a session starts Wine's own services, which inherit its output; started
    # here with no output, they keep no test runner waiting for the end of a pipe.
    "$CORVANITE_WINE" cmd /c exit </dev/null >/dev/null 2>&1
    # The desktop too: the first program that asks for the screen would start it otherwise, and it
    # would keep that program's output open until every window of the session is gone.
    "$CORVANITE_WINE" explorer.exe /desktop </dev/null >/dev/null 2>&1 &
    # Likewise the COM services behind WMI: started by one program ahead of the tests, they are
    # not started by several tests at once, which can stall them all.
    "$CORVANITE_WINE" wmic os get version </dev/null >/dev/null 2>&1
}

wine_session_end() {
    [ -n "${WINEPREFIX:-}" ] && "$CORVANITE_WINESERVER" -k >/dev/null 2>&1 || true
    if [ -n "${CORVANITE_XVFB_PID:-}" ]; then
        kill "$CORVANITE_XVFB_PID" 2>/dev/null || true
        wait "$CORVANITE_XVFB_PID" 2>/dev/null || true
    fi
}
