# Shared by the rule tests. Each is called with the project's folder and prints every violation as
# "file:line: why"; it fails when there is one.
set -euo pipefail
cd "$1"

violations=0
report() {
    echo "$*"
    violations=$((violations + 1))
}
finish() {
    [ "$violations" -eq 0 ] || { echo "$violations violation(s)" && exit 1; }
}

# Our own C and C++ files below the given folders, those that exist.
sources() {
    local folder
    for folder in "$@"; do
        [ ! -d "$folder" ] || find "$folder" \( -name '*.h' -o -name '*.c' -o -name '*.cpp' -o -name '*.mm' \) -print
    done | sort
}

# Every text file that belongs to the project: what git would keep, or all without a repository.
project_files() {
    if git rev-parse --show-toplevel >/dev/null 2>&1 && [ -e .git ]; then
        git -c safe.directory='*' ls-files --cached --others --exclude-standard
    else
        find . -path ./build -prune -o -type f -printf '%P\n'
    fi | sort
}
