# Shared by ./run, ./test and ./lint: installs what is missing on a Debian machine. Sourced, not run.

say() { printf '\n== %s\n' "$*"; }

# Tests and screenshots read the same everywhere.
export LANG=C.UTF-8

# install_missing PACKAGE…: asks the package manager only for what is not there yet.
install_missing() {
    missing=""
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || missing="$missing $package"
    done
    [ -z "$missing" ] && return 0
    say "Installing:$missing"
    if [ "$(id -u)" = 0 ]; then as_root=""; else as_root=sudo; fi
    $as_root apt-get update -qq
    # shellcheck disable=SC2086
    DEBIAN_FRONTEND=noninteractive $as_root apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

install_build_tools() {
    install_missing cmake g++ ninja-build ca-certificates icu-devtools \
        qt6-base-dev qt6-base-dev-tools qt6-svg-dev qt6-translations-l10n \
        libgtest-dev
    command -v npm >/dev/null || install_missing npm
}

# build PRESET [TARGET…]
build() {
    preset=$1
    shift
    say "Building ($preset)"
    [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >/dev/null
    if [ $# -eq 0 ]; then
        cmake --build --preset "$preset"
    else
        cmake --build --preset "$preset" --target "$@"
    fi
}
