#!/usr/bin/env bash
# Installs a build of the library into a scratch prefix, builds the live host
# against that installed package and runs it under Xvfb.
#
#   bench/livehost/run_livehost.sh [BUILD_DIR] [--memory] [-- livehost options]
#
# BUILD_DIR defaults to build/ of the source tree. OpenCV's highgui must be
# installed (libopencv-highgui-dev). Options after -- go to livehost, e.g.
# --frames 300. --memory streams frames of several sizes through the window
# alone, each size in a process of its own so that no size inherits the heap
# of another, and prints what the window holds for each.
set -euo pipefail

HERE="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
ROOT="$(cd "$HERE/../.." && pwd)"
BUILD_DIR="$ROOT/build"
if [ $# -gt 0 ] && [ "${1#--}" = "$1" ]; then
    BUILD_DIR="$(cd "$1" && pwd)"; shift
fi
MEMORY=0
if [ "${1:-}" = "--memory" ]; then
    MEMORY=1; shift
fi
[ "${1:-}" = "--" ] && shift

WORK="$BUILD_DIR/livehost"
rm -rf "$WORK/prefix"
cmake --install "$BUILD_DIR" --prefix "$WORK/prefix" >/dev/null
cmake -S "$HERE" -B "$WORK/build" -G Ninja "-DCMAKE_PREFIX_PATH=$WORK/prefix" >/dev/null
cmake --build "$WORK/build" >/dev/null
# The installed libraries find each other in the prefix. A screen larger than
# both windows, in true colour.
run() {
    LD_LIBRARY_PATH="$WORK/prefix/lib${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}" \
        xvfb-run -a -s "-screen 0 1920x1200x24" "$WORK/build/livehost" "$@"
}
if [ "$MEMORY" = 1 ]; then
    for size in 640x480 1280x1024 2448x2048 4096x3072; do
        run --only window --frames 60 --size "$size" "$@" | grep -E 'frames of|held by'
    done
else
    run "$@"
fi
