#!/usr/bin/env bash
# The README's screenshot: the sample job on a 1600x1000 X server (Xvfb), maximised, with the
# scale bar on, written to docs/screenshot.png. Run after a build.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${BUILD_DIR:-$root/build}"
out="${1:-$root/docs/screenshot.png}"
shot="$build/tests/app/tessel_screenshot"
[ -x "$shot" ] || { echo "build first: $shot is missing" >&2; exit 1; }
QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1600x1000x24" "$shot" "$root/samples" "$out"
