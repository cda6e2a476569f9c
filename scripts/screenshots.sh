#!/usr/bin/env bash
# Makes the pictures of the user's manual (docs/manual/images/) from the program itself: the
# windows under a virtual X server with the sample job open, and the job as tessel-batch render
# draws it. Run it after a change to a window the manual shows, and commit the pictures.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh
cmake --build build --target manual-screenshots
out=docs/manual/images
mkdir -p "$out"
# A virtual X server gives the windows their usual look; without one, Qt's offscreen platform.
if command -v xvfb-run > /dev/null; then
  xvfb-run -a -s "-screen 0 1280x1024x24" build/bin/manual-screenshots "$out" samples
else
  QT_QPA_PLATFORM=offscreen build/bin/manual-screenshots "$out" samples
fi
# tessel-batch render works on a copy, since opening a job writes TEMP.JOB and the support files;
# its folder has no "." in its path, which would cut the job's name short.
work=$(mktemp -d "${TMPDIR:-/tmp}/tessel-pictures-XXXXXX")
trap 'rm -rf "$work"' EXIT
cp samples/T12NR04E.* "$work/"
QT_QPA_PLATFORM=offscreen build/bin/tessel-batch render "$work/T12NR04E.def" "$out/sample-job.png" \
  --size 960x720 --layers points,control,lsa,raw,parcels --background 2 --tool-folder "$work"
echo "pictures written to $out"
