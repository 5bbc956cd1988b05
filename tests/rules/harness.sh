#!/usr/bin/env bash
# Desktop tests say what a person does: what the window system calls it is known in one folder.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh" "$1"

words='\b(xcb|XCB)_|\bXK_|\b_NET_|\bWM_[A-Z]|<(xcb|X11)/|desktop/support/x11/'
while IFS=: read -r file line text; do
    report "$file:$line: only tests/desktop/support/x11 knows the window system: ${text#"${text%%[![:space:]]*}"}"
done < <(sources tests/desktop bench/soak | grep -vE '^tests/desktop/(x11|support/x11)/|^tests/desktop/support/Desktop.cpp$' |
    xargs -r -d '\n' grep -nHE "$words")
finish
