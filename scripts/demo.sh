#!/usr/bin/env bash
# Shows the program at work on a virtual screen: a full-screen capture by command, an area capture
# by keys and mouse. Prints where the pictures are; succeeds only when all of them decode.
# Needs build/release with the program and sample_desktop. Leaves its results in build/demo.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

program=$PWD/build/release/brindlecam
sample_desktop=$PWD/build/release/sample_desktop
results=$PWD/build/demo
screen_size=1280x800
patience=20 # seconds for any one thing to happen

fail() {
    echo "La demostración falla: $1" >&2
    [ ! -s "$results/brindlecam.log" ] || sed 's/^/  /' "$results/brindlecam.log" >&2
    exit 1
}

# await WHAT COMMAND…: until the command succeeds.
await() {
    local what=$1 deadline=$((SECONDS + patience))
    shift
    until "$@"; do
        [ $SECONDS -lt $deadline ] || fail "$what"
        sleep 0.05
    done
}

work=$(mktemp -d)
children=()
# Newest first: the screen goes last.
clean_up() {
    local i
    for ((i = ${#children[@]} - 1; i >= 0; i--)); do
        kill "${children[i]}" 2>/dev/null || continue
        wait "${children[i]}" 2>/dev/null || true
    done
    rm -rf "$work"
}
trap clean_up EXIT
trap 'exit 130' INT TERM

rm -rf "$results"
mkdir -p "$results/home/Pictures"

# Nothing of the user's own settings, session or pictures takes part. The runtime folder is a short
# path, for sockets have little room for their names.
mkdir -m 700 "$work/run"
unset WAYLAND_DISPLAY XDG_SESSION_TYPE XDG_CURRENT_DESKTOP XAUTHORITY SESSION_MANAGER
unset QT_QPA_PLATFORM QT_QPA_PLATFORMTHEME QT_STYLE_OVERRIDE QT_SCALE_FACTOR QT_SCREEN_SCALE_FACTORS
export HOME=$results/home XDG_CONFIG_HOME=$results/home/config XDG_DATA_HOME=$results/home/data
export XDG_CACHE_HOME=$work/cache XDG_STATE_HOME=$work/state XDG_RUNTIME_DIR=$work/run
export DBUS_SESSION_BUS_ADDRESS=unix:path=$work/no-bus LC_ALL=C.UTF-8 QT_FONT_DPI=96
captures=$HOME/Pictures/Brindlecam
history=$XDG_DATA_HOME/Brindlecam/Recientes

has_line() { grep -q "$2" "$1" 2>/dev/null; }

# ---- The screen and what is on it
mkfifo "$work/display"
Xvfb -displayfd 1 -screen 0 ${screen_size}x24 -noreset -nolisten tcp >"$work/display" 2>/dev/null &
children+=($!)
read -r -t $patience number <"$work/display" || fail "no arranca la pantalla virtual"
export DISPLAY=:$number
openbox --sm-disable --startup 'echo ready' >"$work/openbox" 2>&1 &
children+=($!)
await "no arranca el gestor de ventanas" has_line "$work/openbox" ready
"$sample_desktop" >"$work/desktop" 2>&1 &
children+=($!)
await "no arranca el escritorio de muestra" has_line "$work/desktop" ready

# ---- The program, with the welcome already seen
mkdir -p "$XDG_CONFIG_HOME/brindlecam"
echo '{"didShowWelcome": true, "checkUpdates": false}' >"$XDG_CONFIG_HOME/brindlecam/settings.json"
"$program" >"$results/brindlecam.log" 2>&1 &
brindlecam=$!
children+=($brindlecam)
has_socket() {
    kill -0 $brindlecam 2>/dev/null || fail "el programa se cierra al empezar"
    [ -S "$XDG_RUNTIME_DIR/brindlecam.socket" ]
}
await "el programa no responde" has_socket

picture_count() { find "$1" -name '*.png' 2>/dev/null | wc -l; }
has_pictures() { [ "$(picture_count "$captures")" -ge "$1" ] && [ "$(picture_count "$history")" -ge "$1" ]; }
offers_png() { xclip -selection clipboard -t TARGETS -o 2>/dev/null | grep -q '^image/png$'; }
# The colour of one pixel, where the sample desktop stands still.
probe() { import -window root -crop 1x1+20+20 -depth 8 txt:- | sed -n '$s/.*\(#[0-9A-F]*\).*/\1/p'; }

# ---- The whole screen, by command
"$program" fullScreen || fail "no acepta la orden fullScreen"
await "no aparece la captura de pantalla completa" has_pictures 1
await "la captura no está en el portapapeles" offers_png

# ---- An area, by keys and mouse
# The message about the first capture covers nothing that is probed or dragged over.
before=$(probe)
is_dimmed() { [ "$(probe)" != "$before" ]; }
# Return after the drag is what ends a session; the pointer goes in steps, as a hand would.
xdotool key super+shift+9
await "Mayús+Super+9 no abre la captura de área" is_dimmed
xdotool mousemove 228 206 mousedown 1
for step in $(seq 1 20); do
    xdotool mousemove $((228 + 22 * step)) $((206 + 19 * step))
done
# Two equal screenshots in a row: the last move is painted.
is_at_rest() {
    mv -f "$results/session.png" "$work/earlier.png" 2>/dev/null || true
    import -window root -define png:exclude-chunks=date,time "$results/session.png"
    cmp -s "$results/session.png" "$work/earlier.png"
}
await "la pantalla no se queda quieta" is_at_rest
xdotool mouseup 1 key Return
await "no aparece la captura de área" has_pictures 2
await "la captura de área no está en el portapapeles" offers_png
xclip -selection clipboard -t image/png -o >"$results/clipboard.png"

# ---- Every picture decodes
check() {
    pngcheck -q "$1" >/dev/null || fail "pngcheck rechaza $1"
    echo "  $(identify -format '%w × %h  ' "$1") $1" || fail "$1 no se puede leer"
}
mapfile -d '' -t captured < <(find "$captures" -name '*.png' -print0 | sort -z)
mapfile -d '' -t kept < <(find "$history" -name '*.png' -print0 | sort -z)
echo
echo "Capturas:"
for picture in "${captured[@]}"; do check "$picture"; done
echo "Historial:"
for picture in "${kept[@]}"; do check "$picture"; done
echo "Portapapeles:"
check "$results/clipboard.png"
echo "La sesión, vista desde fuera:"
check "$results/session.png"
