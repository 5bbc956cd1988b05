#!/usr/bin/env bash
# Every source file is named in the CMakeLists.txt of its folder, or of the nearest one above. The
# headers that tests share belong to no program and need not be.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh" "$1"

while IFS= read -r file; do
    folder=$(dirname "$file")
    while [ "$folder" != . ] && [ ! -f "$folder/CMakeLists.txt" ]; do
        folder=$(dirname "$folder")
    done
    name=${file#"$folder"/}
    grep -qE "(^|[[:space:](/])${name//./\\.}([[:space:])]|$)" "$folder/CMakeLists.txt" ||
        report "$file:1: not listed in $folder/CMakeLists.txt"
done < <(sources src tests tools bench | grep -v '^tests/.*\.h$')
finish
