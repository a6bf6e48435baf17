#!/usr/bin/env bash
# The project's two commands.
#
#   ./run.sh demo [FILE...]     build and run the demo host, kesview
#   ./run.sh test [--sanitize|--tsan]
#                               install what is missing, build, run the whole suite;
#                               --sanitize with AddressSanitizer and
#                               UndefinedBehaviorSanitizer in build-sanitize/,
#                               --tsan with ThreadSanitizer in build-tsan/
#   ./run.sh fuzz [SECONDS]     build the libFuzzer targets with clang in build-fuzz/
#                               and run each for SECONDS (default 30) on a copy
#                               of its seed corpus; non-zero on any finding
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
    elif [ "${1:-}" = "--tsan" ]; then
        build_dir="$ROOT/build-tsan"
        extra=(-DKES_TSAN=ON -DKES_BUILD_BENCH=OFF -DKES_BUILD_FUZZ=OFF -DCMAKE_BUILD_TYPE=Debug)
    elif [ -n "${1:-}" ]; then
        say "unknown option: $1"; exit 2
    fi
    configure_and_build "$build_dir" "${extra[@]}"
    ctest --test-dir "$build_dir" --output-on-failure --parallel "$JOBS"
}

run_fuzz() {
    local seconds="${1:-30}"
    case "$seconds" in
        ''|*[!0-9]*) say "fuzz: SECONDS must be a whole number, not '$seconds'"; exit 2 ;;
    esac
    local build_dir="$ROOT/build-fuzz"
    CC=clang CXX=clang++ configure_and_build "$build_dir" \
        -DKES_BUILD_FUZZ=ON -DKES_BUILD_TESTS=OFF -DKES_BUILD_BENCH=OFF -DKES_BUILD_EXAMPLES=OFF
    local work="$build_dir/fuzz-run"
    rm -rf "$work"
    mkdir -p "$work"
    local failed=0
    local entry target binary corpus dict
    # Each entry: the corpus and dictionary name, then the target it feeds.
    for entry in crossline:fuzz_crosslineinfo gridline:fuzz_gridlineinfo shapedata:fuzz_shapedata; do
        target="${entry%%:*}"
        binary="${entry#*:}"
        corpus="$work/$target-corpus"
        cp -r "$ROOT/fuzz/corpus/$target" "$corpus"
        dict=()
        if [ -f "$ROOT/fuzz/$target.dict" ]; then
            dict=(-dict="$ROOT/fuzz/$target.dict")
        fi
        say "$binary: ${seconds}s on a copy of fuzz/corpus/$target"
        # Leak checks with the suppressions of Qt's and fontconfig's own caches;
        # any sanitizer report, crash, hang (10 s an input) or leak is a finding.
        if ! QT_QPA_PLATFORM=offscreen \
            ASAN_OPTIONS="detect_leaks=1:detect_odr_violation=0:fast_unwind_on_malloc=0" \
            LSAN_OPTIONS="suppressions=$ROOT/tests/sanitizer/lsan.supp:print_suppressions=0" \
            UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1" \
            "$build_dir/fuzz/$binary" "$corpus" \
                "${dict[@]}" -max_total_time="$seconds" -timeout=10 \
                -rss_limit_mb=4096 -artifact_prefix="$work/$target-" -print_final_stats=1 \
                >"$work/$target.log" 2>&1; then
            failed=1
        fi
        grep -E '^(Done|stat::number_of_executed_units|stat::average_exec_per_sec)' "$work/$target.log" >&2 || true
        if compgen -G "$work/$target-*-*" >/dev/null; then
            failed=1
        fi
        if [ "$failed" -ne 0 ]; then
            say "$binary found a problem: see $work/$target.log and the inputs $work/$target-*"
            tail -n 40 "$work/$target.log" >&2
            exit 1
        fi
    done
    say "fuzz: no findings"
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
        fuzz) install_packages; run_fuzz "$@" ;;
        *) say "usage: ./run.sh demo [FILE...] | ./run.sh test [--sanitize|--tsan] | ./run.sh fuzz [SECONDS]"; exit 2 ;;
    esac
}

main "$@"
