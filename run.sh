#!/usr/bin/env bash
# The project's two commands.
#
#   ./run.sh demo [FILE...]     build and run the demo host, kesview
#   ./run.sh test [--sanitize]  install what is missing, build, run the whole suite
#
# Both install the Debian packages they need first (apt-get, through sudo when
# not root), configure with CMake and build on all cores.
set -euo pipefail

ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
JOBS="$(nproc 2>/dev/null || echo 2)"

PACKAGES=(
    cmake ninja-build g++ pkg-config
    qtbase5-dev qtbase5-dev-tools
    libopencv-core-dev libopencv-imgproc-dev libopencv-imgcodecs-dev
    libbenchmark-dev
    xvfb xauth fonts-dejavu-core
    clang libclang-rt-14-dev
)

say() { printf '%s\n' "$*" >&2; }

install_packages() {
    local missing=()
    local pkg
    for pkg in "${PACKAGES[@]}"; do
        if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed'; then
            missing+=("$pkg")
        fi
    done
    [ "${#missing[@]}" -eq 0 ] && return 0
    say "Installing: ${missing[*]}"
    local sudo=()
    [ "$(id -u)" -ne 0 ] && sudo=(sudo)
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

configure_and_build() {
    local build_dir="$1"; shift
    cmake -S "$ROOT" -B "$build_dir" -G Ninja "$@" >/dev/null
    cmake --build "$build_dir" --parallel "$JOBS"
}

run_tests() {
    local build_dir="$ROOT/build"
    local extra=()
    if [ "${1:-}" = "--sanitize" ]; then
        build_dir="$ROOT/build-sanitize"
        extra=(-DKES_SANITIZE=ON -DKES_BUILD_BENCH=OFF -DCMAKE_BUILD_TYPE=Debug)
    elif [ -n "${1:-}" ]; then
        say "unknown option: $1"; exit 2
    fi
    configure_and_build "$build_dir" "${extra[@]}"
    ctest --test-dir "$build_dir" --output-on-failure --parallel "$JOBS"
}

run_demo() {
    local build_dir="$ROOT/build"
    if [ ! -f "$ROOT/examples/kesview/CMakeLists.txt" ]; then
        say "The demo host kesview arrives with the window facade; until then ./run.sh test builds and checks the data model."
        exit 0
    fi
    configure_and_build "$build_dir"
    local exe="$build_dir/examples/kesview/kesview"
    if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
        exec "$exe" "$@"
    fi
    local shot="$build_dir/kesview-screenshot.png"
    xvfb-run -a -s "-screen 0 1600x1200x24" "$exe" --screenshot "$shot" "$@"
    say "No display: kesview ran under Xvfb and saved its window to $shot"
}

main() {
    local cmd="${1:-}"
    [ $# -gt 0 ] && shift
    case "$cmd" in
        test) install_packages; run_tests "$@" ;;
        demo) install_packages; run_demo "$@" ;;
        *) say "usage: ./run.sh demo [FILE...] | ./run.sh test [--sanitize]"; exit 2 ;;
    esac
}

main "$@"
