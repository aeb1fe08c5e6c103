# Shared by the commands of this folder: Qt for Windows, built once from Debian's source of the version whose tools are
# installed here. Sourced, not run, at the top of the tree.

qt_version=6.4.2+dfsg-10
# Of the source package's description, which holds the sums of what it consists of.
qt_sha256=1b4b5c8610a553d4211fa81e268b1a3b0a6339ae5444fdb7e60d7616da651970
qt_folder=$PWD/build/cache/qt-windows

install_windows_tools() {
    install_build_tools
    install_missing g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 dpkg-dev xz-utils
}

# fetch_qt FOLDER: unpacks the source into FOLDER/source. The machine's own package sources stay as they are.
fetch_qt() (
    mkdir -p "$1/lists/partial" "$1/parts"
    sed -E 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources >"$1/parts/qt.sources"
    set -- "$1" -qq -o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$1/parts" \
        -o "Dir::State::lists=$1/lists" -o APT::Sandbox::User=root
    cd "$1" || exit
    shift
    apt-get "$@" update
    apt-get "$@" source --download-only "qt6-base=$qt_version" >/dev/null
    echo "$qt_sha256  qt6-base_$qt_version.dsc" | sha256sum --check --quiet
    dpkg-source --extract "qt6-base_$qt_version.dsc" source >/dev/null
)

# configure_qt FOLDER: prepares FOLDER/build. Left out is what the editor does not use.
configure_qt() {
    without=""
    for feature in sql network dbus opengl vulkan direct2d icu printsupport xml concurrent tabletevent zstd pkg_config; do
        without="$without -DFEATURE_$feature=OFF"
    done
    for bundled in zlib png jpeg pcre2 harfbuzz freetype doubleconversion; do
        without="$without -DFEATURE_system_$bundled=OFF"
    done
    # shellcheck disable=SC2086
    cmake -S "$1/source" -B "$1/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$PWD/packaging/windows/mingw.cmake" -DCMAKE_INSTALL_PREFIX="$qt_folder" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
        -DBUILD_SHARED_LIBS=ON -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DINPUT_opengl=no $without \
        >"$1/configure.log" 2>&1 || { tail -n 40 "$1/configure.log" >&2; return 1; }
}

# build_qt: leaves it in $qt_folder. Takes half an hour on two idle cores, the first time; one that was interrupted goes
# on.
build_qt() {
    [ "$(cat "$qt_folder/version" 2>/dev/null)" = "$qt_version" ] && return 0
    say "Building Qt for Windows, once"
    scratch=$qt_folder-$qt_version-build
    if [ ! -f "$scratch/configured" ]; then
        rm -rf "$scratch"
        fetch_qt "$scratch"
        configure_qt "$scratch"
        touch "$scratch/configured"
    fi
    nice -n 19 cmake --build "$scratch/build"
    cmake --install "$scratch/build" --strip >"$scratch/install.log"
    # On which terms Qt, and what is built into it, is passed on.
    cp "$scratch/source/debian/copyright" "$qt_folder/copyright"
    echo "$qt_version" >"$qt_folder/version"
    rm -rf "$scratch"
}
