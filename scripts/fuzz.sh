#!/usr/bin/env bash
# Looks for bytes that make the code break a promise (tests/fuzz).
#   scripts/fuzz.sh                     every target, a minute each
#   scripts/fuzz.sh 300 marks history   these two, five minutes each
# It begins with the corpus of the repository and leaves that alone: what it finds on the way goes to
# build/fuzz/corpus, what breaks a promise to build/fuzz/crashes, what each run said to build/fuzz/log.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
source scripts/setup.sh

seconds=${1-60}
shift || true
known=()
for folder in tests/fuzz/corpus/*/; do
    known+=("$(basename "$folder")")
done
names=("$@")
[ ${#names[@]} -gt 0 ] || names=("${known[@]}")

wrong() {
    echo "$1" >&2
    echo "Uso: scripts/fuzz.sh [SEGUNDOS [NOMBRE…]], con estos nombres: ${known[*]}" >&2
    exit 64
}
[[ "$seconds" =~ ^[1-9][0-9]*$ ]] || wrong "«$seconds» no es un número de segundos."
for name in "${names[@]}"; do
    [[ " ${known[*]} " == *" $name "* ]] || wrong "No hay nada que se llame «$name»."
done

ensure_packages build libraries program tests fuzz
build_preset fuzz

# The targets write many small files, which no disk needs to see.
memory=/dev/shm
[ -w "$memory" ] || memory=${TMPDIR:-/tmp}
TMPDIR=$(mktemp -d "$memory/brindlecam-fuzz.XXXXXX")
trap 'rm -rf "$TMPDIR"' EXIT
export TMPDIR seconds
export LSAN_OPTIONS="suppressions='$PWD/tests/lsan.supp':print_suppressions=0"
export UBSAN_OPTIONS=print_stacktrace=1

# Fuzzes one target; fails where it was ended before its time.
fuzz() {
    local name=$1 found=build/fuzz/corpus/$1 log=build/fuzz/log/$1
    local -a limits=(-max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 -max_len=2000)
    mkdir -p "$found" build/fuzz/log build/fuzz/crashes
    if "build/fuzz/fuzz_$name" "${limits[@]}" -artifact_prefix="build/fuzz/crashes/$name-" \
        "$found" "tests/fuzz/corpus/$name" >"$log" 2>&1; then
        sed -n "s/^#\([0-9]*\)[[:space:]]*DONE *cov: \([0-9]*\).*/$name: \1 vueltas, cobertura \2/p" "$log"
        return
    fi
    echo "$name: FALLO. $(grep -m1 -E 'broken promise|ERROR|runtime error' "$log" || true)"
    sed -n "s/.*Test unit written to /  Lo provoca: /p" "$log"
    echo "  Registro: $log"
    return 1
}
export -f fuzz

echo "Buscando fallos: ${names[*]}, $seconds s cada uno."
printf '%s\n' "${names[@]}" | xargs -P "$(nproc)" -I NAME bash -c 'fuzz NAME' || {
    echo "Hay fallos. Para repetir uno: build/fuzz/fuzz_NOMBRE ARCHIVO" >&2
    exit 1
}
echo "Ningún fallo."
