#!/usr/bin/env bash
# A room's CMakeLists.txt opens with what it is for and what it may include; that names rooms below
# only, and the files keep to it. A room may be parted into groups, folders of their own: for each, a
# line says which groups before it may be included.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh" "$1"

# From the ground up. A room inside another one's folder is a room of its own.
order=(base feed pictures reading platform platform/unix platform/linux platform/x11 platform/factory
    preferences look notices history canvas pins capture long drawer settings shell)

# Headers from outside that only these rooms may include.
outside='xcb/ platform/x11
X11/ platform/x11
QDBus platform/linux
qdbus platform/linux
dbus/ platform/linux
QtDBus platform/linux
tesseract/ reading
leptonica/ reading'

# The words of a line such as "# May include: base, app. Why."
allowed_by() {
    local list=${1#*: }
    list=${list%%.*}
    [ "$list" = "nothing of ours" ] || echo "${list//,/ }"
}

is_room() {
    local room
    for room in "${order[@]}"; do
        [ "$room" != "$1" ] || return 0
    done
    return 1
}

# What the awk script below has to know: rooms, what each may include, and the same for groups.
knowledge=$(for room in "${order[@]}"; do echo "room $room"; done)

while IFS= read -r folder; do
    room=${folder#src/}
    list=$folder/CMakeLists.txt
    if [ ! -f "$list" ]; then
        [[ "$room" == */* ]] || report "$list:1: the room has no CMakeLists.txt"
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
    for other in "${order[@]}"; do
        [ "$other" != "$room" ] || break
        below+="$other "
    done
    is_room "$room" || report "$list:1: tests/rules/rooms.sh does not know the room $room"
    for other in $(allowed_by "$second"); do
        [[ "$below" == *" $other "* ]] || report "$list:2: $other is not below $room"
        [[ "$other" != platform/* || "$room" == platform/* ]] ||
            report "$list:2: only the choice of ports includes $other"
        knowledge+=$'\n'"may $room $other"
    done
    before=" "
    number=0
    while IFS= read -r line; do
        number=$((number + 1))
        [[ "$line" =~ ^"# Group "([^ ]+)" may include: " ]] || continue
        group=${BASH_REMATCH[1]}
        [ -d "$folder/$group" ] || report "$list:$number: there is no group $group"
        knowledge+=$'\n'"group $room $group"
        for other in $(allowed_by "$line"); do
            [[ "$before" == *" $other "* ]] || report "$list:$number: $other is not before $group"
            knowledge+=$'\n'"groupmay $room/$group $other"
        done
        before+="$group "
    done <"$list"
    while IFS= read -r group; do
        [ -n "$(sources "$group")" ] || continue
        group=${group#"$folder"/}
        is_room "$room/$group" || [[ "$before" == *" $group "* ]] || [ "$room/$group" = platform/null ] ||
            report "$list:1: $group is neither a room nor a group that is named here"
    done < <(find "$folder" -mindepth 1 -maxdepth 1 -type d)
done < <(find src -mindepth 1 -type d | sort)

while IFS= read -r violation; do
    report "$violation"
done < <(sources src | xargs -r -d '\n' grep -nHE '#[[:space:]]*(include|include_next|import)[[:space:]]*["<]' |
    awk -v knowledge="$knowledge" -v outside="$outside" '
    # The innermost room of a path below src; "" where there is none.
    function room_of(path, prefix) {
        prefix = path
        while (sub("/[^/]*$", "", prefix))
            if (prefix in rooms)
                return prefix
        return ""
    }
    function group_of(path, room, rest) {
        rest = substr(path, length(room) + 2)
        return rest ~ "/" && (room, substr(rest, 1, index(rest, "/") - 1)) in groups \
            ? substr(rest, 1, index(rest, "/") - 1) : ""
    }
    BEGIN {
        count = split(knowledge, lines, "\n")
        for (i = 1; i <= count; ++i) {
            split(lines[i], word, " ")
            if (word[1] == "room") rooms[word[2]]
            if (word[1] == "may") may[word[2], word[3]]
            if (word[1] == "group") { groups[word[2], word[3]]; parted[word[2]] }
            if (word[1] == "groupmay") groupmay[word[2], word[3]]
        }
        kinds = split(outside, lines, "\n")
        for (i = 1; i <= kinds; ++i) {
            split(lines[i], word, " ")
            kind[i] = word[1]
            home[i] = word[2]
        }
        for (room in rooms) {
            split(room, word, "/")
            grounds[word[1]]
        }
    }
    {
        split($0, part, ":")
        file = part[1]
        place = file ":" part[2] ": "
        path = substr(file, 5)
        room = room_of(path)
        if (!match($0, /["<][^">]*[">]/))
            next
        bracket = substr($0, RSTART, 1)
        target = substr($0, RSTART + 1, RLENGTH - 2)
        split(target, word, "/")
        if (target ~ "(^|/)[.]?[.]?/") {
            print place "a detour: " target
            next
        }
        for (i = 1; i <= kinds; ++i)
            if (index(target, kind[i]) == 1 && room != home[i])
                print place "only " home[i] " may include " target
        if (bracket == "<") {
            if (target ~ "/" && word[1] in grounds)
                print place "ours is included in quotes: " target
            next
        }
        if (target ~ /\.moc$/)
            next
        if (room == "") { # on the roof
            if (room_of(target) ~ "^platform/")
                print place "only platform/factory may include " target
            next
        }
        if (target !~ "/") {
            print place "write the room, as in \"" room "/" target "\""
            next
        }
        other = room_of(target)
        if (other != room && !((room, other) in may))
            print place room " may not include " target
        if (other != room || !(room in parted))
            next
        from = group_of(path, room)
        to = group_of(target, room)
        if (from != "" && from != to && !((room "/" from, to) in groupmay))
            print place "the group " from " may not include " target
    }')

# With the module's name in front, a header is found even where the module is not linked, and the
# windowless rooms could not be told apart any more.
while IFS=: read -r file line text; do
    report "$file:$line: name the class alone: $text"
done < <(sources src | xargs -r -d '\n' grep -nHE '#[[:space:]]*include[[:space:]]*<Qt[A-Z][A-Za-z0-9]*/')
finish
