#!/usr/bin/env bash
# The headless half of Tessel built for 64-bit Windows with mingw-w64 and tested under Wine:
# configures build-windows/ with cmake/mingw-w64.cmake (no desktop; no ZIP archive, GDAL or
# PostgreSQL export, which need libraries Debian does not ship for Windows), builds the headless
# libraries, tessel-batch and core_tests, and runs core_tests (one Wine process for all its cases)
# and the sample job's dump through tessel-batch.exe, also from a folder with an accented name.
# Wine keeps its prefix in build-windows/wine.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build-windows
export WINEPREFIX="$PWD/$build/wine" WINEDEBUG=-all
# Lightly optimised: the build, not the run, is the long part.
cmake -S . -B "$build" -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake -DCMAKE_BUILD_TYPE=Release \
  "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG" -DTESSEL_BUILD_DESKTOP=OFF > /dev/null
cmake --build "$build" --target core_tests tessel-batch
# The first start of a prefix sets it up (about 20 s); later runs reuse it.
[ -d "$WINEPREFIX/drive_c" ] || wineboot --init > /dev/null 2>&1
ctest --test-dir "$build" --output-on-failure -R '^(core_tests|sample_job_dump|sample_job_dump_accented_folder)$'
