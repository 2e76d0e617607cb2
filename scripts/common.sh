# What the scripts share. Sourced, not run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build_packages=(g++ cmake ninja-build libcli11-dev libicu-dev nlohmann-json3-dev)

# Installs the Debian packages that are missing, as root or with sudo; else says what to install.
need() {
    local missing=()
    for package in "$@"; do
        dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
            missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Please install these packages first: ${missing[*]}" >&2
            exit 2
        fi
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -qq -y --no-install-recommends "${missing[@]}" >/dev/null
}

# Configures and builds a preset, or what is asked of it; says nothing unless it fails.
build() {
    local log
    log=$(mktemp)
    if ! { cmake --preset "$1" && cmake --build --preset "$1" "${@:2}"; } >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        exit 1
    fi
    rm -f "$log"
}
