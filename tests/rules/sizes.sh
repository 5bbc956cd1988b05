#!/usr/bin/env bash
# A file of more than 400 lines holds a second thing that wants a file of its own.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh" "$1"

most=400
while IFS= read -r file; do
    lines=$(wc -l <"$file")
    [ "$lines" -le $most ] || report "$file:$most: $lines lines; split it by meaning"
done < <(sources src tests tools bench)
finish
