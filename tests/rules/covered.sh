#!/usr/bin/env bash
# Each unit has a test of its name, or is named in the first line of the test that covers it, as in
# "// Covers KeyGrab, KeySink.": whoever changes a unit finds what holds it. Names are compared
# without X11, which the place of a unit or of a test says already.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh" "$1"

# by_name: a path a line, with the name that it stands for before it.
by_name() {
    while read -r path; do
        local name=${path##*/}
        name=${name#tst_}
        name=${name%.cpp}
        name=${name//_/}
        name=${name,,}
        [ "$name" = x11 ] || name=${name#x11}
        echo "$name $path"
    done
}

find_units() {
    [ ! -d src ] || find src -name '*.cpp' ! -name main.cpp | sort
}

find_tests() {
    [ ! -d tests ] || find tests -name 'tst_*.cpp' | sort
}

declare -A tested covered units
while read -r name _; do
    tested[$name]=1
done < <(find_tests | by_name)
while read -r file; do
    list=$(sed -n '1s|^// Covers \(.*\)\.$|\1|p' "$file")
    for unit in ${list//,/ }; do
        covered[$unit]=$file
    done
done < <(find_tests)

while read -r name path; do
    unit=$(basename "$path" .cpp)
    units[$unit]=1
    [ -n "${tested[$name]-}${covered[$unit]-}" ] ||
        report "$path:1: $unit has no test of its name, and none says that it covers it"
done < <(find_units | by_name)
for unit in "${!covered[@]}"; do
    [ -n "${units[$unit]-}" ] ||
        report "${covered[$unit]}:1: there is no unit named $unit to cover"
done
finish
