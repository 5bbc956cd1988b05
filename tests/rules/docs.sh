#!/usr/bin/env bash
# Paths named in the documents exist.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh" "$1"

documents=(README.md CONTRIBUTING.md)
shopt -s nullglob
for document in docs/*.md; do
    documents+=("$document")
done

exists() { [ -e "$1" ] || [ -e "src/$1" ]; }

# Code spans that look like paths of ours, and the targets of links. A path begins with ./, with one
# of our folders or a room, or names a file with an extension of ours inside a folder.
looks_like_path() {
    case $1 in
    *[[:space:]\*\<\>\$~\{\}\"\'\(]* | http*:* | mailto:* | /* | \#* | build/*) return 1 ;;
    ./*) return 0 ;;
    */*.h | */*.cpp | */*.md | */*.sh | */*.txt | */*.svg | */*.png | */*.ts | */*.cmake) return 0 ;;
    */*) [ -d "${1%%/*}" ] || [ -d "src/${1%%/*}" ] ;;
    *.md | CMakeLists.txt | *Presets.json | LICENSE) return 0 ;;
    *) return 1 ;;
    esac
}

for document in "${documents[@]}"; do
    if [ ! -f "$document" ]; then
        report "$document:1: missing"
        continue
    fi
    here=$(dirname "$document")
    while IFS=: read -r line name; do
        name=${name#\`}
        name=${name%\`}
        looks_like_path "$name" || continue
        exists "${name%%:*}" || report "$document:$line: $name does not exist"
    done < <(grep -noE '`[^`]+`' "$document")
    while IFS=: read -r line name; do
        name=${name#](}
        name=${name%)}
        name=${name%%#*}
        case $name in '' | http*:* | mailto:*) continue ;; esac
        [ -e "$here/$name" ] || report "$document:$line: the link $name leads nowhere"
    done < <(grep -noE '\]\([^)]+\)' "$document")
done
finish
