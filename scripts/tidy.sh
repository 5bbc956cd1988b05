#!/usr/bin/env bash
# clang-tidy over the sources that differ from the main branch (over the last commit's on the main
# branch itself), uncommitted ones included; with "all", over every source. build/dev must be built.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

changed_files() {
    local base=""
    local branch
    for branch in main origin/main; do
        base=$(git merge-base HEAD "$branch" 2>/dev/null) && break
    done
    if [ -z "$base" ] || [ "$base" = "$(git rev-parse HEAD)" ]; then
        base=$(git rev-parse --verify -q HEAD~1) || base=HEAD
    fi
    git diff --name-only --diff-filter=d "$base"
    git ls-files --others --exclude-standard
}

if [ "${1-}" = all ]; then
    files=$(git ls-files)
else
    files=$(changed_files)
fi
# A header is checked through the source of the same name.
sources=$(printf '%s\n' "$files" | sed -n 's/\.\(cpp\|h\)$/.cpp/p' | sort -u)
present=()
while IFS= read -r source; do
    # Only what the build compiles has a command to check it with.
    if [ -f "$source" ] && grep -qF "$PWD/$source\"" build/dev/compile_commands.json; then
        present+=("$source")
    fi
done <<<"$sources"
if [ ${#present[@]} -eq 0 ]; then
    echo "clang-tidy: no hay archivos cambiados."
    exit 0
fi
echo "clang-tidy: ${#present[@]} archivos"
printf '%s\0' "${present[@]}" |
    # The compile commands carry GCC's warnings.
    xargs -0 -n 1 -P "$(nproc)" clang-tidy -p build/dev --quiet --warnings-as-errors='*' \
        --extra-arg=-Wno-unknown-warning-option
