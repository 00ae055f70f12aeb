# Shared by ./run and ./test: packages, configuring, building.

# What a fresh Debian 12 lacks; a new dependency is added here first.
build_packages=(g++ cmake ninja-build qt6-base-dev qt6-base-dev-tools
                qt6-image-formats-plugins libgl-dev libdeflate-dev libbenchmark-dev)

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
    "${root[@]}" apt-get update -q
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q \
        --no-install-recommends "${missing[@]}"
}

# build PRESET [TARGET...]
build() {
    local preset=$1 targets=()
    shift
    [ -e "build/$preset/build.ninja" ] || cmake --preset "$preset" "${configure_options[@]}"
    [ $# -gt 0 ] && targets=(--target "$@")
    cmake --build --preset "$preset" "${targets[@]}"
}
configure_options=()
