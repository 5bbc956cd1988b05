# What ./run and ./test share: finding and installing packages, building a preset. Sourced with the
# project's folder as the working folder; messages to the user are Spanish, like the program.

package_list=packages/debian.txt

# The lines of the given sections of the list.
listed_packages() {
    local section
    for section in "$@"; do
        awk -v wanted="[$section]" '
            /^\[/ { inside = ($0 == wanted); found = found || inside; next }
            inside && NF && !/^#/ { print }
            END { exit !found }
        ' "$package_list" || {
            echo "$package_list: falta la sección [$section]" >&2
            return 1
        }
    done
}

is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Whether the package can be installed under this very name (a virtual package cannot).
is_available() {
    apt-cache policy "$1" 2>/dev/null | grep -q '^  Candidate: [^(]'
}

# The lines of which no alternative is installed.
missing_packages() {
    local line alternative
    listed_packages "$@" | while IFS= read -r line; do
        for alternative in ${line//|/ }; do
            is_installed "$alternative" && continue 2
        done
        printf '%s\n' "$line"
    done
}

# Turns lines with alternatives into one name each: the first that can be installed.
chosen_packages() {
    local line alternative
    while IFS= read -r line; do
        for alternative in ${line//|/ }; do
            if is_available "$alternative"; then
                printf '%s\n' "$alternative"
                continue 2
            fi
        done
        # Unknown: apt-get itself says so best.
        printf '%s\n' "${line%% *}"
    done
}

# Says what to type where we cannot install anything ourselves, and gives up.
ask_for_packages() {
    local names
    names=$(printf '%s\n' "$1" | sed 's/ *|.*//' | tr '\n' ' ')
    {
        echo "Faltan paquetes. Instálalos y vuelve a intentarlo:"
        echo "  sudo apt-get update && sudo apt-get install --no-install-recommends ${names% }"
    } >&2
    exit 3
}

# ensure_packages SECTION…: returns once everything of these sections is installed.
ensure_packages() {
    local missing chosen
    local -a as_root=() names=()
    if ! command -v dpkg-query >/dev/null; then
        ask_for_packages "$(listed_packages "$@")"
    fi
    missing=$(missing_packages "$@")
    [ -n "$missing" ] || return 0

    command -v apt-get >/dev/null || ask_for_packages "$missing"
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || ask_for_packages "$missing"
        # Without a terminal nobody could type the password.
        [ -t 0 ] || sudo -n true 2>/dev/null || ask_for_packages "$missing"
        as_root=(sudo)
    fi
    echo "Instalando lo que falta: $(printf '%s\n' "$missing" | tr '\n' ' ')"
    "${as_root[@]}" apt-get update -q || ask_for_packages "$missing"
    chosen=$(printf '%s\n' "$missing" | chosen_packages)
    mapfile -t names <<<"$chosen"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y \
        --no-install-recommends -o DPkg::Lock::Timeout=300 "${names[@]}" ||
        ask_for_packages "$chosen"
}

# build_preset PRESET [CMAKE OPTION…] [-- BUILD OPTION…]
build_preset() {
    local preset=$1 home
    local -a configure=() build=()
    shift
    while [ $# -gt 0 ] && [ "$1" != -- ]; do
        configure+=("$1")
        shift
    done
    [ $# -eq 0 ] || { shift && build=("$@"); }
    # A build folder that came along with a copy of the project still points at the original.
    home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "build/$preset/CMakeCache.txt" 2>/dev/null) || true
    if [ -n "$home" ] && [ "$home" != "$PWD" ]; then
        configure+=(--fresh)
    fi
    mkdir -p build
    if ! cmake --preset "$preset" "${configure[@]}" >"build/$preset.configure.log" 2>&1; then
        cat "build/$preset.configure.log" >&2
        return 1
    fi
    NINJA_STATUS="Compilando $preset: %p, %e s, paso %f de %t: " \
        cmake --build "build/$preset" --parallel "$(nproc)" "${build[@]}"
}
