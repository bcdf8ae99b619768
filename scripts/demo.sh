#!/usr/bin/env bash
# Runs the control panel on a demo installation in a real window.
#
#   bash scripts/demo.sh         build, make the demo installation, start the panel, take a picture
#   bash scripts/demo.sh stop    end the panel (the server with it) and the demo's Wine and display
#
# Everything lives under build/demo: its own Wine prefix, the installation (the server and addon
# doubles, the layout file, conf/nginx.conf, logs, tmp) and the screenshot. The panel starts on
# $DISPLAY, or on a virtual display of its own when there is none.
set -Eeuo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
demo=$root/build/demo
wine=/usr/lib/wine/wine64
program=$root/build/win64/core/CVHControlPanel.exe
ui_driver=$root/build/win64/tests/e2e/cvh_ui.exe

# What the demo is doing now and the log that tells more, for the words of a failure.
demo_step="installing the packages"
demo_log=""

# A failing step says what failed and where to read more, and ends whatever the demo started.
demo_fail() {
    local status=$?
    trap - ERR
    echo "demo: $demo_step failed (status $status)${demo_log:+; see $demo_log}" >&2
    [ -n "$demo_log" ] && [ -f "$demo_log" ] && tail -n 20 "$demo_log" >&2
    if [ -n "${WINEPREFIX:-}" ]; then
        timeout 30 "$wine" "$program" --quit </dev/null >/dev/null 2>&1 || true
    fi
    wine_session_end >/dev/null 2>&1 || true
    rm -f "$demo/display" "$demo/xvfb.pid"
    exit "$status"
}

demo_build() {
    demo_step="installing the packages"
    bash "$root/scripts/install-deps.sh"
    command -v ccache >/dev/null && export CORVANITE_LAUNCHER=ccache
    mkdir -p "$root/build"
    demo_step="building the win64 program"
    demo_log=$root/build/demo-build.log
    echo "== building the win64 program (log: build/demo-build.log)"
    (cd "$root" && cmake --preset win64 && cmake --build --preset win64 -j2 --target CVHControlPanel cvh_ui &&
        cmake --build build/win64/tools -j2) >"$demo_log" 2>&1
}

# A port that nobody listens on now, for the server double's "listen" line.
demo_free_port() {
    python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])'
}

demo_installation() {
    local install=$demo/install
    rm -rf "$install"
    mkdir -p "$install/conf" "$install/logs" "$install/tmp"
    cp "$root/build/win64/tools/CorvaniteHost.exe" "$root/build/win64/tools/Corvanite.dll" "$install/"
    cp "$root/layout/CVHControlPanel.json" "$install/"
    cat >"$install/conf/nginx.conf" <<CONF
worker_processes 1;
error_log logs/error.log info;
events {
    worker_connections 64;
}
http {
    server {
        listen $(demo_free_port) ssl;
        server_name localhost;
    }
}
CONF
}

demo_registry() {
    local language=$1
    local key='HKCU\Software\Ormal Co\CorvaniteHost'
    local path
    path="Z:$(echo "$demo/install" | tr / '\\')"
    "$wine" 'C:\windows\system32\reg.exe' add "$key" /v Path /t REG_SZ /d "$path" /f >/dev/null
    "$wine" 'C:\windows\system32\reg.exe' add "$key" /v Language /t REG_SZ /d "$language" /f >/dev/null
}

demo_session() {
    demo_step="starting Wine and the display"
    demo_log=""
    # shellcheck source=wine-session.sh
    source "$root/scripts/wine-session.sh"
    if [ -n "${DISPLAY:-}" ]; then
        export CORVANITE_OWN_DISPLAY=0
    fi
    # Wine's server and display outlive this script: they get no part of its output, so that a
    # pipe behind the script ends with it.
    wine_session_start "$demo/wineprefix" </dev/null >/dev/null 2>&1
    # A virtual display has no window manager to draw the frames: Wine then draws them itself.
    local decorated=Y
    [ -n "${CORVANITE_XVFB_PID:-}" ] && decorated=N
    "$wine" 'C:\windows\system32\reg.exe' add 'HKCU\Software\Wine\X11 Driver' /v Decorated /t REG_SZ \
        /d "$decorated" /f </dev/null >/dev/null 2>&1
    # Wine's own Tahoma, the face of dialogs on Windows, and Marlett, which draws the frame's
    # buttons: a prefix made here has no fonts of its own.
    local font
    for font in tahoma.ttf tahomabd.ttf marlett.ttf; do
        if [ -f "/usr/share/wine/fonts/$font" ] && [ ! -f "$WINEPREFIX/drive_c/windows/Fonts/$font" ]; then
            cp "/usr/share/wine/fonts/$font" "$WINEPREFIX/drive_c/windows/Fonts/"
        fi
    done
    echo "${CORVANITE_XVFB_PID:-}" >"$demo/xvfb.pid"
    echo "$DISPLAY" >"$demo/display"
}

demo_start_panel() {
    demo_step="starting the control panel"
    demo_log=$demo/panel.log
    # The panel runs on after the script: nothing of it, not even the subshell that starts it, may
    # hold the script's output, or a pipe behind the script would never end.
    (cd "$demo/install" && exec setsid "$wine" "$program" "$@") </dev/null >"$demo_log" 2>&1 &
    "$wine" "$ui_driver" wait-ready 90 </dev/null >/dev/null 2>>"$demo_log"
}

# Ends the panel, then every Wine process of the demo's prefix (the server double among them),
# then the demo's own display.
demo_stop() {
    [ -f "$demo/display" ] || { echo "no demo runs"; return 0; }
    export WINEPREFIX=$demo/wineprefix DISPLAY
    DISPLAY=$(cat "$demo/display")
    timeout 30 "$wine" "$program" --quit </dev/null >/dev/null 2>&1 || true
    /usr/lib/wine/wineserver64 -k >/dev/null 2>&1 || true
    local xvfb
    xvfb=$(cat "$demo/xvfb.pid" 2>/dev/null || true)
    [ -n "$xvfb" ] && kill "$xvfb" 2>/dev/null || true
    rm -f "$demo/display" "$demo/xvfb.pid"
    echo "the demo has ended"
}

demo_main() {
    if [ "${1:-}" = stop ]; then
        demo_stop
        return
    fi
    trap demo_fail ERR
    demo_build
    mkdir -p "$demo"
    demo_session
    demo_step="making the demo installation"
    demo_installation
    demo_registry 1033
    echo "== starting the control panel on display $DISPLAY"
    demo_start_panel
    sleep 2
    demo_step="taking the screenshot"
    demo_log=""
    import -window root "$demo/screenshot.png"
    echo "screenshot: build/demo/screenshot.png"
    echo "the panel runs (Wine prefix build/demo/wineprefix, display $DISPLAY);"
    echo "stop it with: bash scripts/demo.sh stop"
}

if [ "${BASH_SOURCE[0]}" = "$0" ]; then
    demo_main "$@"
fi
