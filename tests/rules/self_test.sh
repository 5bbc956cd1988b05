#!/usr/bin/env bash
# Shows that each rule fails where it is broken: a small tree that keeps every rule, then one
# violation at a time.
set -euo pipefail
rules=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
failures=0

# A tree that keeps all rules.
plant() {
    rm -rf "$tree"
    mkdir -p "$tree"/{src/base,src/look,docs,resources/symbols}
    cp "$rules/../../.clang-format" "$tree/"
    cat >"$tree/src/base/CMakeLists.txt" <<'TEXT'
# base: the ground.
# May include: nothing of ours. Qt Core only.
brindlecam_room(base SOURCES Good.cpp Good.h)
TEXT
    cat >"$tree/src/look/CMakeLists.txt" <<'TEXT'
# look: one floor up.
# May include: base.
brindlecam_room(look SOURCES Above.h)
qt_add_resources(brindlecam_look brindlecam_symbols
  FILES
    ${PROJECT_SOURCE_DIR}/resources/symbols/dot.svg)
TEXT
    mkdir -p "$tree"/src/platform/x11/{grab,keys}
    cat >"$tree/src/platform/CMakeLists.txt" <<'TEXT'
# platform: the ports.
# May include: base.
brindlecam_room(platform SOURCES Port.h)
add_subdirectory(x11)
TEXT
    cat >"$tree/src/platform/x11/CMakeLists.txt" <<'TEXT'
# platform/x11: a port.
# May include: platform, base.
# Group grab may include: nothing of ours.
# Group keys may include: grab.
brindlecam_room(platform/x11 SOURCES grab/Eye.h keys/Hand.h)
TEXT
    echo '#pragma once' >"$tree/src/platform/Port.h"
    printf '#pragma once\n\n#include "platform/Port.h"\n\n#include <xcb/xcb.h>\n' >"$tree/src/platform/x11/grab/Eye.h"
    printf '#pragma once\n\n#include "platform/x11/grab/Eye.h"\n' >"$tree/src/platform/x11/keys/Hand.h"
    cat >"$tree/resources/symbols/dot.svg" <<'TEXT'
<svg xmlns="http://www.w3.org/2000/svg" width="24" height="24" viewBox="0 0 24 24">
  <path d="M9 12h6" fill="none" stroke="#000" stroke-width="6"/>
</svg>
TEXT
    echo '#pragma once' >"$tree/src/base/Good.h"
    printf '#include "base/Good.h"\n\n#include <QString>\n' >"$tree/src/base/Good.cpp"
    printf '#pragma once\n\n#include "base/Good.h"\n' >"$tree/src/look/Above.h"
    mkdir -p "$tree/tests/unit"
    echo 'int good();' >"$tree/tests/unit/tst_good.cpp"
    echo 'brindlecam_unit_tests(base SOURCES tst_good.cpp)' >"$tree/tests/unit/CMakeLists.txt"
    printf 'See `src/base/Good.h`, `base/Good.cpp` and [more](docs/MORE.md), not `image/png`.\n' >"$tree/README.md"
    echo '[back](../README.md)' >"$tree/docs/MORE.md"
    echo 'See `base/Good.h`.' >"$tree/CONTRIBUTING.md"
}

passes() {
    if ! "$rules/$1.sh" "$tree" >"$tree/.out" 2>&1; then
        echo "$1 complains about a tree without fault:"
        cat "$tree/.out"
        failures=$((failures + 1))
    fi
}

# catches RULE WHAT COMMAND: after the command, run inside a fresh tree, the rule must fail.
catches() {
    local rule=$1 what=$2
    plant
    (cd "$tree" && eval "$3")
    if "$rules/$rule.sh" "$tree" >/dev/null 2>&1; then
        echo "$rule does not see: $what"
        failures=$((failures + 1))
    fi
}

for rule in rooms system harness covered docs listed symbols machine sizes format; do
    plant
    passes $rule
done

catches rooms "an include of a room above" 'echo "#include \"look/Above.h\"" >>src/base/Good.cpp'
catches rooms "an include without its room" 'echo "#include \"Good.h\"" >>src/base/Good.cpp'
catches rooms "a Qt header by its module" 'echo "#include <QtWidgets/QWidget>" >>src/base/Good.cpp'
catches rooms "permission to include a room above" 'sed -i "2s/.*/# May include: look./" src/base/CMakeLists.txt'
catches rooms "a room that does not say what it is for" 'sed -i 1d src/base/CMakeLists.txt'
catches rooms "a room that does not say what it includes" 'sed -i 2d src/look/CMakeLists.txt'
catches rooms "a room without a list" 'mkdir src/canvas'
catches rooms "an include in angle brackets" 'echo "#include <look/Above.h>" >>src/base/Good.cpp'
catches rooms "a class of a port beyond the choice of ports" \
    'echo "#include \"platform/x11/grab/Eye.h\"" >>src/look/Above.h'
catches rooms "the same where ports may be included" \
    'sed -i "2s/base/platform, base/" src/look/CMakeLists.txt; echo "#include \"platform/x11/grab/Eye.h\"" >>src/look/Above.h'
catches rooms "the window system outside of its port" 'echo "#include <xcb/xcb.h>" >>src/look/Above.h'
catches rooms "the message bus outside of its port" 'echo "#include <QDBusConnection>" >>src/look/Above.h'
catches rooms "the engine outside of its room" 'echo "#include <tesseract/baseapi.h>" >>src/look/Above.h'
catches rooms "a detour to a room above" 'echo "#include \"platform/../look/Above.h\"" >>src/base/Good.cpp'
catches rooms "a detour between groups" \
    'echo "#include \"platform/x11/grab/../keys/Hand.h\"" >>src/platform/x11/grab/Eye.h'
catches rooms "an import" 'echo "#import \"look/Above.h\"" >>src/base/Good.cpp'
catches rooms "an include behind a comment" 'echo "/**/ #include \"look/Above.h\"" >>src/base/Good.cpp'
catches rooms "a class of a port on the roof" 'echo "#include \"platform/x11/grab/Eye.h\"" >src/main.cpp'
catches rooms "the window system on the roof" 'echo "#include \"xcb/xcb.h\"" >src/main.cpp'
catches rooms "permission to include a port" 'sed -i "2s/base/platform\/x11, base/" src/look/CMakeLists.txt'
catches rooms "groups that nobody names any more" 'sed -i "/^# Group/d" src/platform/x11/CMakeLists.txt'
catches rooms "a system without a list" 'mkdir src/platform/wayland; echo "#pragma once" >src/platform/wayland/Eye.h'
catches rooms "an arrow between groups" 'echo "#include \"platform/x11/keys/Hand.h\"" >>src/platform/x11/grab/Eye.h'
catches rooms "a group that nobody names" 'mkdir src/platform/x11/attic; echo "#include \"base/Good.h\"" >src/platform/x11/attic/Stray.h'
catches rooms "a group that is not there" 'rm -r src/platform/x11/keys'
catches rooms "permission to include a later group" \
    'sed -i "s/# Group grab may include: nothing of ours/# Group grab may include: keys/" src/platform/x11/CMakeLists.txt'
catches rooms "a room nobody knows" 'cp -r src/look src/attic; sed -i "1s/look/attic/" src/attic/CMakeLists.txt'
catches system "a question when compiling" 'printf "#ifdef Q_OS_MACOS\n#endif\n" >>src/look/Above.h'
catches system "a question with the compiler'\''s word" 'printf "#if defined(__linux__)\n#endif\n" >>src/base/Good.cpp'
catches system "a question when running" 'echo "bool a = QGuiApplication::platformName().isEmpty();" >>src/base/Good.cpp'
catches harness "the window system in a test" 'mkdir -p tests/desktop; echo "xcb_flush(c);" >tests/desktop/tst_a.cpp'
catches harness "the window system'\''s keys in a test" 'mkdir -p tests/desktop; echo "tap(XK_Escape);" >tests/desktop/tst_a.cpp'
catches harness "the window system in a test'\''s base" \
    'mkdir -p tests/desktop/support; echo "#include <xcb/shape.h>" >tests/desktop/support/Base.h'
catches harness "the window system on a long walk" 'mkdir -p bench/soak; echo "xcb_flush(c);" >bench/soak/Walk.cpp'
catches harness "a shortcut to the window system" \
    'mkdir -p tests/desktop; echo "#include \"desktop/support/x11/Connection.h\"" >tests/desktop/tst_a.cpp'
catches covered "a unit without a test" 'echo "int a;" >src/base/Bare.cpp'
catches covered "a test of a unit that is gone" 'rm src/base/Good.cpp; echo "// Covers Good." >tests/unit/tst_other.cpp'
catches covered "a unit that is named elsewhere than in the first line" \
    'echo "int a;" >src/base/Bare.cpp; echo "// Covers Bare." >>tests/unit/tst_good.cpp'
catches docs "a code span without a file" 'echo "\`src/base/Gone.h\`" >>README.md'
catches docs "a file of a room that is gone" 'echo "\`base/Gone.cpp\`" >>docs/MORE.md'
catches docs "a link to nowhere" 'echo "[x](GONE.md)" >>docs/MORE.md'
catches docs "a missing README" 'rm README.md'
catches listed "a file that nobody builds" 'echo "#pragma once" >src/base/Stray.h'
catches listed "a file whose name only ends like a listed one" 'echo "#pragma once" >src/base/ood.h'
catches symbols "another grid" 'sed -i "s/0 0 24 24/0 0 16 16/" resources/symbols/dot.svg'
catches symbols "letters" 'sed -i "2s|.*|<text>A</text>|" resources/symbols/dot.svg'
catches symbols "a colour" 'sed -i "s/#000/#0a0/" resources/symbols/dot.svg'
catches symbols "a style" 'sed -i "s/fill=\"none\"/style=\"fill:none\"/" resources/symbols/dot.svg'
catches symbols "a symbol left out of the program" 'cp resources/symbols/dot.svg resources/symbols/dash.svg'
catches symbols "a symbol whose name only ends like a listed one" 'mv resources/symbols/dot.svg resources/symbols/t.svg'
catches machine "a path of one machine" 'echo "see /work""/notes.txt" >>docs/MORE.md'
catches machine "a fixed name below /tmp" 'echo "touch /tmp""/lock" >run'
catches sizes "a long file" 'seq 401 | sed "s|.*|//|" >>src/base/Good.cpp'
catches format "a line out of form" 'echo "int   a;" >>src/base/Good.cpp'
catches format "a line of C out of form" 'echo "int   a;" >src/base/good.c'

[ "$failures" -eq 0 ] || exit 1
echo "every rule sees what it is for"
