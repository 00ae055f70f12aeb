# Shared by ./run, ./test and the fuzz runner: packages, configuring, building. They
# are in the top folder of the checkout when they call what is here.

# What a fresh Debian 12 lacks; a new dependency is added here first.
build_packages=(g++ cmake ninja-build qt6-base-dev qt6-base-dev-tools
                qt6-image-formats-plugins libgl-dev libdeflate-dev zlib1g-dev
                libbenchmark-dev libexpected-dev libboost-dev libgdal-dev)
# What tests compare with, and make archives with: without them they leave that out.
test_packages=(gdal-bin python3)
# What builds with clang and its sanitizers; its linker takes a fifth of the time
# of the other one, for the many programs of the tests.
clang_packages=(clang libclang-rt-14-dev lld)

# need_writable FOLDER: ends the script with a sentence where FOLDER cannot be made or
# written to.
need_writable() {
    mkdir -p "$1" 2> /dev/null && [ -w "$1" ] && return 0
    echo "$0: $PWD/$1 cannot be written; copy the checkout to a place of your own." >&2
    exit 1
}

# quietly COMMAND...: what the command says is shown only if it fails.
quietly() {
    local said status=0
    said=$("$@" 2>&1) || status=$?
    [ "$status" -eq 0 ] || printf '%s\n' "$said" >&2
    return "$status"
}

install_missing() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' \
            || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo > /dev/null || {
            echo "Please install as root: apt-get install ${missing[*]}" >&2
            return 1
        }
        root=(sudo)
    fi
    quietly "${root[@]}" apt-get update
    quietly "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y \
        --no-install-recommends "${missing[@]}"
}

# The sources that a build folder was made for; nothing where there is none.
sources_of() {
    sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$1/CMakeCache.txt" 2> /dev/null || true
}

# configure PRESET: makes the build folder where there is none, and makes it anew where it
# is that of other sources: it came with a checkout that was copied or moved.
configure() {
    local folder=build/$1 fresh=() sources
    need_writable "$folder"
    sources=$(sources_of "$folder")
    if [ -n "$sources" ] && ! [ "$sources" -ef . ]; then
        echo "$folder was made for $sources and is made anew."
        # Without its log the build trusts no result that lies there.
        rm -f "$folder/.ninja_log" "$folder/.ninja_deps"
        fresh=(--fresh)
    elif [ -e "$folder/build.ninja" ]; then
        return 0
    fi
    cmake "${fresh[@]}" --preset "$1" "${configure_options[@]}"
}
configure_options=()

# build PRESET [TARGET...]
build() {
    local preset=$1 targets=()
    shift
    configure "$preset"
    [ $# -gt 0 ] && targets=(--target "$@")
    cmake --build --preset "$preset" "${targets[@]}"
}
