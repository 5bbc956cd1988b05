#!/usr/bin/env bash
# Shows the program at work on a virtual screen: a full-screen capture by command, an annotated area
# capture by keys and mouse. Prints where the pictures are; succeeds only when all of them decode.
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
setxkbmap es # with the dead key of the text below
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
    [ -S "$XDG_RUNTIME_DIR/brindlecam-${DISPLAY%.*}.socket" ]
}
await "el programa no responde" has_socket

picture_count() { find "$1" -name '*.png' 2>/dev/null | wc -l; }
has_pictures() { [ "$(picture_count "$captures")" -ge "$1" ] && [ "$(picture_count "$history")" -ge "$1" ]; }
offers_png() { xclip -selection clipboard -t TARGETS -o 2>/dev/null | grep -q '^image/png$'; }
only_colour() { sed -n '$s/.*\(#[0-9A-F]\{6\}\).*/\1/p'; }
# The colour of one pixel, where the sample desktop stands still.
probe() { import -window root -crop 1x1+20+20 -depth 8 txt:- | only_colour; }

# ---- The whole screen, by command
"$program" fullScreen || fail "no acepta la orden fullScreen"
await "no aparece la captura de pantalla completa" has_pictures 1
await "la captura no está en el portapapeles" offers_png

# ---- An area, by keys and mouse
# The message about the first capture covers nothing that is probed or dragged over.
before=$(probe)
is_dimmed() { [ "$(probe)" != "$before" ]; }
xdotool key super+shift+9
await "Mayús+Super+9 no abre la captura de área" is_dimmed

# drag X Y X Y: the pointer goes in steps, as a hand would.
drag() {
    local step
    xdotool mousemove "$1" "$2" mousedown 1
    for step in $(seq 1 20); do
        xdotool mousemove $(($1 + ($3 - $1) * step / 20)) $(($2 + ($4 - $2) * step / 20))
    done
    xdotool mouseup 1
}
click() { xdotool mousemove "$1" "$2" click 1; }

left=216 top=206 right=1204 bottom=716
drag $left $top $right $bottom
# The tools stand 8 points beside the selection; button after button, 32 apart, from 4 within.
arrow=3 rectangle=4 typed=6 number=7 pixelate=8
choose() { click $((right + 8 + 4 + 15)) $((top + 4 + 15 + 32 * $1)); }

# draws WHAT X Y WIDTH HEIGHT COMMAND…: until the command has changed this part of the screen.
part() { import -window root -crop "$1" -depth 8 rgb:- | cksum; }
draws() {
    local what=$1 place="$4x$5+$2+$3" earlier
    shift 5
    earlier=$(part "$place")
    is_drawn() { [ "$(part "$place")" != "$earlier" ]; }
    "$@"
    await "no aparece $what" is_drawn
}
choose $arrow
draws "la flecha" 520 330 60 20 drag 500 346 596 330
choose $rectangle
draws "el rectángulo" 300 606 200 6 drag 233 609 671 634
write() {
    click 404 346
    xdotool key shift+a q u dead_acute i space s u b e Return
}
choose $typed
draws "el texto" 400 334 90 24 write
choose $number
draws "el número 1" 376 336 20 20 click 386 346
draws "el número 2" 669 601 20 20 click 679 610
choose $pixelate
for line in 487 601 639; do
    draws "el pixelado" 740 $((line - 4)) 60 8 drag 730 $((line - 9)) 813 $((line + 9))
done

# Two equal screenshots in a row: nothing is being painted any more.
is_at_rest() {
    mv -f "$results/session.png" "$work/earlier.png" 2>/dev/null || true
    import -window root -define png:exclude-chunks=date,time "$results/session.png"
    cmp -s "$results/session.png" "$work/earlier.png"
}
await "la pantalla no se queda quieta" is_at_rest
xdotool key Return
await "no aparece la captura de área" has_pictures 2
await "la captura de área no está en el portapapeles" offers_png
xclip -selection clipboard -t image/png -o >"$results/clipboard.png"
# The disc of the first number, as it was clicked on the screen.
red=$(convert "$results/clipboard.png" -crop "1x1+$((377 - left))+$((346 - top))" -depth 8 txt:- |
    only_colour)
[ "$red" = "#ED2E2E" ] || fail "a la captura copiada le faltan las anotaciones"

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
