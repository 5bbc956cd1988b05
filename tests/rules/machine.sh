#!/usr/bin/env bash
# No file names a place that exists on one machine only, nor a fixed name below /tmp.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh" "$1"

place='(^|[^A-Za-z0-9_.-])/(work|workspace|root|mnt|tmp)/[A-Za-z]'
while IFS=: read -r file line text; do
    report "$file:$line: a path of one machine: ${text#"${text%%[![:space:]]*}"}"
done < <(project_files | grep -v '^tests/rules/' | xargs -r -d '\n' grep -nHIE "$place")
finish
