#!/usr/bin/env bash
# Pictures of both tabs of the window in Russian, English and Ukrainian, into docs/screenshots/.
# Builds like the demo, then runs the panel on a virtual display of its own, once per language.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=demo.sh
source "$root/scripts/demo.sh"
out=$root/docs/screenshots

demo_build
# A running demo holds the prefix and the single instance: it ends first.
demo_stop >/dev/null
mkdir -p "$demo" "$out"
unset DISPLAY
demo_session
trap wine_session_end EXIT
demo_installation

for entry in ru:1049 en:1033 uk:1058; do
    name=${entry%%:*}
    demo_registry "${entry##*:}"
    demo_start_panel || { echo "no window in $name"; exit 1; }
    for tab in 0 1; do
        "$wine" "$ui_driver" tab "$tab" </dev/null
        sleep 1
        # The window is centred on the screen; the picture is cut to it.
        import -window root -crop "$(xdotool search --sync --onlyvisible --class CVHControlPanel getwindowgeometry --shell | awk -F= '/WIDTH|HEIGHT|^X|^Y/ {v[$1]=$2} END {printf "%dx%d+%d+%d", v["WIDTH"], v["HEIGHT"], v["X"], v["Y"]}')" \
            "$out/panel-$name-tab$((tab + 1)).png"
        # The picture keeps no trace of where it was cut from.
        convert "$out/panel-$name-tab$((tab + 1)).png" +repage "$out/panel-$name-tab$((tab + 1)).png"
        echo "docs/screenshots/panel-$name-tab$((tab + 1)).png"
    done
    "$wine" "$program" --quit </dev/null >/dev/null 2>&1 || true
    "$wine" "$ui_driver" wait-ended 30 </dev/null
done
