#!/usr/bin/env bash
# A room's CMakeLists.txt opens with what it is for and what it may include; that names rooms below
# only, and the files keep to it.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh" "$1"

# From the ground up.
order=(base pictures platform app canvas recents capture long settings)

# The rooms that may be included, one word each, from a line such as "# May include: base, app. Why."
allowed_by() {
    local list=${1#*: }
    list=${list%%.*}
    [ "$list" = "nothing of ours" ] || echo "${list//,/ }"
}

for folder in src/*/; do
    room=$(basename "$folder")
    list=${folder}CMakeLists.txt
    if [ ! -f "$list" ]; then
        report "$list:1: the room has no CMakeLists.txt"
        continue
    fi
    first=$(sed -n 1p "$list")
    second=$(sed -n 2p "$list")
    [[ "$first" == "# $room: "* ]] || report "$list:1: must open with \"# $room: what it is for\""
    if [[ "$second" != "# May include: "*.* ]]; then
        report "$list:2: must say \"# May include: rooms.\""
        continue
    fi
    below=" "
    known=no
    for other in "${order[@]}"; do
        [ "$other" != "$room" ] || { known=yes && break; }
        below+="$other "
    done
    [ "$known" = yes ] || report "$list:1: tests/rules/rooms.sh does not know the room $room"
    allowed=" $(allowed_by "$second") "
    for other in $allowed; do
        [[ "$below" == *" $other "* ]] || report "$list:2: $other is not below $room"
    done
    while IFS=: read -r file line text; do
        target=$(sed -n 's/.*"\([^"]*\)".*/\1/p' <<<"$text")
        case $target in
        *.moc) ;;
        */*)
            other=${target%%/*}
            [ "$other" = "$room" ] || [[ "$allowed" == *" $other "* ]] ||
                report "$file:$line: $room may not include $target"
            ;;
        *) report "$file:$line: write the room, as in \"$room/$target\"" ;;
        esac
    done < <(sources "$folder" | xargs -r -d '\n' grep -nHE '^[[:space:]]*#[[:space:]]*include[[:space:]]*"')
done

# With the module's name in front, a header is found even where the module is not linked, and the
# windowless rooms could not be told apart any more.
while IFS=: read -r file line text; do
    report "$file:$line: name the class alone: $text"
done < <(sources src | xargs -r -d '\n' grep -nHE '#[[:space:]]*include[[:space:]]*<Qt[A-Z][A-Za-z0-9]*/')
finish
