# Sourced by the scripts: where the project is, and how its tools get onto a Debian machine or a Mac.
# shellcheck shell=bash

set -euo pipefail
caller=$PWD
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

# The folders of the product, from the ground up: each includes only those before it.
# shellcheck disable=SC2034
folders=(platform engine persistence planning editor help host cli widgets editor/views help/views
    host/views)

# What a build needs, and what else the checks, the benchmarks and the fuzzers need.
build_packages=(g++ cmake ninja-build libexpat1-dev libicu-dev libfmt-dev
    nlohmann-json3-dev libcli11-dev libfast-float-dev libglib2.0-dev pkgconf libgtest-dev
    libbenchmark-dev qt6-base-dev fonts-open-sans)
check_packages=(clang-format clang-tidy)
benchmark_packages=(libxml2-utils)
clang_packages=(clang)
# What a build needs from Homebrew. Apple's compiler comes with Xcode's command line tools.
formulae=(cmake ninja expat icu4c fmt nlohmann-json cli11 fast_float qt googletest google-benchmark)
sanitizer_packages=(libclang-rt-14-dev)

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

is_mac() {
    [ "$(uname)" = Darwin ]
}

# The same on a Mac, and the places of two that Homebrew keeps apart from the system's own.
install_formulae() {
    local formula missing=""
    if ! command -v brew >/dev/null; then
        echo "Homebrew is missing. Install it, or install these another way and build with CMake:" \
            "${formulae[*]}" >&2
        exit 1
    fi
    for formula in "${formulae[@]}"; do
        brew --prefix --installed "$formula" >/dev/null 2>&1 || missing="$missing $formula"
    done
    if [ -n "$missing" ]; then
        echo "Installing$missing" >&2
        # shellcheck disable=SC2086
        if ! brew install --quiet $missing >/dev/null; then
            echo "Packages could not be installed:$missing" >&2
            exit 1
        fi
    fi
    CMAKE_PREFIX_PATH="$(brew --prefix expat):$(brew --prefix icu4c):${CMAKE_PREFIX_PATH:-}"
    export CMAKE_PREFIX_PATH
}

# Installs what is missing, asking dpkg first so that a second run costs nothing. Other systems
# bring the libraries of the README's list themselves.
install_packages() {
    if is_mac; then
        install_formulae
        return 0
    fi
    command -v dpkg-query >/dev/null || return 0
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
        echo "Packages are missing: ${missing[*]}" >&2
        echo "There is no sudo to install them with. Install them as root, then run this again." >&2
        exit 1
    fi
    echo "Installing ${missing[*]}" >&2
    # A source that cannot be read need not be the one that has them.
    as_root apt-get update -qq >&2 || echo "Not every list of packages could be refreshed." >&2
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null && return 0
    echo "Packages could not be installed: ${missing[*]}" >&2
    exit 1
}

# Shows what a command says only when it fails, which ends the script.
run_quietly() {
    local log
    log=$(mktemp)
    if ! "$@" >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        exit 1
    fi
    rm -f "$log"
}

# Configures where needed and builds a preset, or targets of it. With WERROR set, warnings are
# errors, from then on in that build folder.
build() {
    local preset=$1
    shift
    if [ ! -f "build/$preset/build.ninja" ]; then
        echo "Building in build/$preset for the first time: this takes minutes." >&2
        run_quietly cmake --preset "$preset"
    fi
    [ -z "${WERROR:-}" ] ||
        run_quietly cmake -DCMAKE_COMPILE_WARNING_AS_ERROR=ON "build/$preset"
    [ $# -eq 0 ] || set -- --target "$@"
    run_quietly cmake --build "build/$preset" "$@"
}
