#!/usr/bin/env bash
# Every symbol is drawn on the grid of 24 with black paths only, which can be tinted and which every
# SVG reader draws alike, and goes into the program.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh" "$1"

list=src/look/CMakeLists.txt
while IFS= read -r file; do
    grep -qF ' viewBox="0 0 24 24"' "$file" || report "$file:1: not on the grid 0 0 24 24"
    while IFS=: read -r line element; do
        report "$file:$line: ${element#<} is no path"
    done < <(grep -noE '<[A-Za-z][A-Za-z0-9]*' "$file" | grep -vE ':<(svg|path)$')
    while IFS=: read -r line paint; do
        report "$file:$line: $paint is not black"
    done < <(grep -noE '\b(fill|stroke|style|class|opacity)="[^"]*"' "$file" |
        grep -vE ':(fill|stroke)="(none|#000)"$')
    grep -qE "/${file//./\\.}\)?$" "$list" || report "$file:1: not listed in $list"
done < <([ ! -d resources/symbols ] || find resources/symbols -type f | sort)
finish
