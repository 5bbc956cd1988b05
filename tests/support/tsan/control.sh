#!/usr/bin/env bash
# control.sh COMMAND…: whether each race of Control.cpp is reported, under the options in the
# environment, and nothing else is.
set -uo pipefail

readonly exit_code=66 # what TSAN_OPTIONS wants after a report
readonly expected='racedAfterStart
racedByCopying
racedWithJob
racedWithQueuedCall'

reports=$("$@" 2>&1 >/dev/null)
status=$?
found=$(sed -n "s/^ *Location is global '\([^']*\)'.*/\1/p" <<<"$reports" | sort)
if [ "$status" != "$exit_code" ] || [ "$found" != "$expected" ] ||
    [ "$(grep -c 'WARNING: ThreadSanitizer' <<<"$reports")" != "$(wc -l <<<"$expected")" ]; then
    printf 'exit code %s, expected %s\nraces seen:\n%s\nexpected:\n%s\n\n%s\n' \
        "$status" "$exit_code" "$found" "$expected" "$reports"
    exit 1
fi
