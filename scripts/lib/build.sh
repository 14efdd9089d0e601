# Sourced by the scripts beside it: what a build needs, and the build itself.

# Prints the Debian package for everything that is missing, one a line.
#
# What is there is asked of the tools themselves and not of the package manager, so that a compiler or a CMake from
# elsewhere counts too.
missing_packages() {
    local entry
    for entry in c++:g++ cmake:cmake ninja:ninja-build pkg-config:pkg-config; do
        command -v "${entry%%:*}" >/dev/null || echo "${entry#*:}"
    done
    for entry in gl:libgl-dev glew:libglew-dev glu:libglu1-mesa-dev zlib:zlib1g-dev tinyxml:libtinyxml-dev \
        freetype2:libfreetype-dev libpng:libpng-dev sdl2:libsdl2-dev gtest_main:libgtest-dev gmock:libgmock-dev; do
        pkg-config --exists "${entry%%:*}" 2>/dev/null || echo "${entry#*:}"
    done
    # A font for the text of examples and tests.
    compgen -G '/usr/share/fonts/*/DejaVuSans.ttf' >/dev/null || compgen -G '/usr/share/fonts/*/*/DejaVuSans.ttf' >/dev/null \
        || echo fonts-dejavu-core
    # The software renderer, and EGL, through which SDL draws where there is no display.
    local loader
    loader=$(ldconfig -p 2>/dev/null || /sbin/ldconfig -p 2>/dev/null || true)
    [[ $loader == *libEGL.so.1* ]] || echo libegl1
    compgen -G '/usr/lib*/dri/*_dri.so' >/dev/null || compgen -G '/usr/lib/*/dri/*_dri.so' >/dev/null \
        || echo libgl1-mesa-dri
}

# Installs what is missing with apt; where there is no apt, names it and stops.
ensure_packages() {
    local missing=("$@")
    mapfile -t -O "${#missing[@]}" missing < <(missing_packages)
    if ((${#missing[@]} > 0)); then
        if ! command -v apt-get >/dev/null; then
            echo "Missing on this system, under their Debian names: ${missing[*]}" >&2
            echo "Please install them and run this again." >&2
            exit 1
        fi
        local as_root=()
        if ((EUID != 0)); then
            as_root=(sudo)
            if ! command -v sudo >/dev/null; then
                echo "Please install, as root: apt-get install ${missing[*]}" >&2
                exit 1
            fi
        fi
        echo "Installing: ${missing[*]}"
        "${as_root[@]}" apt-get update -q
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
    fi
    check_cmake_version
}

check_cmake_version() {
    local version
    version=$(cmake --version | sed -n '1s/[^0-9]*\([0-9.]*\).*/\1/p')
    if [[ $(printf '%s\n' 3.25 "$version" | sort -V | head -n 1) != 3.25 ]]; then
        echo "CMake 3.25 or newer is needed, this is $version." >&2
        exit 1
    fi
}

# build_preset <preset> [targets...]
build_preset() {
    local preset=$1
    shift
    cmake --preset "$preset"
    cmake --build --preset "$preset" ${1:+--target "$@"}
}
