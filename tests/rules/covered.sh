#!/usr/bin/env bash
# Each unit has a test of its name, or is named in the first line of the test that covers it, as in
# "// Covers KeyGrab, KeySink.": whoever changes a unit finds what holds it.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh" "$1"

units() {
    [ ! -d src ] || find src -name '*.cpp' ! -name main.cpp -printf '%f %p\n' | sed 's/\.cpp / /'
}
tests=$([ ! -d tests ] || find tests -name 'tst_*.cpp')

# "tst_x11_hotkeys" is a test of X11HotKeys.
names=$(sed 's|.*/tst_||; s|\.cpp$||; s|_||g' <<<"$tests" | tr '[:upper:]' '[:lower:]')
covered=$(
    while read -r file; do
        [ -z "$file" ] || head -n 1 "$file" | sed -n "s|^// Covers \(.*\)\.$|\1|p" | tr -d ' ' | tr ',' '\n' |
            sed "s|\$| $file|"
    done <<<"$tests"
)
while read -r unit path; do
    grep -qx "${unit,,}" <<<"$names" || grep -q "^$unit " <<<"$covered" ||
        report "$path:1: $unit has no test of its name, and none says that it covers it"
done < <(units)
while read -r unit file; do
    [ -z "$unit" ] || units | grep -q "^$unit " || report "$file:1: there is no unit named $unit to cover"
done <<<"$covered"
finish
