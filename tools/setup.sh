# Shared by run and test: installs what is missing and builds, quietly when there is nothing to do.

build_packages=(g++ cmake ninja-build qt6-base-dev qt6-serialport-dev)
test_packages=(libgtest-dev libgmock-dev pkg-config libglib2.0-dev libx11-dev libxtst-dev libpng-dev xvfb
               openbox dbus-daemon at-spi2-core cups printer-driver-cups-pdf poppler-utils
               appstream desktop-file-utils libglib2.0-bin man-db shared-mime-info dpkg-dev file mmdebstrap
               clang libclang-rt-14-dev g++-mingw-w64-x86-64-posix)

# How ./test configures the presets: the release as users build it, but that warnings are errors, and
# with the tests of the built programs.
release_arguments=(-DMEMWRIGHT_TESTS=ON -DMEMWRIGHT_CODE_TESTS=OFF -DMEMWRIGHT_UNITY_TESTS=ON
                   -DCMAKE_COMPILE_WARNING_AS_ERROR=ON)

say() { echo "$*" >&2; }

# Prints those of the packages that are not installed.
missing_packages() {
    local name
    if ! command -v dpkg-query > /dev/null; then
        echo "$@"
        return
    fi
    for name in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2> /dev/null)" = installed ] || echo "$name"
    done
}

# Makes sure that Debian packages are installed.
need_packages() {
    local missing as_root=()
    missing=($(missing_packages "$@"))
    [ ${#missing[@]} -eq 0 ] && return
    if ! command -v apt-get > /dev/null; then
        say "These packages are needed, under Debian's names: ${missing[*]}"
        say "Install what your system calls them (README.md, \"Building elsewhere\"), then build with"
        say "    cmake --preset release && cmake --build --preset release"
        exit 1
    fi
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo > /dev/null; then
            say "These packages are needed: ${missing[*]}"
            say "Install them as root with: apt-get install ${missing[*]}"
            exit 1
        fi
        as_root=(sudo)
    fi
    say "Installing ${missing[*]} ..."
    mkdir -p build
    if ! { "${as_root[@]}" apt-get update -q && "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends "${missing[@]}"; } > build/install.log 2>&1; then
        tail -n 20 build/install.log >&2
        say "The packages could not be installed; build/install.log tells more."
        exit 1
    fi
}

# Configures a preset, with further arguments if it was configured otherwise before.
configure_preset() {
    local preset=$1 log=build/$1/build.log
    shift
    mkdir -p "build/$preset"
    if [ ! -f "build/$preset/build.ninja" ] || [ "$(cat "build/$preset/arguments" 2> /dev/null)" != "$*" ]; then
        say "Configuring the preset $preset ..."
        if ! cmake --preset "$preset" "$@" > "$log" 2>&1; then
            tail -n 30 "$log" >&2
            rm -f "build/$preset/build.ninja"
            exit 1
        fi
        echo "$*" > "build/$preset/arguments"
    fi
}

# Builds targets of a configured preset.
build_preset() {
    local preset=$1 log=build/$1/build.log
    shift
    if ! ninja -C "build/$preset" -n "$@" 2> /dev/null | grep -q 'no work to do'; then
        say "Building the preset $preset (minutes the first time) ..."
    fi
    if ! cmake --build --preset "$preset" --target "$@" > "$log" 2>&1; then
        grep -E -A 12 'error|FAILED' "$log" | head -n 60 >&2
        say "The build failed; $log tells more."
        exit 1
    fi
}
